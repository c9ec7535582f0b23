#pragma once

#include "config/tables/RecordColumns.h"
#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

class CVelmDatabase;

/// One row of a table of the system configuration database, for the definitions that are read anew
/// on every query.
namespace velm::detail {

/// Opens the database and reads the first row whose @p keyColumn is exactly @p key.
/// @return VelmOk; VelmDatabaseOpenFailed; VelmNoData if there is no such row;
///         VelmSqlExecFailed if it cannot be read
Velm::ErrorStatus readConfigRecord(const QString& table, const QString& keyColumn,
                                   const QString& key, QMap<QString, QVariant>& row);

/// The same with a database that is open.
Velm::ErrorStatus readConfigRecord(const CVelmDatabase& database, const QString& table,
                                   const QString& keyColumn, const QString& key,
                                   QMap<QString, QVariant>& row);

/// Puts the values of a row, by upper-case column, into @p record, as BoundColumns would.
template<class Record, size_t count>
void storeRow(const QMap<QString, QVariant>& row, const Columns<Record, count>& columns,
              Record& record)
{
    for (const Column<Record>& column : columns) {
        const auto value = row.constFind(column.upperName());
        if (value != row.cend() || !column.keepsDefault)
            store(value == row.cend() ? QVariant() : *value, column, record);
    }
}

/// Reads the row whose first column is exactly @p key into @p record.
/// @return as above; @p record is written for VelmOk only
template<class Record, size_t count>
Velm::ErrorStatus readConfigRecord(const QString& table, const Columns<Record, count>& columns,
                                   const QString& key, Record& record)
{
    QMap<QString, QVariant> row;
    const Velm::ErrorStatus status =
        readConfigRecord(table, QLatin1String(columns.front().name), key, row);
    if (status == Velm::VelmOk)
        storeRow(row, columns, record);
    return status;
}

/// The JSON object that @p text holds; empty if it is none.
QMap<QString, QVariant> jsonMap(const QVariant& text);

}  // namespace velm::detail
