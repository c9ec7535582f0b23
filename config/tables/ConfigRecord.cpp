#include "config/tables/ConfigRecord.h"

#include "CVelmDatabase.h"
#include "CVelmString.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/SystemConfig.h"

namespace velm::detail {

Velm::ErrorStatus readConfigRecord(const QString& table, const QString& keyColumn,
                                   const QString& key, QMap<QString, QVariant>& row)
{
    CVelmDatabase database;
    const Velm::ErrorStatus status = openSystemConfig(database);
    return status == Velm::VelmOk ? readConfigRecord(database, table, keyColumn, key, row) : status;
}

Velm::ErrorStatus readConfigRecord(const CVelmDatabase& database, const QString& table,
                                   const QString& keyColumn, const QString& key,
                                   QMap<QString, QVariant>& row)
{
    row.clear();
    const Velm::ErrorStatus status = readConfigRow(database, table, {{keyColumn, key}}, row).status;
    return status == Velm::VelmOk && row.isEmpty() ? Velm::VelmNoData : status;
}

QMap<QString, QVariant> jsonMap(const QVariant& text)
{
    return CVelmString().Json2Variant(text.toString()).toMap();
}

}  // namespace velm::detail
