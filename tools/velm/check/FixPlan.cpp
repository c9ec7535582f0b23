#include "check/FixPlan.h"

#include "check/CheckedSet.h"
#include "check/LayerNames.h"
#include "check/MendedNames.h"

#include <QHash>
#include <QPair>
#include <QSet>

namespace {

const CheckedTable* tableOf(const CheckedSet& set, const Place& place)
{
    for (const CheckedTable& table : set.tables()) {
        if (table.name() == place.table && table.schema().database == place.database)
            return &table;
    }
    return nullptr;
}

ColumnSchema columnOf(const CheckedTable& table, const QString& name)
{
    for (const ColumnSchema& schema : table.schema().columns) {
        if (schema.name == name)
            return schema;
    }
    return ColumnSchema();
}

bool isFeatureCode(const CheckedTable& table, const Place& place)
{
    return columnOf(table, place.column).holds == Holds::FeatureCode;
}

bool isOf(const Problem& problem, const char* rule)
{
    return QLatin1String(problem.rule->id) == QLatin1String(rule);
}

class Planner
{
public:
    Planner(const CheckedSet& set, MendedNames& names)
        : m_set(set), m_layers(usualLayerNames(set.table("Workdef"))), m_names(names)
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
        const UsualName layer = m_layers.value(trimmed.toLower());
        if (isLayer && layer.isTied && planned < 0)
            append(place, trimmed,
                   QStringLiteral("as many rows have it as have \"%1\"").arg(layer.name));
        else if (isLayer && layer.isTied)
            return;
        else if (planned >= 0 && isLayer)
            m_changes[planned].value = layer.name;
        else if (planned < 0 && isLayer)
            append(place, layer.name, QString());
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
        if (isFeatureCode(*table, place) && m_pinned.contains(place.value))
            return QStringLiteral("a row that cannot be changed refers to it");
        return m_names.rename(*table, columnOf(*table, place.column), place, trimmed);
    }

    void append(const Place& place, const QString& value, const QString& left)
    {
        const CheckedTable* table = tableOf(m_set, place);
        const bool isCode = table && isFeatureCode(*table, place);
        m_planned.insert({place.row, place.table + place.column}, m_changes.size());
        m_changes.append({place, value, left, isCode});
        if (place.row == 0)
            m_changes.last().left = QStringLiteral("its table does not number its rows");
    }

    const CheckedSet& m_set;
    QHash<QString, UsualName> m_layers;
    MendedNames& m_names;
    QSet<QString> m_pinned;                        // codes
    QSet<QPair<QString, qint64>> m_removed;        // rows by table
    QHash<QPair<qint64, QString>, int> m_planned;  // changes by row, table and column
    QVector<Change> m_changes;
};

}  // namespace

QVector<Change> planOf(const CheckedSet& set, MendedNames& names, const QVector<Problem>& problems,
                       const QString& database)
{
    QVector<const Problem*> codes, others;
    Planner planner(set, names);
    for (const Problem& problem : problems) {
        const CheckedTable* table = tableOf(set, problem.place);
        if (!table || problem.place.database != database)
            continue;
        if (isOf(problem, "empty-code"))
            planner.removeRow(problem);
        else if (isOf(problem, "blank-at-end") || isOf(problem, "layer-differs-in-case"))
            (isFeatureCode(*table, problem.place) ? codes : others).append(&problem);
    }
    for (const Problem* problem : others) {
        if (problem->place.row == 0)
            planner.pin(problem->place.value);
    }
    for (const Problem* problem : codes + others)
        planner.mend(*problem);
    return planner.changes();
}
