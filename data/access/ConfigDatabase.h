#pragma once

#include "data/sql/RowReading.h"
#include "VelmTypes.h"

#include <QString>

class CVelmDatabase;

/// Configuration databases come from elsewhere: a file may be missing, locked, damaged, or made to
/// harm. Every reader and writer of the configuration goes through here.
namespace velm::detail {

/// Opens a configuration database by its configured path. A missing file is a failure and does not
/// come into being, empty, by being asked; so is one of more than 1 GiB. Whether the file can be
/// read, the first statement tells. Why it cannot be opened is logged.
/// @return VelmOk; VelmDatabaseOpenFailed, then @p why tells
Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path, QString& why);
Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path);

/// A table of a configuration database as it is found there. While it lives, everything is read in
/// the state in which it was found, and no second lock is needed.
struct ConfigTable
{
    Velm::ErrorStatus status = Velm::VelmOk;
    QString name;     ///< as it is stored
    QString problem;  ///< why it is not to be read; empty for VelmOk
    QString sql;      ///< its definition
    QSqlQuery found;  ///< stands on its row of the schema; none in findConfigTables()
};

/// Looks for a table by its name in any letter case. A view in its place, a virtual table or one
/// with computed columns counts as none: reading it would run what its author wrote, without end
/// perhaps.
/// Status: VelmOk; VelmTableNotExist; VelmSqlExecFailed if the database cannot be read
ConfigTable findConfigTable(const QSqlDatabase& database, const QString& name);

/// All tables of the file in the order of their names, judged in the same way; views are left out.
/// @return VelmOk; VelmSqlExecFailed with the error, and then tables may be missing
ReadOutcome findConfigTables(const QSqlDatabase& database, QVector<ConfigTable>& tables);

/// The first row of a table that matches; empty if there is none, or no such table.
/// @return VelmOk; VelmSqlExecFailed with the error if it cannot be read
ReadOutcome readConfigRow(const CVelmDatabase& database, const QString& table, const Record& where,
                          Record& row);

/// Turns off, before something is written, the functions that could do harm in triggers and the
/// like of the file's schema. Reading runs none: only stored columns of tables are read.
void distrustSchema(const CVelmDatabase& database);

/// What stands for @p values in the configuration, where no text is null: a null code is the empty
/// code.
Record withoutNullTexts(Record values);

/// What went wrong with a database, in few words, and the driver's own.
QString describe(const QSqlError& error);

}  // namespace velm::detail
