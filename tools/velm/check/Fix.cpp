#include "check/Fix.h"

#include "check/CheckedSet.h"
#include "check/DatabaseFix.h"
#include "check/LayerNames.h"
#include "check/Report.h"

#include "CVelmSystemGlobal.h"

#include <QHash>
#include <QPair>
#include <QSet>

#include <algorithm>

namespace {

const CheckedTable* tableOf(const CheckedSet& set, const Place& place)
{
    for (const CheckedTable& table : set.tables()) {
        if (table.name() == place.table && table.schema().database == place.database)
            return &table;
    }
    return nullptr;
}

Holds heldBy(const CheckedTable& table, const QString& column)
{
    for (const ColumnSchema& schema : table.schema().columns) {
        if (schema.name == column)
            return schema.holds;
    }
    return Holds::Values;
}

/// What a column holds, in lower case.
QSet<QString> namesIn(const CheckedTable& table, const QString& column)
{
    QSet<QString> names;
    for (int row = 0; row < table.size(); ++row)
        names.insert(table.text(row, column).toLower());
    return names;
}

/// The names by which rows are found, as they will be after the changes that are planned.
class NamesInUse
{
public:
    explicit NamesInUse(const CheckedSet& set)
    {
        const CheckedTable& index = set.table("indexini");
        for (int row = 0; row < index.size(); ++row)
            m_codes.insert(index.text(row, QStringLiteral("CODE")));
    }

    /// Plans another name for a row. @return false if another row has it, or if the row belongs to
    /// a feature that keeps its code
    bool rename(const CheckedTable& table, const Place& place, const QString& name)
    {
        const Holds holds = heldBy(table, place.column);
        if (holds == Holds::CodeReference && m_codes.contains(place.value))
            return false;
        if (!take(table, place.column, name.toLower()))
            return false;
        if (holds == Holds::FeatureCode)
            m_codes.remove(place.value);
        return true;
    }

private:
    bool take(const CheckedTable& table, const QString& column, const QString& name)
    {
        const TableSchema& schema = table.schema();
        if (schema.keyRule == KeyRule::Repeated || !schema.key.contains(column))
            return true;
        QSet<QString>& names = m_names[{table.name(), column}];
        if (names.isEmpty())
            names = namesIn(table, column);
        const int before = names.size();
        names.insert(name);
        return names.size() > before;
    }

    QSet<QString> m_codes;                                  // of the index, exact
    QHash<QPair<QString, QString>, QSet<QString>> m_names;  // by table and column, in lower case
};

}  // namespace

Fix::Fix(const CheckedSet& set, const QVector<Problem>& problems)
{
    CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
    apply(plan(set, problems, schema::kSystemFile), set, schema::kSystemFile,
          system.getSystemConfigDb());
    apply(plan(set, problems, schema::kPipeFile), set, schema::kPipeFile, system.getPipeConfigDb());
}

QVector<Fix::Change> Fix::plan(const CheckedSet& set, const QVector<Problem>& problems,
                               const QString& database)
{
    QVector<Change> changes;
    const QHash<QString, QString> layers = usualLayerNames(set.table("Workdef"));
    NamesInUse names(set);
    for (const Problem& problem : problems) {
        const Place& place = problem.place;
        const CheckedTable* table = tableOf(set, place);
        if (!table || place.database != database || place.row == 0)
            continue;
        const QString id = QLatin1String(problem.rule->id);
        const QString trimmed = place.value.trimmed();
        if (id == QLatin1String("empty-code"))
            changes.append({place, QString()});
        else if (id == QLatin1String("layer-differs-in-case"))
            changes.append({place, layers.value(trimmed.toLower())});
        else if (id == QLatin1String("blank-at-end") && !trimmed.isEmpty()
                 && names.rename(*table, place, trimmed))
            changes.append({place, trimmed});
    }
    return changes;
}

void Fix::apply(const QVector<Change>& changes, const CheckedSet& set, const QString& database,
                const QString& path)
{
    if (changes.isEmpty())
        return;
    const bool hasTriggers =
        std::any_of(set.triggers().begin(), set.triggers().end(),
                    [&database](const Place& trigger) { return trigger.database == database; });
    if (hasTriggers) {
        m_problems.append(database + QStringLiteral(" is as it was: it has triggers"));
        return;
    }
    DatabaseFix fix(path);
    QStringList done;
    for (const Change& change : changes) {
        const QString what = report::textOf(change.place);
        if (change.value.isNull()) {
            if (fix.removeRow(change.place))
                done.append(what + QStringLiteral(": the row is removed"));
        } else if (fix.change(change.place, change.value)) {
            done.append(QStringLiteral("%1: \"%2\" is \"%3\" now")
                            .arg(what, change.place.value, change.value));
        }
    }
    if (done.isEmpty() && fix.problem().isEmpty())
        return;  // all that was to be changed has changed meanwhile
    if (!fix.commit()) {
        m_problems.append(database + QStringLiteral(" is as it was: ") + fix.problem());
        return;
    }
    m_report += done;
    m_report.append(QStringLiteral("%1 as it was is kept as %2").arg(database, fix.copy()));
}
