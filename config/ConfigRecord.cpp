#include "config/ConfigRecord.h"

#include "config/SystemConfig.h"
#include "CVelmDatabase.h"
#include "CVelmString.h"

namespace velm::detail {

Velm::ErrorStatus ConfigRecord::read(const QString& table, const QString& keyColumn,
                                     const QString& key)
{
    m_values.clear();
    CVelmDatabase database;
    const Velm::ErrorStatus status = openSystemConfig(database);
    if (status != Velm::VelmOk)
        return status;
    m_values = database.readRecord(table, {{keyColumn, key}}, true);
    return m_values.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}

QMap<QString, QVariant> ConfigRecord::map(const QString& column) const
{
    return CVelmString().Json2Variant(text(column)).toMap();
}

}  // namespace velm::detail
