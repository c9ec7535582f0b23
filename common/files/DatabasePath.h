#pragma once

#include <QString>

/// What SQLite makes of the path of a file.
namespace velm::detail {

/// Configuration databases of more bytes are not read; no value is larger than its file.
constexpr qint64 kGreatestDatabase = 1024 * 1024 * 1024;

/// The name under which SQLite opens the file, however long its path is.
QString databaseName(const QString& path);

/// Why SQLite cannot work with a file of that path, sound or not: the path is too long, or the name
/// is, behind which a journal's ending must fit. Empty if neither is.
QString databasePathProblem(const QString& path);

}  // namespace velm::detail
