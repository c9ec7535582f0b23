#include "data/access/SystemConfig.h"
#include "common/files/SearchPaths.h"

#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"

namespace velm::detail {

Velm::ErrorStatus openSystemConfig(CVelmDatabase& database)
{
    return openConfigDatabase(database, SearchPaths::instance().systemDatabase());
}

Velm::ErrorStatus openForWriting(CVelmDatabase& database)
{
    const Velm::ErrorStatus status = openSystemConfig(database);
    if (status == Velm::VelmOk)
        distrustSchema(database);
    return status;
}

Velm::ErrorStatus storedTable(const CVelmDatabase& database, QString& table)
{
    const ConfigTable found = findConfigTable(database.getQSqlDatabase(), table);
    if (found.status == Velm::VelmSqlExecFailed)
        return keepResult(sqlFailure(found.problem));
    table = found.name;
    return found.status;
}

Velm::ErrorStatus writeSystemConfig(QString table, const Record& values, const Record& where)
{
    CVelmDatabase database;
    Velm::ErrorStatus status = openForWriting(database);
    if (status == Velm::VelmOk)
        status = storedTable(database, table);
    return status == Velm::VelmOk
               ? database.updataRecord(table, withoutNullTexts(values), withoutNullTexts(where))
               : status;
}

Velm::ErrorStatus deleteFromSystemConfig(QString table, const Record& where)
{
    CVelmDatabase database;
    Velm::ErrorStatus status = openForWriting(database);
    if (status == Velm::VelmOk)
        status = storedTable(database, table);
    if (status == Velm::VelmTableNotExist)
        return Velm::VelmOk;  // nothing to delete
    return status == Velm::VelmOk ? database.deleteRecord(table, withoutNullTexts(where)) : status;
}

}  // namespace velm::detail
