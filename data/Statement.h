#pragma once

#include "VelmTypes.h"

#include <QMap>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVector>

/// Running statements and reading their rows: the one way in which the database wrapper reaches the
/// driver.
namespace velm::detail {

using Record = QMap<QString, QVariant>;

/// A query that reads its rows once, from first to last.
QSqlQuery forwardQuery(const QSqlDatabase& database);

/// Executes @p sql and keeps or empties the process-wide last error text.
/// @return VelmOk; VelmQueryBusy if @p query stands on a record (nothing is run); VelmSqlExecFailed
Velm::ErrorStatus runStatement(QSqlQuery& query, const QString& sql);

/// Prepares @p sql, binds @p values to its placeholders in order and executes it, keeping the error
/// text alike.
/// @return VelmOk; VelmSqlExecFailed
Velm::ErrorStatus runBound(QSqlQuery& query, const QString& sql, const QVariantList& values);

/// Keeps what ended the reading of rows early, damage in the file for example, as the error text.
void keepReadError(const QSqlQuery& query);

/// The driver's text about the last statement of the process; empty if it succeeded.
QString lastErrorText();

/// Whether the last statement of the process failed because another connection locks the database.
bool lastErrorIsLock();

/// Turns the rows of an executed query into records with upper-case keys.
class RecordReader
{
public:
    explicit RecordReader(const QSqlQuery& query);
    /// The record on which @p query stands.
    Record record(const QSqlQuery& query) const;

private:
    struct Column
    {
        QString key;
        int index;
    };
    QVector<Column> m_columns;  // in key order, so that a record is built by appending
};

/// Reads one table row by row and finds its columns by upper-case name.
class TableReader
{
public:
    /// Begins to read; a table that cannot be read has no rows.
    TableReader(const QSqlDatabase& database, const QString& table);

    /// The number of a column for value() and text(); -1 if there is none.
    int column(const QString& upperName) const;
    /// Steps to the next row. False behind the last one.
    bool next();
    /// The value in the row; invalid for column -1.
    QVariant value(int column) const { return column < 0 ? QVariant() : m_query.value(column); }
    QString text(int column) const { return value(column).toString(); }

private:
    QSqlQuery m_query;
    QMap<QString, int> m_columns;
};

}  // namespace velm::detail
