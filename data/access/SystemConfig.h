#pragma once

#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

class CVelmDatabase;

/// The one way in which configuration tables reach the configuration databases to ask for a row and
/// to change one. Tables are found in any letter case; no text that is written or asked for is
/// null.
namespace velm::detail {

/// Opens the system configuration database of the root.
/// @return VelmOk; VelmDatabaseOpenFailed, also if it does not exist
Velm::ErrorStatus openSystemConfig(CVelmDatabase& database);

/// The same for a database that is to be changed: code in its schema is not trusted.
Velm::ErrorStatus openForWriting(CVelmDatabase& database);

/// Turns the name of a table into the one under which it is stored.
/// @return VelmOk; VelmTableNotExist; VelmSqlExecFailed
Velm::ErrorStatus storedTable(const CVelmDatabase& database, QString& table);

/// Updates the rows of @p table that match @p where, or inserts one of @p where and @p values.
/// @return VelmOk; VelmTableNotExist; VelmSqlExecFailed; the failure of the opening
Velm::ErrorStatus writeSystemConfig(QString table, const QMap<QString, QVariant>& values,
                                    const QMap<QString, QVariant>& where);

/// Deletes the rows of @p table that match @p where; a missing table has none.
/// @return VelmOk; the failure of the opening or the deletion
Velm::ErrorStatus deleteFromSystemConfig(QString table, const QMap<QString, QVariant>& where);

}  // namespace velm::detail
