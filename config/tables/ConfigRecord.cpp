#include "config/tables/ConfigRecord.h"

#include "CVelmDatabase.h"
#include "CVelmString.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/SystemConfig.h"

namespace velm::detail {

Velm::ErrorStatus ConfigRecord::read(const QString& table, const QString& keyColumn,
                                     const QString& key)
{
    m_values.clear();
    CVelmDatabase database;
    Velm::ErrorStatus status = openSystemConfig(database);
    if (status == Velm::VelmOk)
        status = readConfigRow(database, table, {{keyColumn, key}}, m_values).status;
    if (status != Velm::VelmOk)
        return status;
    return m_values.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}

QMap<QString, QVariant> ConfigRecord::map(const QString& column) const
{
    return CVelmString().Json2Variant(text(column)).toMap();
}

}  // namespace velm::detail
