#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

namespace {

constexpr const Rule& kMissingDatabase = rules::named("missing-database");
constexpr const Rule& kMissingTable = rules::named("missing-table");
constexpr const Rule& kViewForTable = rules::named("view-for-table");
constexpr const Rule& kMissingColumn = rules::named("missing-column");
constexpr const Rule& kKeyType = rules::named("key-type");
constexpr const Rule& kMissingIndex = rules::named("missing-index");
constexpr const Rule& kTrigger = rules::named("trigger");

/// The columns that a table lacks, as configurations write them.
QStringList missingColumns(const CheckedTable& table)
{
    const bool isDictionary = schema::isDictionary(table.name());
    const TableSchema written =
        isDictionary ? schema::dictionary(table.name()) : schema::table(table.name());
    QStringList missing;
    for (const ColumnSchema& column : written.columns) {
        if (!column.optional && !table.has(column.name.toUpper()))
            missing.append(column.name);
    }
    return missing;
}

/// Whether SQLite turns texts that look like numbers into numbers where a column has that type.
bool makesNumbers(const QString& type)
{
    if (type.contains(QLatin1String("INT")))
        return true;
    for (const char* kept : {"CHAR", "CLOB", "TEXT", "BLOB"}) {
        if (type.contains(QLatin1String(kept)))
            return false;
    }
    return !type.isEmpty();
}

/// Reports columns of codes and names that take them for numbers. Those of dictionaries may be
/// numbers.
void checkKeyTypes(const CheckedTable& table, Problems& problems)
{
    for (const ColumnSchema& column : table.schema().columns) {
        const QString type = table.typeOf(column.name);
        if (column.type == ColumnType::Text && table.schema().key.contains(column.name)
            && !schema::isDictionary(table.name()) && makesNumbers(type))
            problems.add(kKeyType, table.place(column.name),
                         QStringLiteral("has the type %1, so that 007 is stored as 7").arg(type));
    }
}

/// Reports a table that is not there, or columns of it.
void checkTable(const CheckedTable& table, Problems& problems)
{
    if (!table.replacedBy().isEmpty())
        return problems.add(kViewForTable, table.place(),
                            QStringLiteral("is %1, which is not read").arg(table.replacedBy()));
    if (!table.exists() && !table.schema().optional)
        return problems.add(kMissingTable, table.place(), QStringLiteral("there is no such table"));
    if (!table.exists())
        return;
    const QStringList missing = missingColumns(table);
    if (schema::isDictionary(table.name()) && missing.size() > 1)
        return problems.add(
            kMissingColumn, table.place(),
            QStringLiteral("has no columns \"code\" and \"value\", and counts as no "
                           "dictionary"));
    for (const QString& column : missing)
        problems.add(kMissingColumn, table.place(column),
                     QStringLiteral("there is no such column"));
    checkKeyTypes(table, problems);
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
        problems.add(kTrigger, place, QStringLiteral("is a trigger of this table"));
}
