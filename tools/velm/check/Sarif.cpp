#include "check/Report.h"
#include "cli/JsonArray.h"

#include "CVelmSystemGlobal.h"

#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <cstring>

namespace {

QJsonObject textObject(const char* text)
{
    return {{QStringLiteral("text"), QString::fromUtf8(text)}};
}

QString rootFolder()
{
    const QString root = CVelmSystemGlobal::Instance()->getSystemRootRoute();
    return QDir::cleanPath(QDir(root).absolutePath());
}

QString encoded(const QUrl& url)
{
    return url.toString(QUrl::FullyEncoded);
}

/// The location of a file, named as seen from the folder of the configuration: relative to the
/// root where it lies below it, else absolute.
QJsonObject artifactLocation(const QString& file)
{
    const QDir root(rootFolder());
    const QString path = QDir(root.filePath(QStringLiteral("config"))).absoluteFilePath(file);
    const QString below = root.relativeFilePath(QDir::cleanPath(path));
    if (QDir::isAbsolutePath(below) || below.startsWith(QLatin1String("..")))
        return {{QStringLiteral("uri"), encoded(QUrl::fromLocalFile(QDir::cleanPath(path)))}};
    QUrl relative;
    relative.setPath(below, QUrl::DecodedMode);
    return {{QStringLiteral("uri"), encoded(relative)},
            {QStringLiteral("uriBaseId"), QStringLiteral("ROOT")}};
}

QJsonObject ruleObject(const Rule& rule)
{
    const QString help =
        QString::fromUtf8(rule.explanation) + QLatin1Char(' ') + QString::fromUtf8(rule.advice);
    return {{QStringLiteral("id"), QLatin1String(rule.id)},
            {QStringLiteral("shortDescription"), textObject(rule.explanation)},
            {QStringLiteral("help"), QJsonObject{{QStringLiteral("text"), help}}},
            {QStringLiteral("defaultConfiguration"),
             QJsonObject{{QStringLiteral("level"), rules::nameOf(rule.severity)}}}};
}

/// The table, the row by its key, and the column.
QJsonObject logicalLocation(const Place& place)
{
    QStringList names{place.database};
    for (const QString& part : {place.table, excerpt(place.key), place.column}) {
        if (!part.isEmpty())
            names.append(part);
    }
    QJsonObject location{{QStringLiteral("name"), names.last()},
                         {QStringLiteral("fullyQualifiedName"), names.join(QLatin1Char('/'))},
                         {QStringLiteral("kind"), place.column.isEmpty()
                                                      ? QStringLiteral("object")
                                                      : QStringLiteral("member")}};
    if (place.row != 0)  // several rows may have one key
        location.insert(QStringLiteral("properties"),
                        QJsonObject{{QStringLiteral("row"), place.row}});
    return location;
}

QJsonObject locationOf(const Place& place, const QJsonObject& artifact)
{
    QJsonObject file{{QStringLiteral("artifactLocation"), artifact}};
    if (report::isLine(place))
        file.insert(QStringLiteral("region"),
                    QJsonObject{{QStringLiteral("startLine"), place.row}});
    return {{QStringLiteral("physicalLocation"), file},
            {QStringLiteral("logicalLocations"), QJsonArray{logicalLocation(place)}}};
}

/// Numbers alike findings from 1: services take those of one fingerprint for one.
class Occurrences
{
public:
    int count(const Fingerprint& fingerprint)
    {
        quint64 beginning = 0;  // enough to tell findings apart, and less to keep
        std::memcpy(&beginning, fingerprint.data(), sizeof beginning);
        return ++m_counts[beginning];
    }

private:
    QHash<quint64, int> m_counts;
};

QString nameOf(const Fingerprint& fingerprint, int occurrence)
{
    const QString name = QString::fromLatin1(textOf(fingerprint));
    return occurrence == 1 ? name : QStringLiteral("%1:%2").arg(name).arg(occurrence);
}

QJsonObject resultObject(const Problem& problem, const QString& fingerprint, int ruleIndex,
                         const QJsonObject& artifact)
{
    const QString text =
        report::textOf(problem.place) + QStringLiteral(": ") + report::messageOf(problem);
    return {{QStringLiteral("ruleId"), QLatin1String(problem.rule->id)},
            {QStringLiteral("ruleIndex"), ruleIndex},
            {QStringLiteral("level"), rules::nameOf(problem.rule->severity)},
            {QStringLiteral("message"), QJsonObject{{QStringLiteral("text"), text}}},
            {QStringLiteral("locations"), QJsonArray{locationOf(problem.place, artifact)}},
            {QStringLiteral("partialFingerprints"),
             QJsonObject{{QStringLiteral("velm/v1"), fingerprint}}}};
}

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

}  // namespace

void report::printSarif(const QVector<Problem>& problems, const QVector<const Rule*>& rules)
{
    QJsonArray ruleList;
    for (const Rule* rule : rules)
        ruleList.append(ruleObject(*rule));
    const QJsonObject driver{{QStringLiteral("name"), QStringLiteral("velm check")},
                             {QStringLiteral("version"), CVelmSystemGlobal::libraryVersion()},
                             {QStringLiteral("rules"), ruleList}};
    const QString base = encoded(QUrl::fromLocalFile(rootFolder() + QLatin1Char('/')));
    const QJsonObject bases{{QStringLiteral("ROOT"), QJsonObject{{QStringLiteral("uri"), base}}}};
    JsonArray results("{\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\","
                      "\"version\":\"2.1.0\",\"runs\":[{\"tool\":"
                          + compact({{QStringLiteral("driver"), driver}})
                          + ",\"originalUriBaseIds\":" + compact(bases) + ",\"results\":",
                      "}]}");
    QHash<QString, QJsonObject> artifacts;  // by file
    Occurrences occurrences;
    for (const Problem& problem : problems) {
        QJsonObject& artifact = artifacts[problem.place.database];
        if (artifact.isEmpty())
            artifact = artifactLocation(problem.place.database);
        const Fingerprint fingerprint = problem.fingerprint();
        const QString name = nameOf(fingerprint, occurrences.count(fingerprint));
        results.add(compact(resultObject(problem, name, rules.indexOf(problem.rule), artifact)));
    }
    results.end();
}
