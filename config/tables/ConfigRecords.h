#pragma once

#include "CVelmDatabase.h"
#include "data/sql/RowReading.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace velm::detail {

/// Rows of a table of the system configuration database for many keys: read through one connection
/// in one state of the database, with one statement. A table of text keys without an index on them,
/// where each search would read all of it, is read once, within the bounds of a load.
class ConfigRecords
{
public:
    /// Opens the database. Only rows of @p keys will be asked for.
    ConfigRecords(const QString& table, const QString& keyColumn, const QStringList& keys);
    Q_DISABLE_COPY(ConfigRecords)

    /// Reads the first row whose key column is exactly @p key, by upper-case column.
    /// @return as readConfigRecord(); @p row is empty but for VelmOk
    Velm::ErrorStatus read(const QString& key, Record& row);

private:
    void find(const QStringList& keys);
    void readAll(const QString& sql, const QStringList& keys);
    Velm::ErrorStatus search(const QString& key, Record& row);

    QString m_table;
    QString m_keyColumn;
    CVelmDatabase m_database;
    Velm::ErrorStatus m_status = Velm::VelmOk;  // for rows that were not found
    QSqlQuery m_query;                          // the search, if one is prepared
    std::optional<RecordReader> m_reader;       // of the query
    bool m_isPrepared = false;
    QHash<QString, Record> m_rows;  // else, by key
};

}  // namespace velm::detail
