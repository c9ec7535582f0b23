#include "support/TemporaryRoot.h"
#include "support/Tool.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

namespace {

/// What SARIF 2.1.0 asks of a log, as far as it concerns the parts that are used.
class SarifLog
{
public:
    explicit SarifLog(const QJsonObject& log)
    {
        expect(log[u"version"_s] == u"2.1.0"_s, u"version"_s);
        expect(isUri(log[u"$schema"_s].toString(), true), u"$schema"_s);
        expect(log[u"runs"_s].toArray().size() == 1, u"runs"_s);
        m_run = log[u"runs"_s].toArray().at(0);
        expect(m_run[u"results"_s].isArray(), u"results"_s);
        checkDriver(m_run[u"tool"_s][u"driver"_s].toObject());
        const QJsonObject bases = m_run[u"originalUriBaseIds"_s].toObject();
        for (const QJsonValue& base : bases) {
            const QString uri = base[u"uri"_s].toString();
            expect(isUri(uri, true) && uri.endsWith(u'/'), u"base "_s + uri);
        }
        for (const QJsonValue& result : m_run[u"results"_s].toArray())
            checkResult(result.toObject());
    }

    const QJsonValue& run() const { return m_run; }
    const QStringList& faults() const { return m_faults; }

private:
    /// RFC 3986, appendix A: a URI, or a relative reference without an authority.
    static bool isUri(const QString& text, bool absolute)
    {
        static const QRegularExpression characters(
            u"^([A-Za-z0-9._~!$&'()*+,;=:@/?#\\[\\]-]|%[0-9A-Fa-f]{2})+$"_s);
        static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]*:"_s);
        return characters.match(text).hasMatch() && scheme.match(text).hasMatch() == absolute;
    }

    void expect(bool holds, const QString& fault)
    {
        if (!holds)
            m_faults.append(fault);
    }

    void checkDriver(const QJsonObject& driver)
    {
        expect(!driver[u"name"_s].toString().isEmpty(), u"driver name"_s);
        for (const QJsonValue& rule : driver[u"rules"_s].toArray()) {
            const QString id = rule[u"id"_s].toString();
            expect(!id.isEmpty() && !m_rules.contains(id), u"rule id "_s + id);
            expect(isLevel(rule[u"defaultConfiguration"_s][u"level"_s]), u"rule level "_s + id);
            for (const QString& text : {u"shortDescription"_s, u"help"_s})
                expect(!rule[text][u"text"_s].toString().isEmpty(), text + id);
            m_rules.append(id);
        }
    }

    static bool isLevel(const QJsonValue& level)
    {
        return QStringList{u"none"_s, u"note"_s, u"warning"_s, u"error"_s}.contains(
            level.toString());
    }

    void checkResult(const QJsonObject& result)
    {
        const QString id = result[u"ruleId"_s].toString();
        expect(m_rules.value(result[u"ruleIndex"_s].toInt(-1)) == id, u"ruleIndex of "_s + id);
        expect(isLevel(result[u"level"_s]), u"level"_s);
        expect(!result[u"message"_s][u"text"_s].toString().isEmpty(), u"message"_s);
        const QJsonObject prints = result[u"partialFingerprints"_s].toObject();
        expect(!prints.isEmpty() && !prints.begin()->toString().isEmpty(), u"fingerprints"_s);
        for (const QJsonValue& location : result[u"locations"_s].toArray())
            checkLocation(location);
    }

    void checkLocation(const QJsonValue& location)
    {
        const QJsonObject physical = location[u"physicalLocation"_s].toObject();
        const QJsonObject file = physical[u"artifactLocation"_s].toObject();
        const QString uri = file[u"uri"_s].toString();
        const QString base = file[u"uriBaseId"_s].toString();
        const bool isBased = file.contains(u"uriBaseId"_s);
        expect(isUri(uri, !isBased), u"uri "_s + uri);
        expect(!isBased || m_run[u"originalUriBaseIds"_s].toObject().contains(base), u"base"_s);
        expect(!isBased || !(uri.startsWith(u'/') || uri.split(u'/').contains(u".."_s)), uri);
        expect(!physical.contains(u"region"_s) || physical[u"region"_s][u"startLine"_s].toInt() > 0,
               u"startLine"_s);
        expect(!location[u"logicalLocations"_s].toArray().isEmpty(), u"logicalLocations"_s);
        for (const QJsonValue& logical : location[u"logicalLocations"_s].toArray()) {
            for (const char* key : {"name", "fullyQualifiedName", "kind"})
                expect(!logical[QLatin1String(key)].toString().isEmpty(), QLatin1String(key));
        }
    }

    QJsonValue m_run;
    QStringList m_rules;
    QStringList m_faults;
};

}  // namespace

using CheckSarif = TemporaryRoot;

TEST_F(CheckSarif, KeepsTheStandardForPlacesOfAllKinds)
{
    ASSERT_EQ(velm({u"init"_s, root()}).exitCode, 0);
    for (const char* name : {"index.ini", "work.def", "attribute.def"})
        ASSERT_TRUE(QFile::remove(path(u"config/"_s + QLatin1String(name))));
    writeFile(u"a b%#[文]/attribute.def"_s, "F,A,n\n");  // a file search finds it there
    ASSERT_TRUE(QFile::remove(path(u"config/PipeConfig.db"_s)));
    runSql({u"delete from Attributetable"_s, u"drop table VelmFrame"_s,
            u"drop index IX_Workdef_CODE"_s, u"delete from Workdef where rowid < 4"_s,
            u"insert into VelmCmdSetting values ('a/b' || char(9) || ' \"', '')"_s,
            u"update RecordConfig set WRITETABLE = 'NIX' where CODE = '110102'"_s});
    qputenv("VELM_ROOT", QFile::encodeName(QDir::current().relativeFilePath(root())));
    for (const QStringList& rooted : {QStringList{u"--root"_s, root()}, QStringList()}) {
        const SarifLog log(velm(rooted + QStringList{u"check"_s, u"--sarif"_s}).json.object());
        EXPECT_EQ(log.faults(), QStringList());
        QSet<QString> rules, files, prints;
        const QUrl base(log.run()[u"originalUriBaseIds"_s][u"ROOT"_s][u"uri"_s].toString());
        for (const QJsonValue& result : log.run()[u"results"_s].toArray()) {
            rules.insert(result[u"ruleId"_s].toString());
            prints.insert(result[u"partialFingerprints"_s][u"velm/v1"_s].toString());
            const QJsonValue file = result[u"locations"_s][0][u"physicalLocation"_s];
            const QUrl uri(file[u"artifactLocation"_s][u"uri"_s].toString());
            files.insert(QDir::cleanPath(base.resolved(uri).toLocalFile()));
        }
        EXPECT_EQ(prints.size(), log.run()[u"results"_s].toArray().size()) << "one for each";
        for (const QString& rule : {u"missing-database"_s, u"missing-table"_s, u"missing-index"_s,
                                    u"text-file-field"_s, u"control-character"_s})
            EXPECT_TRUE(rules.contains(rule)) << rule.toStdString();
        EXPECT_EQ(files,
                  (QSet<QString>{path(u"config/peltaconfig.db"_s), path(u"config/PipeConfig.db"_s),
                                 path(u"a b%#[文]/attribute.def"_s)}));
    }
}
