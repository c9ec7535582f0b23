#include "config/SystemConfig.h"

#include "CVelmDatabase.h"
#include "CVelmSystemGlobal.h"
#include "data/ConfigDatabase.h"

namespace velm::detail {

Velm::ErrorStatus openSystemConfig(CVelmDatabase& database)
{
    return openConfigDatabase(database, CVelmSystemGlobal::Instance()->getSystemConfigDb());
}

Velm::ErrorStatus openPipeConfig(CVelmDatabase& database)
{
    return openConfigDatabase(database, CVelmSystemGlobal::Instance()->getPipeConfigDb());
}

Velm::ErrorStatus writeSystemConfig(const QString& table, const QMap<QString, QVariant>& values,
                                    const QMap<QString, QVariant>& where)
{
    CVelmDatabase database;
    const Velm::ErrorStatus status = openSystemConfig(database);
    return status == Velm::VelmOk ? database.updataRecord(table, values, where) : status;
}

Velm::ErrorStatus deleteFromSystemConfig(const QString& table, const QMap<QString, QVariant>& where)
{
    CVelmDatabase database;
    const Velm::ErrorStatus status = openSystemConfig(database);
    return status == Velm::VelmOk ? database.deleteRecord(table, where) : status;
}

}  // namespace velm::detail
