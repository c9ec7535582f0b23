#include "Commands.h"

#include "cli/Arguments.h"
#include "cli/Colours.h"
#include "cli/Console.h"
#include "cli/Root.h"
#include "cli/TerminalText.h"
#include "doctor/Examination.h"

#include <algorithm>

namespace {

QString nameOf(Finding::State state)
{
    switch (state) {
    case Finding::Fine:
        return QStringLiteral("ok");
    case Finding::Note:
        return QStringLiteral("note");
    case Finding::Warning:
        return QStringLiteral("warning");
    default:
        return QStringLiteral("error");
    }
}

void printText(const QVector<Finding>& findings)
{
    QString group;
    for (const Finding& finding : findings) {
        if (finding.group != group) {
            console::print(group.isEmpty() ? console::heading(finding.group)
                                           : QLatin1Char('\n') + console::heading(finding.group));
            group = finding.group;
        }
        console::print(QStringLiteral("  ") + console::padded(nameOf(finding.state), 9)
                       + console::padded(finding.label, 23) + console::plain(finding.value));
        if (!finding.advice.isEmpty())
            console::print(QString(34, QLatin1Char(' ')) + finding.advice);
    }
}

void printJson(const QVector<Finding>& findings)
{
    QJsonArray answer;
    for (const Finding& finding : findings)
        answer.append(QJsonObject{{QStringLiteral("id"), finding.id},
                                  {QStringLiteral("value"), finding.value},
                                  {QStringLiteral("state"), nameOf(finding.state)},
                                  {QStringLiteral("advice"), finding.advice}});
    console::print(answer);
}

}  // namespace

int commands::doctor(const QStringList& arguments)
{
    Arguments args(
        QStringLiteral("doctor"), QStringLiteral("[options]"),
        QStringLiteral("Tells what the library finds on this machine, for a report to its "
                       "makers.\n"
                       "Exit code 1 if something needed is missing or unusable."),
        {QStringLiteral("velm --root demo doctor"), QStringLiteral("velm doctor --json")});
    if (const auto ended = args.parse(arguments))
        return *ended;
    if (!args.positional().isEmpty())
        return args.usageError(
            QStringLiteral("unexpected argument \"%1\"").arg(args.positional().first()));
    const bool rootIsGiven = args.isSet(QStringLiteral("root"));
    if (rootIsGiven) {
        const int selected = selectRoot(args);
        if (selected != ExitFine)
            return selected;
    }
    const QVector<Finding> findings = examine(rootIsGiven);
    if (args.json())
        printJson(findings);
    else
        printText(findings);
    const auto errors = std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.state == Finding::Error;
    });
    if (errors > 0)
        console::tell(QStringLiteral("errors: %1").arg(errors));
    return errors > 0 ? ExitNothingFound : ExitFine;
}
