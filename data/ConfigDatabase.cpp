#include "data/ConfigDatabase.h"

#include "CVelmDatabase.h"

#include <QFileInfo>

namespace velm::detail {

Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path)
{
    if (!QFileInfo(path).isFile())
        return Velm::VelmDatabaseOpenFailed;
    return database.initDatabase(path, QString());
}

}  // namespace velm::detail
