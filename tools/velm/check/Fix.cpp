#include "check/Fix.h"

#include "check/CheckedSet.h"
#include "check/DatabaseFix.h"
#include "check/MendedNames.h"
#include "check/Report.h"
#include "cli/Console.h"

#include "CVelmSystemGlobal.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace {

/// Tries each change. Why one could not be made is noted with it.
void tryAll(QVector<Change>& changes, DatabaseFix& fix)
{
    QSet<QString> keptCodes;
    for (Change& change : changes) {
        if (change.left.isEmpty() && keptCodes.contains(change.place.value))
            change.left = featureKeepsCode();
        if (change.left.isEmpty())
            change.left = change.value.isNull() ? fix.removeRow(change.place)
                                                : fix.change(change.place, change.value);
        if (!change.left.isEmpty() && change.isCode && !change.value.isNull())
            keptCodes.insert(change.place.value);
    }
}

QString lineOf(const Change& change)
{
    const QString place = report::textOf(change.place) + QStringLiteral(": ");
    if (!change.left.isEmpty())
        return QStringLiteral("left: ") + place + change.left;
    if (change.value.isNull())
        return QStringLiteral("fixed: ") + place + QStringLiteral("the row is removed");
    return QStringLiteral("fixed: ") + place
           + QStringLiteral("\"%1\" is \"%2\" now")
                 .arg(excerpt(change.place.value), excerpt(change.value));
}

bool isLeft(const Change& change)
{
    return !change.left.isEmpty();
}

}  // namespace

Fix::Fix(const CheckedSet& set, const QVector<Problem>& problems)
{
    CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
    // What a run that was killed has left, also where nothing is to be changed.
    for (const QString& path : {system.getSystemConfigDb(), system.getPipeConfigDb()})
        velm::detail::StagingFolder::removeLeftOver(QFileInfo(path).absolutePath());
    MendedNames names(set);
    apply(planOf(set, names, problems, schema::kSystemFile), set, schema::kSystemFile,
          system.getSystemConfigDb());
    apply(planOf(set, names, problems, schema::kPipeFile), set, schema::kPipeFile,
          system.getPipeConfigDb());
    tellTotals();
}

void Fix::apply(const QVector<Change>& changes, const CheckedSet& set, const QString& database,
                const QString& path)
{
    if (changes.isEmpty())
        return;
    const bool hasTriggers =
        std::any_of(set.triggers().begin(), set.triggers().end(),
                    [&database](const Place& trigger) { return trigger.database == database; });
    if (hasTriggers)
        return fail(database
                    + QStringLiteral(" is not changed: it has triggers; remove them first"));
    if (std::all_of(changes.begin(), changes.end(), isLeft))
        return tellAll(changes);
    DatabaseFix fix(path);
    QVector<Change> tried = changes;
    tryAll(tried, fix);
    commit(fix, tried, database);
}

void Fix::commit(DatabaseFix& fix, const QVector<Change>& changes, const QString& database)
{
    const bool changesNothing =
        fix.problem().isEmpty() && std::all_of(changes.begin(), changes.end(), isLeft);
    if (!changesNothing && !fix.commit())
        return fail(database + QStringLiteral(" is not changed: ") + fix.problem());
    tellAll(changes);
    if (!changesNothing)
        console::tell(QStringLiteral("kept: ") + fix.copy());
}

void Fix::tellAll(const QVector<Change>& changes)
{
    for (const Change& change : changes) {
        console::tell(lineOf(change));
        ++(isLeft(change) ? m_left : m_done);
    }
}

void Fix::fail(const QString& problem)
{
    console::tell(problem);
    m_hasFailed = true;
}

void Fix::tellTotals() const
{
    if (m_done + m_left > 0)
        console::tell(QStringLiteral("%1 fixed, %2 left").arg(m_done).arg(m_left));
    else if (!m_hasFailed)
        console::tell(QStringLiteral("nothing to fix"));
}
