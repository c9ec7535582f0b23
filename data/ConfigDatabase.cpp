#include "data/ConfigDatabase.h"

#include "CVelmDatabase.h"

#include <QFileInfo>
#include <QSqlDatabase>

namespace velm::detail {

Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path)
{
    if (!QFileInfo(path).isFile())
        return Velm::VelmDatabaseOpenFailed;
    return database.initDatabase(path, QString());
}

bool openConfigConnection(QSqlDatabase& connection)
{
    return QFileInfo(connection.databaseName()).isFile()
           && (connection.isOpen() || connection.open());
}

}  // namespace velm::detail
