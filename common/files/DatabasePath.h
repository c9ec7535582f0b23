#pragma once

#include <QString>

/// What SQLite makes of the path of a file.
namespace velm::detail {

/// The name under which SQLite opens the file, however long its path is.
QString databaseName(const QString& path);

/// Why SQLite opens no file of that path, sound or not: it is too long. Empty if it is not.
QString databasePathProblem(const QString& path);

}  // namespace velm::detail
