#include "check/FixPlan.h"

#include "check/CheckedSet.h"
#include "check/LayerNames.h"

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

    /// Plans another name for a row. @return why it cannot have that; empty if it can
    QString rename(const CheckedTable& table, const Place& place, const QString& name)
    {
        const Holds holds = heldBy(table, place.column);
        if (holds == Holds::CodeReference && m_codes.contains(place.value))
            return featureKeepsCode();
        if (!take(table, place.column, name.toLower()))
            return QStringLiteral("without the blank it would be a second \"%1\"").arg(name);
        if (holds == Holds::FeatureCode)
            m_codes.remove(place.value);
        return QString();
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

bool isOf(const Problem& problem, const char* rule)
{
    return QLatin1String(problem.rule->id) == QLatin1String(rule);
}

class Planner
{
public:
    explicit Planner(const CheckedSet& set)
        : m_set(set), m_layers(usualLayerNames(set.table("Workdef"))), m_names(set)
    {}

    /// That a row which refers to a code cannot be changed.
    void pin(const QString& code) { m_pinned.insert(code); }

    void removeRow(const Problem& problem)
    {
        m_removed.insert({problem.place.table, problem.place.row});
        append(problem.place, QString(), QString());
    }

    void mend(const Problem& problem)
    {
        const Place& place = problem.place;
        if (place.row != 0 && m_removed.contains({place.table, place.row}))
            return;
        const bool isLayer = isOf(problem, "layer-differs-in-case");
        const QString trimmed = place.value.trimmed();
        const int planned =
            place.row == 0 ? -1 : m_planned.value({place.row, place.table + place.column}, -1);
        if (planned >= 0 && isLayer)
            m_changes[planned].value = m_layers.value(trimmed.toLower());
        else if (planned < 0 && isLayer)
            append(place, m_layers.value(trimmed.toLower()), QString());
        else if (planned < 0)
            append(place, trimmed, whyBlankStays(place, trimmed));
    }

    QVector<Change> changes() const { return m_changes; }

private:
    QString whyBlankStays(const Place& place, const QString& trimmed)
    {
        if (trimmed.isEmpty())
            return QStringLiteral("it holds nothing but blanks");
        const CheckedTable* table = tableOf(m_set, place);
        if (!table || place.row == 0)
            return QString();
        if (heldBy(*table, place.column) == Holds::FeatureCode && m_pinned.contains(place.value))
            return QStringLiteral("a row that cannot be changed refers to it");
        return m_names.rename(*table, place, trimmed);
    }

    void append(const Place& place, const QString& value, const QString& left)
    {
        const CheckedTable* table = tableOf(m_set, place);
        const bool isCode = table && heldBy(*table, place.column) == Holds::FeatureCode;
        m_planned.insert({place.row, place.table + place.column}, m_changes.size());
        m_changes.append({place, value, left, isCode});
        if (place.row == 0)
            m_changes.last().left = QStringLiteral("its table does not number its rows");
    }

    const CheckedSet& m_set;
    QHash<QString, QString> m_layers;
    NamesInUse m_names;
    QSet<QString> m_pinned;                        // codes
    QSet<QPair<QString, qint64>> m_removed;        // rows by table
    QHash<QPair<qint64, QString>, int> m_planned;  // changes by row, table and column
    QVector<Change> m_changes;
};

}  // namespace

QVector<Change> planOf(const CheckedSet& set, const QVector<Problem>& problems,
                       const QString& database)
{
    QVector<const Problem*> codes, others;
    Planner planner(set);
    for (const Problem& problem : problems) {
        const CheckedTable* table = tableOf(set, problem.place);
        if (!table || problem.place.database != database)
            continue;
        if (isOf(problem, "empty-code"))
            planner.removeRow(problem);
        else if (isOf(problem, "blank-at-end") || isOf(problem, "layer-differs-in-case"))
            (heldBy(*table, problem.place.column) == Holds::FeatureCode ? codes : others)
                .append(&problem);
    }
    for (const Problem* problem : others) {
        if (problem->place.row == 0)
            planner.pin(problem->place.value);
    }
    for (const Problem* problem : codes + others)
        planner.mend(*problem);
    return planner.changes();
}

QString featureKeepsCode()
{
    return QStringLiteral("it belongs to a feature whose code keeps its blank");
}
