#include "check/Report.h"
#include "cli/JsonArray.h"

#include "CVelmSystemGlobal.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

QJsonObject textObject(const char* text)
{
    return {{QStringLiteral("text"), QString::fromUtf8(text)}};
}

/// Relative to the root, where the file stands below it.
QString uriOf(const QString& file)
{
    if (QDir::isAbsolutePath(file))
        return QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
    QUrl relative;
    relative.setPath(QDir::cleanPath(QStringLiteral("config/") + file), QUrl::DecodedMode);
    return relative.toString(QUrl::FullyEncoded);
}

QString rootUri()
{
    const QString root = CVelmSystemGlobal::Instance()->getSystemRootRoute();
    return QUrl::fromLocalFile(QDir::cleanPath(root) + QLatin1Char('/'))
        .toString(QUrl::FullyEncoded);
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
    return {{QStringLiteral("name"), names.last()},
            {QStringLiteral("fullyQualifiedName"), names.join(QLatin1Char('/'))},
            {QStringLiteral("kind"),
             place.column.isEmpty() ? QStringLiteral("object") : QStringLiteral("member")}};
}

QJsonObject locationOf(const Place& place)
{
    QJsonObject file{{QStringLiteral("artifactLocation"),
                      QJsonObject{{QStringLiteral("uri"), uriOf(place.database)},
                                  {QStringLiteral("uriBaseId"), QStringLiteral("ROOT")}}}};
    if (report::isLine(place))
        file.insert(QStringLiteral("region"),
                    QJsonObject{{QStringLiteral("startLine"), place.row}});
    return {{QStringLiteral("physicalLocation"), file},
            {QStringLiteral("logicalLocations"), QJsonArray{logicalLocation(place)}}};
}

QJsonObject resultObject(const Problem& problem, int ruleIndex)
{
    const QString text =
        report::textOf(problem.place) + QStringLiteral(": ") + report::messageOf(problem);
    return {{QStringLiteral("ruleId"), QLatin1String(problem.rule->id)},
            {QStringLiteral("ruleIndex"), ruleIndex},
            {QStringLiteral("level"), rules::nameOf(problem.rule->severity)},
            {QStringLiteral("message"), QJsonObject{{QStringLiteral("text"), text}}},
            {QStringLiteral("locations"), QJsonArray{locationOf(problem.place)}},
            {QStringLiteral("partialFingerprints"),
             QJsonObject{
                 {QStringLiteral("velm/v1"), QString::fromLatin1(textOf(problem.fingerprint()))}}}};
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
    const QJsonObject bases{
        {QStringLiteral("ROOT"), QJsonObject{{QStringLiteral("uri"), rootUri()}}}};
    JsonArray results("{\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\","
                      "\"version\":\"2.1.0\",\"runs\":[{\"tool\":"
                          + compact({{QStringLiteral("driver"), driver}})
                          + ",\"originalUriBaseIds\":" + compact(bases) + ",\"results\":",
                      "}]}");
    for (const Problem& problem : problems)
        results.add(resultObject(problem, rules.indexOf(problem.rule)));
    results.end();
}
