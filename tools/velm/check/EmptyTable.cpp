#include "check/EmptyTable.h"

#include "check/CheckedSet.h"
#include "check/Problems.h"
#include "check/RuleTable.h"

namespace {

constexpr const Rule& kEmptyTable = rules::named("empty-table");

}  // namespace

bool tellIfEmpty(const CheckedTable& table, Problems& problems)
{
    const bool isEmpty = table.exists() && table.size() == 0;
    if (isEmpty && !table.isStoodInFor())
        problems.add(kEmptyTable, table.place(), QStringLiteral("has no rows"));
    return isEmpty;
}

bool tellIfNoTables(const CheckedSet& set, Problems& problems)
{
    if (tellIfEmpty(set.table("Attributetable"), problems))
        return true;
    // Either of the two makes tables.
    return set.table("SYS_ATTRIBUTEDEF").size() == 0
           && tellIfEmpty(set.table("SYS_GISTABLE"), problems);
}

bool tellIfWithoutFields(const CheckedSet& set, const QString& gisTable, Problems& problems)
{
    if (!set.gisTables().contains(gisTable) || !set.gisTables().fieldNames(gisTable).isEmpty())
        return false;
    if (set.gisTables().hasStrayFields(gisTable))
        return true;
    const Place place = set.gisTables().placeOf(gisTable);
    const bool isSystem = place.database == schema::kSystemFile;
    if (!tellIfEmpty(set.table(isSystem ? "Attributefield" : "SYS_ATTRIBUTEDEF"), problems))
        problems.add(kEmptyTable, place, QStringLiteral("is a table without fields"));
    return true;
}
