#include "check/Report.h"

#include "cli/Console.h"
#include "cli/TerminalText.h"

#include "CVelmSystemGlobal.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>

namespace {

constexpr int kLongestValue = 60;

QString shortened(const QString& value)
{
    return value.size() <= kLongestValue ? value
                                         : value.left(kLongestValue) + QStringLiteral("...");
}

/// Whether the place is a line of a text file.
bool isLine(const Place& place)
{
    return place.table.isEmpty() && place.row > 0;
}

/// "peltaconfig.db Workdef row 3 TEXT", "index.ini line 2".
QString textOf(const Place& place)
{
    QStringList parts{place.database};
    if (!place.table.isEmpty())
        parts.append(place.table);
    if (place.row > 0)
        parts.append(
            (isLine(place) ? QStringLiteral("line %1") : QStringLiteral("row %1")).arg(place.row));
    if (!place.column.isEmpty())
        parts.append(place.column);
    return parts.join(QLatin1Char(' '));
}

QString messageOf(const Problem& problem)
{
    const QString value = shortened(problem.place.value);
    return value.isEmpty() ? problem.message
                           : QLatin1Char('"') + value + QStringLiteral("\" ") + problem.message;
}

int countOf(const QVector<Problem>& problems, Severity severity)
{
    return static_cast<int>(
        std::count_if(problems.begin(), problems.end(), [severity](const Problem& problem) {
            return problem.rule->severity == severity;
        }));
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

QJsonObject sarifRule(const Rule& rule)
{
    return {{QStringLiteral("id"), QLatin1String(rule.id)},
            {QStringLiteral("shortDescription"),
             QJsonObject{{QStringLiteral("text"), QString::fromUtf8(rule.explanation)}}},
            {QStringLiteral("defaultConfiguration"),
             QJsonObject{{QStringLiteral("level"), rules::nameOf(rule.severity)}}}};
}

QJsonObject sarifResult(const Problem& problem)
{
    QJsonObject file{{QStringLiteral("artifactLocation"),
                      QJsonObject{{QStringLiteral("uri"), uriOf(problem.place.database)}}}};
    if (isLine(problem.place))
        file.insert(QStringLiteral("region"),
                    QJsonObject{{QStringLiteral("startLine"), problem.place.row}});
    const QJsonObject location{
        {QStringLiteral("physicalLocation"), file},
        {QStringLiteral("logicalLocations"),
         QJsonArray{QJsonObject{{QStringLiteral("fullyQualifiedName"), textOf(problem.place)}}}}};
    return {{QStringLiteral("ruleId"), QLatin1String(problem.rule->id)},
            {QStringLiteral("level"), rules::nameOf(problem.rule->severity)},
            {QStringLiteral("message"), QJsonObject{{QStringLiteral("text"), messageOf(problem)}}},
            {QStringLiteral("locations"), QJsonArray{location}}};
}

}  // namespace

void report::printText(const QVector<Problem>& problems)
{
    for (const Problem& problem : problems)
        console::print(
            console::plain(QStringLiteral("%1 %2: ").arg(rules::nameOf(problem.rule->severity),
                                                         QLatin1String(problem.rule->id))
                           + textOf(problem.place) + QStringLiteral(": ") + messageOf(problem)));
    console::print(QStringLiteral("%1 errors, %2 warnings, %3 notes")
                       .arg(countOf(problems, Severity::Error))
                       .arg(countOf(problems, Severity::Warning))
                       .arg(countOf(problems, Severity::Note)));
}

void report::printJson(const QVector<Problem>& problems)
{
    QJsonArray answer;
    for (const Problem& problem : problems)
        answer.append(
            QJsonObject{{QStringLiteral("rule"), QLatin1String(problem.rule->id)},
                        {QStringLiteral("severity"), rules::nameOf(problem.rule->severity)},
                        {QStringLiteral("database"), problem.place.database},
                        {QStringLiteral("table"), problem.place.table},
                        {QStringLiteral("row"), problem.place.row},
                        {QStringLiteral("column"), problem.place.column},
                        {QStringLiteral("value"), problem.place.value},
                        {QStringLiteral("message"), problem.message}});
    console::print(answer);
}

void report::printSarif(const QVector<Problem>& problems, const QVector<const Rule*>& rules)
{
    QJsonArray ruleList, results;
    for (const Rule* rule : rules)
        ruleList.append(sarifRule(*rule));
    for (const Problem& problem : problems)
        results.append(sarifResult(problem));
    const QJsonObject driver{{QStringLiteral("name"), QStringLiteral("velm check")},
                             {QStringLiteral("version"), CVelmSystemGlobal::libraryVersion()},
                             {QStringLiteral("rules"), ruleList}};
    const QJsonObject run{{QStringLiteral("tool"), QJsonObject{{QStringLiteral("driver"), driver}}},
                          {QStringLiteral("results"), results}};
    console::print(QJsonObject{{QStringLiteral("$schema"),
                                QStringLiteral("https://json.schemastore.org/sarif-2.1.0.json")},
                               {QStringLiteral("version"), QStringLiteral("2.1.0")},
                               {QStringLiteral("runs"), QJsonArray{run}}});
}
