#include "check/RuleListing.h"

#include "check/RuleTable.h"
#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/JsonArray.h"
#include "cli/Suggestions.h"
#include "cli/TextTable.h"

int rulelisting::list(bool json)
{
    if (json) {
        JsonArray array;
        for (const Rule& rule : rules::kAll)
            array.add(
                QJsonObject{{QStringLiteral("id"), QLatin1String(rule.id)},
                            {QStringLiteral("severity"), rules::nameOf(rule.severity)},
                            {QStringLiteral("explanation"), QString::fromUtf8(rule.explanation)},
                            {QStringLiteral("advice"), QString::fromUtf8(rule.advice)}});
        array.end();
        return ExitFine;
    }
    TextTable table(
        {QStringLiteral("RULE"), QStringLiteral("SEVERITY"), QStringLiteral("LOOKS FOR")});
    for (const Rule& rule : rules::kAll)
        table.addRow({QLatin1String(rule.id), rules::nameOf(rule.severity),
                      QString::fromUtf8(rule.explanation)});
    table.print();
    return ExitFine;
}

int rulelisting::explain(const Arguments& args)
{
    const QString id = args.value(QStringLiteral("explain"));
    const Rule* rule = rules::find(id);
    if (!rule)
        return args.usageError(unknown(id));
    console::print(id + QStringLiteral(" (") + rules::nameOf(rule->severity) + QStringLiteral("): ")
                   + QString::fromUtf8(rule->explanation));
    console::print(QString::fromUtf8(rule->advice));
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
