#pragma once

#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

class CVelmDatabase;

/// The one way in which configuration tables reach the system configuration database to change it.
namespace velm::detail {

/// Opens the system configuration database where CVelmSystemGlobal says it is.
/// @return VelmOk; VelmDatabaseOpenFailed, also if it does not exist
Velm::ErrorStatus openSystemConfig(CVelmDatabase& database);

/// Opens the pipe configuration database in the same way.
Velm::ErrorStatus openPipeConfig(CVelmDatabase& database);

/// Updates the rows of @p table that match @p where, or inserts one of @p where and @p values.
/// @return VelmOk; the failure of the opening or the write
Velm::ErrorStatus writeSystemConfig(const QString& table, const QMap<QString, QVariant>& values,
                                    const QMap<QString, QVariant>& where);

/// Deletes the rows of @p table that match @p where.
/// @return VelmOk; the failure of the opening or the deletion
Velm::ErrorStatus deleteFromSystemConfig(const QString& table,
                                         const QMap<QString, QVariant>& where);

}  // namespace velm::detail
