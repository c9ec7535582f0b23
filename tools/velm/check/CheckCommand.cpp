#include "Commands.h"

#include "check/Baseline.h"
#include "check/CheckedSet.h"
#include "check/Fix.h"
#include "check/Report.h"
#include "check/RuleListing.h"
#include "check/Rules.h"
#include "check/RuleTable.h"
#include "check/Watcher.h"
#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Root.h"
#include "set/Readable.h"

#include "CVelmSystemGlobal.h"

#include <QFileInfo>
#include <QTime>

#include <limits>

namespace {

constexpr int kMostOfARule = 20;  // findings in text, without --all

/// What a run of the check is asked for.
class CheckRun
{
public:
    explicit CheckRun(const Arguments& args) : m_args(args) {}

    /// The rules to look for. @return the first name that is no rule; empty if all are
    QString selectRules()
    {
        const QStringList wanted = m_args.values(QStringLiteral("rule"));
        const QStringList ignored = m_args.values(QStringLiteral("ignore"));
        for (const QString& id : wanted + ignored) {
            if (!rules::find(id))
                return id.isEmpty() ? QStringLiteral("\"\"") : id;
        }
        for (const Rule& rule : rules::kAll) {
            const QString id = QLatin1String(rule.id);
            if ((wanted.isEmpty() || wanted.contains(id)) && !ignored.contains(id))
                m_rules.append(&rule);
        }
        return QString();
    }

    /// Checks once and tells what was found. @return the exit code
    int run()
    {
        CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
        const QString unreadable = whyUnreadable(system.getSystemConfigDb(), {});
        if (!unreadable.isEmpty())
            return cannot(QStringLiteral("cannot open \"%1\": ").arg(system.getSystemConfigDb())
                          + unreadable);
        int exitCode = ExitFine;
        const CheckedSet set;
        if (!set.problem().isEmpty())
            return cannot(QStringLiteral("cannot read ") + set.problem());
        QVector<Problem> problems = rules::findProblems(set, m_rules);
        if (m_args.isSet(QStringLiteral("fix")) && fix(set, problems, exitCode)) {
            const CheckedSet fixed;
            if (!fixed.problem().isEmpty())
                return cannot(QStringLiteral("cannot read ") + fixed.problem());
            problems = rules::findProblems(fixed, m_rules);
        }
        if (!applyBaseline(problems))
            return ExitCannotOpen;
        tell(problems);
        return exitCode == ExitFine && isFound(problems) ? ExitNothingFound : exitCode;
    }

private:
    static int cannot(const QString& problem)
    {
        console::tell(problem);
        return ExitCannotOpen;
    }

    /// Whether something was mended.
    static bool fix(const CheckedSet& set, const QVector<Problem>& problems, int& exitCode)
    {
        const Fix fix(set, problems);
        for (const QString& line : fix.problems())
            exitCode = cannot(line);
        for (const QString& line : fix.report())
            console::tell(line);
        return fix.hasChanged();
    }

    /// Leaves out what is known, or makes everything known. @return whether the file could be
    /// read or written
    bool applyBaseline(QVector<Problem>& problems) const
    {
        const QString known = m_args.value(QStringLiteral("baseline"));
        const QString written = m_args.value(QStringLiteral("write-baseline"));
        QString problem;
        if (!written.isEmpty())
            problem = Baseline::write(problems, written);
        Baseline baseline;
        if (!known.isEmpty() && problem.isEmpty()) {
            problem = baseline.read(known);
            problems = baseline.unknown(problems);
        }
        if (problem.isEmpty())
            return true;
        console::tell(QStringLiteral("baseline ") + problem);
        return false;
    }

    void tell(const QVector<Problem>& problems) const
    {
        const bool all = m_args.isSet(QStringLiteral("all"));
        if (m_args.isSet(QStringLiteral("sarif")))
            report::printSarif(problems, m_rules);
        else if (m_args.json())
            report::printJson(problems);
        else
            report::printText(problems, all ? std::numeric_limits<int>::max() : kMostOfARule);
    }

    /// Whether there are findings. Advice counts only if it is asked for.
    bool isFound(const QVector<Problem>& problems) const
    {
        const bool strict = m_args.isSet(QStringLiteral("strict"));
        return std::any_of(problems.begin(), problems.end(), [strict](const Problem& problem) {
            return strict || problem.rule->severity != Severity::Note;
        });
    }

    const Arguments& m_args;
    QVector<const Rule*> m_rules;
};

int watch(CheckRun& check)
{
    const auto again = [&check] {
        console::print(QStringLiteral("\n%1 changed, checking again")
                           .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))));
        check.run();
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
    if (!args.positional().isEmpty())
        return args.usageError(
            QStringLiteral("unexpected argument \"%1\"").arg(args.positional().first()));
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
