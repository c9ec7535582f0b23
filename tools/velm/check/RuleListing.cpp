#include "check/RuleListing.h"

#include "check/RuleTable.h"
#include "cli/Arguments.h"
#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/Suggestions.h"
#include "cli/TerminalText.h"

#include <algorithm>

namespace {

QJsonObject jsonOf(const Rule& rule)
{
    return {{QStringLiteral("id"), QLatin1String(rule.id)},
            {QStringLiteral("severity"), rules::nameOf(rule.severity)},
            {QStringLiteral("explanation"), QString::fromUtf8(rule.explanation)},
            {QStringLiteral("advice"), QString::fromUtf8(rule.advice)}};
}

/// Prints @p text behind @p start, on a terminal within its width; other programs get whole lines.
void print(const QString& start, const QString& text)
{
    constexpr int kNarrowest = 20;  // words fit
    const int column = console::displayWidth(start);
    const int width = std::max(kNarrowest, console::lineWidth() - column);
    const QStringList lines =
        console::isTerminal() ? console::wrapped(text, width) : QStringList{text};
    console::print(start + lines.join(QLatin1Char('\n') + QString(column, QLatin1Char(' '))));
}

void printList()
{
    constexpr int kGap = 2;
    int idWidth = 0;
    for (const Rule& rule : rules::kAll)
        idWidth = std::max(idWidth, QString::fromLatin1(rule.id).size() + kGap);
    const auto start = [idWidth](const QString& id, const QString& severity) {
        constexpr int kSeverityWidth = 10;
        return console::padded(id, idWidth) + console::padded(severity, kSeverityWidth);
    };
    console::print(console::heading(start(QStringLiteral("RULE"), QStringLiteral("SEVERITY"))
                                    + QStringLiteral("LOOKS FOR")));
    for (const Rule& rule : rules::kAll)
        print(start(QLatin1String(rule.id), rules::nameOf(rule.severity)),
              QString::fromUtf8(rule.explanation));
}

}  // namespace

int rulelisting::list(bool json)
{
    if (!json) {
        printList();
        return ExitFine;
    }
    JsonArray array;
    for (const Rule& rule : rules::kAll)
        array.add(jsonOf(rule));
    array.end();
    return ExitFine;
}

int rulelisting::explain(const Arguments& args)
{
    const QString id = args.value(QStringLiteral("explain"));
    const Rule* rule = rules::find(id);
    if (!rule)
        return args.usageError(unknown(id));
    if (args.json()) {
        console::print(jsonOf(*rule));
        return ExitFine;
    }
    print(QString(), id + QStringLiteral(" (") + rules::nameOf(rule->severity)
                         + QStringLiteral("): ") + QString::fromUtf8(rule->explanation));
    print(QString(), QString::fromUtf8(rule->advice));
    return ExitFine;
}

QString rulelisting::unknown(const QString& id)
{
    QStringList ids;
    for (const Rule& rule : rules::kAll)
        ids.append(QLatin1String(rule.id));
    return QStringLiteral("there is no rule \"") + id + QLatin1Char('"')
           + didYouMean(similarTo(id, ids));
}
