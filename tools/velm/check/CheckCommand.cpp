#include "Commands.h"

#include "check/CheckedSet.h"
#include "check/Report.h"
#include "check/Rules.h"
#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Root.h"
#include "cli/Suggestions.h"
#include "set/Readable.h"

#include "CVelmSystemGlobal.h"

#include <optional>

namespace {

QString unknownRule(const QString& id)
{
    QStringList ids;
    for (const Rule& rule : rules::kAll)
        ids.append(QLatin1String(rule.id));
    return QStringLiteral("there is no rule \"") + id + QLatin1Char('"')
           + didYouMean(similarTo(id, ids));
}

/// The rules that --rule names; all for none. @return the first name that is no rule, if any
std::optional<QString> selectRules(const Arguments& args, QVector<const Rule*>& selected)
{
    const QStringList ids = args.values(QStringLiteral("rule"));
    for (const QString& id : ids) {
        const Rule* rule = rules::find(id);
        if (!rule)
            return id;
        selected.append(rule);
    }
    if (selected.isEmpty()) {
        for (const Rule& rule : rules::kAll)
            selected.append(&rule);
    }
    return std::nullopt;
}

int explain(const Arguments& args)
{
    const QString id = args.value(QStringLiteral("explain"));
    const Rule* rule = rules::find(id);
    if (!rule)
        return args.usageError(unknownRule(id));
    console::print(id + QStringLiteral(" (") + rules::nameOf(rule->severity) + QStringLiteral("): ")
                   + QString::fromUtf8(rule->explanation));
    return ExitFine;
}

/// Advice does not count unless it is asked for.
bool counts(const Problem& problem, bool strict)
{
    return strict || problem.rule->severity != Severity::Note;
}

}  // namespace

int commands::check(const QStringList& arguments)
{
    Arguments args(QStringLiteral("check"), QStringLiteral("[options]"),
                   QStringLiteral("Checks a configuration set across all of its tables.\n"
                                  "Exit code 1 on findings; notes, which are advice, count with "
                                  "--strict only."),
                   {QStringLiteral("velm --root demo check"),
                    QStringLiteral("velm check --rule single-quote --rule not-in-gbk --json"),
                    QStringLiteral("velm check --explain single-quote")});
    args.addOption(QStringLiteral("rule"), QStringLiteral("Look for this only; may be repeated."),
                   QStringLiteral("ID"));
    args.addOption(QStringLiteral("explain"), QStringLiteral("Tell what a rule looks for."),
                   QStringLiteral("ID"));
    args.addOption(QStringLiteral("sarif"), QStringLiteral("Answer in SARIF 2.1.0."));
    args.addOption(QStringLiteral("strict"), QStringLiteral("Let notes count as findings."));
    if (const auto ended = args.parse(arguments))
        return *ended;
    if (!args.positional().isEmpty())
        return args.usageError(
            QStringLiteral("unexpected argument \"%1\"").arg(args.positional().first()));
    if (args.isSet(QStringLiteral("explain")))
        return explain(args);
    QVector<const Rule*> selected;
    if (const auto unknown = selectRules(args, selected))
        return args.usageError(unknownRule(*unknown));
    const int rooted = selectRoot(args);
    if (rooted != ExitFine)
        return rooted;
    const QString path = CVelmSystemGlobal::Instance()->getSystemConfigDb();
    const QString unreadable = whyUnreadable(path, {});
    if (!unreadable.isEmpty()) {
        console::tell(QStringLiteral("cannot open \"") + path + QStringLiteral("\": ")
                      + unreadable);
        return ExitCannotOpen;
    }

    const CheckedSet set;
    if (!set.problem().isEmpty()) {
        console::tell(QStringLiteral("cannot read ") + set.problem());
        return ExitCannotOpen;
    }
    const QVector<Problem> problems = rules::findProblems(set, selected);
    if (args.isSet(QStringLiteral("sarif")))
        report::printSarif(problems, selected);
    else if (args.json())
        report::printJson(problems);
    else
        report::printText(problems);
    const bool strict = args.isSet(QStringLiteral("strict"));
    const bool found =
        std::any_of(problems.begin(), problems.end(),
                    [strict](const Problem& problem) { return counts(problem, strict); });
    return found ? ExitNothingFound : ExitFine;
}
