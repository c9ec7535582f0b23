#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

namespace {

constexpr const Rule& kMissingDatabase = rules::named("missing-database");
constexpr const Rule& kMissingTable = rules::named("missing-table");
constexpr const Rule& kViewForTable = rules::named("view-for-table");
constexpr const Rule& kMissingColumn = rules::named("missing-column");
constexpr const Rule& kMissingIndex = rules::named("missing-index");
constexpr const Rule& kTrigger = rules::named("trigger");

/// Reports a table that is not there, or columns of it.
void checkTable(const CheckedTable& table, Problems& problems)
{
    if (!table.replacedBy().isEmpty())
        return problems.add(kViewForTable, table.place(),
                            QStringLiteral("is %1, which is not read").arg(table.replacedBy()));
    if (!table.exists() && !table.schema().optional)
        return problems.add(kMissingTable, table.place(), QStringLiteral("there is no such table"));
    for (const ColumnSchema& column : table.schema().columns) {
        if (table.exists() && !column.optional && !table.has(column.name))
            problems.add(kMissingColumn, table.place(column.name),
                         QStringLiteral("there is no such column"));
    }
}

}  // namespace

void rules::checkSchema(const CheckedSet& set, Problems& problems)
{
    if (!set.hasPipe()) {
        Place place;
        place.database = schema::kPipeFile;
        problems.add(kMissingDatabase, place,
                     QStringLiteral("there is no such file, so pipe tables, their fields and "
                                    "dictionaries are unknown"));
    }
    for (const CheckedTable& table : set.tables()) {
        if (set.hasPipe() || table.schema().database != schema::kPipeFile)
            checkTable(table, problems);
    }
    for (const Place& place : set.withoutIndex())
        problems.add(kMissingIndex, place,
                     QStringLiteral("has no index: create index IX_%1_%2 on %1 ([%2])")
                         .arg(place.table, place.column));
    for (const Place& place : set.triggers())
        problems.add(kTrigger, place, QStringLiteral("is a trigger"));
}
