#pragma once

#include <QString>

#include <sqlite3.h>

/// The text in a column of the current row, as the peers without Qt's driver read it.
inline QString columnText(sqlite3_stmt* statement, int column)
{
    return QString(static_cast<const QChar*>(sqlite3_column_text16(statement, column)),
                   sqlite3_column_bytes16(statement, column) / int(sizeof(QChar)));
}
