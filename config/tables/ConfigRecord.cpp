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
    Velm::ErrorStatus status = openSystemConfig(database);
    if (status == Velm::VelmOk)
        status = readConfigRow(database, table, {{keyColumn, key}}, row).status;
    if (status != Velm::VelmOk)
        return status;
    return row.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}

QMap<QString, QVariant> jsonMap(const QVariant& text)
{
    return CVelmString().Json2Variant(text.toString()).toMap();
}

}  // namespace velm::detail
