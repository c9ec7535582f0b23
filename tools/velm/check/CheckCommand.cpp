#include "Commands.h"

#include "check/CheckRun.h"
#include "check/RuleListing.h"
#include "check/Watcher.h"
#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Guard.h"
#include "cli/Root.h"
#include "set/Schema.h"

#include "CVelmSystemGlobal.h"

#include <QFileInfo>
#include <QTime>

namespace {

int watch(CheckRun& check)
{
    const auto again = [&check] {
        console::print(QStringLiteral("\n%1 changed, checking again")
                           .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))));
        guarded([&check] { return check.run(); });
        console::printedAll();  // somebody watches
    };
    const QFileInfo database(CVelmSystemGlobal::Instance()->getSystemConfigDb());
    Watcher watcher(database.path(),
                    {schema::kSystemFile, schema::kSystemFile + QStringLiteral("-wal"),
                     schema::kPipeFile, schema::kPipeFile + QStringLiteral("-wal"),
                     QStringLiteral("index.ini"), QStringLiteral("work.def"),
                     QStringLiteral("attribute.def")},
                    again);
    check.run();
    console::tell(QStringLiteral("watching %1; Ctrl+C ends this").arg(database.path()));
    return watcher.run();
}

/// What is wrong with the arguments together; empty if nothing is.
QString misuseOf(const Arguments& args)
{
    if (!args.positional().isEmpty())
        return QStringLiteral("unexpected argument \"%1\"").arg(args.positional().first());
    if (args.json() && args.isSet(QStringLiteral("sarif")))
        return QStringLiteral("--json and --sarif are two forms of one answer: give one of them");
    if (args.isSet(QStringLiteral("fix")) && args.isSet(QStringLiteral("watch")))
        return QStringLiteral("--fix mends once and --watch goes on: give one of them");
    for (const char* file : {"baseline", "write-baseline"}) {
        const QString name = QLatin1String(file);
        if (args.isSet(name) && args.value(name).isEmpty())
            return QStringLiteral("--%1 names no file").arg(name);
    }
    return QString();
}

void addOptions(Arguments& args)
{
    args.addOption(QStringLiteral("rule"), QStringLiteral("Look for this only; may be repeated."),
                   QStringLiteral("ID"));
    args.addOption(QStringLiteral("ignore"),
                   QStringLiteral("Do not look for this; may be repeated."), QStringLiteral("ID"));
    args.addOption(QStringLiteral("rules"), QStringLiteral("List all rules."));
    args.addOption(QStringLiteral("explain"),
                   QStringLiteral("Tell what a rule looks for, and what to do."),
                   QStringLiteral("ID"));
    args.addOption(QStringLiteral("all"),
                   QStringLiteral("Show all findings, not only the first 20 of a rule. JSON and "
                                  "SARIF always hold all."));
    args.addOption(QStringLiteral("sarif"), QStringLiteral("Answer in SARIF 2.1.0."));
    args.addOption(QStringLiteral("strict"), QStringLiteral("Let notes count as findings."));
    args.addOption(QStringLiteral("baseline"),
                   QStringLiteral("Leave out the findings that this file knows."),
                   QStringLiteral("FILE"));
    args.addOption(QStringLiteral("write-baseline"),
                   QStringLiteral("Write all findings into this file, as known ones."),
                   QStringLiteral("FILE"));
    args.addOption(QStringLiteral("fix"),
                   QStringLiteral("Mend what has one safe answer: blanks at an end, rows without "
                                  "a code, letter case of layers. A copy of the database as it was "
                                  "stays beside it."));
    args.addOption(QStringLiteral("watch"),
                   QStringLiteral("Check again whenever a file of the set changes."));
}

}  // namespace

int commands::check(const QStringList& arguments)
{
    Arguments args(QStringLiteral("check"), QStringLiteral("[options]"),
                   QStringLiteral("Checks a configuration set across all of its tables.\n"
                                  "Exit code 1 on findings; notes, which are advice, count with "
                                  "--strict only."),
                   {QStringLiteral("velm --root demo check"),
                    QStringLiteral("velm --root demo check --rule single-quote --json"),
                    QStringLiteral("velm check --explain single-quote"),
                    QStringLiteral("velm --root demo check --fix")});
    addOptions(args);
    if (const auto ended = args.parse(arguments))
        return *ended;
    const QString misuse = misuseOf(args);
    if (!misuse.isEmpty())
        return args.usageError(misuse);
    if (args.isSet(QStringLiteral("rules")))
        return rulelisting::list(args.json());
    if (args.isSet(QStringLiteral("explain")))
        return rulelisting::explain(args);
    CheckRun check(args);
    const QString unknown = check.selectRules();
    if (!unknown.isEmpty())
        return args.usageError(rulelisting::unknown(unknown));
    const int rooted = selectRoot(args);
    if (rooted != ExitFine)
        return rooted;
    return args.isSet(QStringLiteral("watch")) ? watch(check) : check.run();
}
