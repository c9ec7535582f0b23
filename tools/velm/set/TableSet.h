#pragma once

#include "set/Schema.h"

/// One table of a configuration set, with its rows.
struct SetTable
{
    TableSchema schema;
    /// Cells in column order; documents that stood beside the table are filled in.
    QVector<QStringList> rows;
};

/// One database of a configuration set.
struct DatabaseTables
{
    QString fileName;
    QVector<SetTable> tables;  ///< in the order of creation

    /// The table of that name; an empty one if there is none.
    SetTable table(const QString& tableName) const;
};

/// The system configuration database without a row.
DatabaseTables emptySystemDatabase();

/// Makes a database file with all tables, rows and an index on every key. @return what went wrong;
/// empty if nothing did
QString writeDatabase(const DatabaseTables& content, const QString& path);
