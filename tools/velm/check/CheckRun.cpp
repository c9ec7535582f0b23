#include "check/CheckRun.h"

#include "check/Baseline.h"
#include "check/CheckedSet.h"
#include "check/Fix.h"
#include "check/Report.h"
#include "check/Rules.h"
#include "check/RuleTable.h"
#include "cli/Arguments.h"
#include "cli/Console.h"
#include "set/Readable.h"

#include "CVelmSystemGlobal.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int kMostOfARule = 20;  // findings in text, without --all

int cannot(const QString& problem)
{
    console::tell(problem);
    return ExitCannotOpen;
}

}  // namespace

QString CheckRun::selectRules()
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

int CheckRun::run()
{
    CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
    const QString unreadable = whyUnreadable(system.getSystemConfigDb(), {});
    if (!unreadable.isEmpty())
        return cannot(QStringLiteral("cannot open \"%1\": ").arg(system.getSystemConfigDb())
                      + unreadable);
    try {
        return checkAndTell();
    } catch (const TooManyProblems& many) {
        return cannot(QString::fromLatin1(many.what()));
    }
}

int CheckRun::checkAndTell() const
{
    int exitCode = ExitFine;
    std::optional<QVector<Problem>> problems =
        m_args.isSet(QStringLiteral("fix")) ? mendAndFind(exitCode) : find();
    QStringList notes;
    if (!problems || !writeBaseline(*problems) || !applyBaseline(*problems, notes))
        return ExitCannotOpen;
    tell(*problems, notes);
    return exitCode == ExitFine && isFound(*problems) ? ExitNothingFound : exitCode;
}

std::optional<QVector<Problem>> CheckRun::find() const
{
    const CheckedSet set;
    if (set.problem().isEmpty())
        return rules::findProblems(set, m_rules);
    cannot(QStringLiteral("cannot read ") + set.problem());
    return std::nullopt;
}

std::optional<QVector<Problem>> CheckRun::mendAndFind(int& exitCode) const
{
    auto before = std::make_unique<CheckedSet>();
    if (!before->problem().isEmpty()) {
        cannot(QStringLiteral("cannot read ") + before->problem());
        return std::nullopt;
    }
    QVector<Problem> problems = rules::findProblems(*before, m_rules);
    const Fix fix(*before, problems);
    if (fix.hasFailed())
        exitCode = ExitCannotOpen;
    if (!fix.hasChanged())
        return problems;
    problems.clear();
    before.reset();  // both sets take their memory
    return find();
}

/// @return whether the file could be written, if one is asked for
bool CheckRun::writeBaseline(const QVector<Problem>& problems) const
{
    const QString path = m_args.value(QStringLiteral("write-baseline"));
    if (path.isEmpty())
        return true;
    const QString problem = baselinefile::write(problems, path);
    console::tell(problem.isEmpty()
                      ? QStringLiteral("%1 written to %2")
                            .arg(report::counted(problems.size(), QStringLiteral("finding")), path)
                      : QStringLiteral("baseline ") + problem);
    return problem.isEmpty();
}

/// Leaves out what is known, if that is asked for. @return whether the file could be read
bool CheckRun::applyBaseline(QVector<Problem>& problems, QStringList& notes) const
{
    const QString path = m_args.value(QStringLiteral("baseline"));
    if (path.isEmpty())
        return true;
    Baseline baseline;
    const QString problem = baseline.read(path);
    if (!problem.isEmpty()) {
        console::tell(QStringLiteral("baseline ") + problem);
        return false;
    }
    notes.append(report::counted(baseline.leaveOut(problems), QStringLiteral("known one"))
                 + QStringLiteral(" left out"));
    const int gone = baseline.gone(m_rules);
    if (gone > 0)
        notes.append(report::counted(gone, QStringLiteral("known one"))
                     + (gone == 1 ? QStringLiteral(" is gone") : QStringLiteral(" are gone")));
    return true;
}

void CheckRun::tell(const QVector<Problem>& problems, const QStringList& notes) const
{
    const bool all = m_args.isSet(QStringLiteral("all"));
    const bool isText = !m_args.isSet(QStringLiteral("sarif")) && !m_args.json();
    if (isText)
        return report::printText(problems, all ? problems.size() : kMostOfARule, notes);
    if (m_args.json())
        report::printJson(problems);
    else
        report::printSarif(problems, m_rules);
    if (!notes.isEmpty())
        console::tell(notes.join(QStringLiteral(", ")));
}

/// Whether there are findings. Advice counts only if it is asked for.
bool CheckRun::isFound(const QVector<Problem>& problems) const
{
    const bool strict = m_args.isSet(QStringLiteral("strict"));
    return std::any_of(problems.begin(), problems.end(), [strict](const Problem& problem) {
        return strict || problem.rule->severity != Severity::Note;
    });
}
