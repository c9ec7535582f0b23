#include "check/Report.h"

#include "check/RuleTable.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/TerminalText.h"

#include <QHash>
#include <QJsonObject>

#include <array>

namespace {

constexpr int kLongestValue = 60;

QString shortened(const QString& value)
{
    return value.size() <= kLongestValue ? value
                                         : value.left(kLongestValue) + QStringLiteral("...");
}

QString lineOf(const Problem& problem)
{
    return QStringLiteral("%1 %2: ").arg(rules::nameOf(problem.rule->severity),
                                         QLatin1String(problem.rule->id))
           + report::textOf(problem.place) + QStringLiteral(": ") + report::messageOf(problem);
}

QString totals(const QVector<Problem>& problems)
{
    std::array<int, 3> counts{};
    for (const Problem& problem : problems)
        ++counts.at(static_cast<size_t>(problem.rule->severity));
    QStringList parts;
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note})
        parts.append(
            report::counted(counts.at(static_cast<size_t>(severity)), rules::nameOf(severity)));
    return parts.join(QStringLiteral(", "));
}

QString moreLine(const Rule& rule, int more, int all)
{
    return QStringLiteral("%1 %2: %3 more of %4 (--all shows them)")
        .arg(rules::nameOf(rule.severity), QLatin1String(rule.id))
        .arg(more)
        .arg(all);
}

QJsonObject jsonOf(const Problem& problem)
{
    const Place& place = problem.place;
    QJsonObject object{{QStringLiteral("rule"), QLatin1String(problem.rule->id)},
                       {QStringLiteral("severity"), rules::nameOf(problem.rule->severity)},
                       {QStringLiteral("database"), place.database},
                       {QStringLiteral("message"), problem.message}};
    const auto add = [&object](const QString& name, const QJsonValue& value, bool isThere) {
        if (isThere)
            object.insert(name, value);
    };
    add(QStringLiteral("table"), place.table, !place.table.isEmpty());
    add(QStringLiteral("row"), place.row, place.row != 0);
    add(QStringLiteral("keyColumn"), place.keyColumn, !place.keyColumn.isEmpty());
    add(QStringLiteral("key"), excerpt(place.key), !place.keyColumn.isEmpty());
    add(QStringLiteral("column"), place.column, !place.column.isEmpty());
    // Without a key it is a column that is meant, and no value of it.
    add(QStringLiteral("value"), excerpt(place.value),
        !place.keyColumn.isEmpty() || !place.value.isEmpty());
    return object;
}

}  // namespace

QString report::counted(int count, const QString& what)
{
    return QString::number(count) + QLatin1Char(' ') + what
           + (count == 1 ? QString() : QStringLiteral("s"));
}

bool report::isLine(const Place& place)
{
    return place.table.isEmpty() && place.row > 0;
}

QString report::textOf(const Place& place)
{
    QStringList parts{place.database};
    if (!place.table.isEmpty())
        parts.append(place.table);
    if (place.row != 0)
        parts.append(
            (isLine(place) ? QStringLiteral("line %1") : QStringLiteral("row %1")).arg(place.row));
    if (!place.key.isEmpty())
        parts.append(QStringLiteral("(%1 %2)").arg(place.keyColumn, shortened(place.key)));
    if (!place.column.isEmpty())
        parts.append(place.column);
    return parts.join(QLatin1Char(' '));
}

QString report::messageOf(const Problem& problem)
{
    const QString value = shortened(problem.place.value);
    return value.isEmpty() ? problem.message
                           : QLatin1Char('"') + value + QStringLiteral("\" ") + problem.message;
}

void report::printText(const QVector<Problem>& problems, int mostOfARule, const QStringList& notes)
{
    struct Count
    {
        int all = 0;
        int shown = 0;
    };
    QHash<const Rule*, Count> counts;
    for (const Problem& problem : problems)
        ++counts[problem.rule].all;
    for (const Problem& problem : problems) {
        Count& count = counts[problem.rule];
        // A line for "1 more" says less than that one.
        if (count.shown == mostOfARule && count.all > mostOfARule + 1)
            continue;
        console::print(console::plain(lineOf(problem)));
        ++count.shown;
        if (count.shown == mostOfARule && count.all > mostOfARule + 1)
            console::print(moreLine(*problem.rule, count.all - mostOfARule, count.all));
    }
    console::print((QStringList{totals(problems)} + notes).join(QStringLiteral("; ")));
}

void report::printJson(const QVector<Problem>& problems)
{
    JsonArray array;
    for (const Problem& problem : problems)
        array.add(jsonOf(problem));
    array.end();
}
