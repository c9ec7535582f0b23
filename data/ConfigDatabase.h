#pragma once

#include "VelmTypes.h"

#include <QString>

class CVelmDatabase;
class QSqlDatabase;

namespace velm::detail {

/// Opens a configuration database by its configured path. Every reader and writer of the
/// configuration goes through here, so that a missing file is a failure and does not come into
/// being, empty, by being asked.
/// @return VelmOk; VelmDatabaseOpenFailed, also for a file that does not exist
Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path);

/// The same for a connection of Qt that names its SQLite file already. Whether it is open.
bool openConfigConnection(QSqlDatabase& connection);

}  // namespace velm::detail
