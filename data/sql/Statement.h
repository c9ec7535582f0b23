#pragma once

#include "VelmTypes.h"

#include <QMap>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

/// Running statements: the one way in which the library reaches the driver. What became of a
/// statement is its return value; the process-wide last-error text is only kept for callers who
/// ask for it, and nothing is decided by it.
namespace velm::detail {

using Record = QMap<QString, QVariant>;

/// A query that reads its rows once, from first to last.
QSqlQuery forwardQuery(const QSqlDatabase& database);

/// Executes @p sql without a trace in the last-error text. A statement with a NUL character is not
/// run: the driver would cut it there.
/// @return no error, or what went wrong
QSqlError execute(QSqlQuery& query, const QString& sql);
/// The same for a statement whose rows, if any, do not matter.
QSqlError execute(const QSqlDatabase& database, const QString& sql);

/// Executes @p sql and keeps or empties the process-wide last error text.
/// @return VelmOk; VelmQueryBusy if @p query stands on a record (nothing is run); VelmSqlExecFailed
Velm::ErrorStatus runStatement(QSqlQuery& query, const QString& sql);

/// Prepares @p sql, binds @p values to its placeholders in order and executes it, keeping the error
/// text alike.
/// @return VelmOk; VelmSqlExecFailed
Velm::ErrorStatus runBound(QSqlQuery& query, const QString& sql, const QVariantList& values);

/// Keeps @p error as the process-wide last error text, or empties that if it is none.
/// @return VelmSqlExecFailed for an error; else VelmOk
Velm::ErrorStatus keepResult(const QSqlError& error);

/// A failure of our own, as an error of a statement.
QSqlError sqlFailure(const QString& text);
/// The failure to get memory.
QSqlError outOfMemory();

/// The driver's text about the last statement of the process; empty if it succeeded.
QString lastErrorText();

/// Whether the error is that another connection locks the database.
bool isLock(const QSqlError& error);
/// Whether the error is that SQLite got no memory.
bool isOutOfMemory(const QSqlError& error);
/// Whether SQLite, or any error of Access, refuses what a statement says or the values in it, so
/// that others may go on.
bool isRefusal(const QSqlError& error);

}  // namespace velm::detail
