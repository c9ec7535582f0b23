#pragma once

#include "check/CheckedTable.h"

#include "CVelmDatabase.h"

#include <QMap>
#include <QStringList>

#include <optional>

/// One database of a configuration, read in one state from first to last: a read lock is held
/// while it lives. For the locks of others it waits 5 s. Nothing that stands in the file's schema
/// is run.
class Snapshot
{
public:
    /// Opens the database @p fileName at @p path.
    Snapshot(const QString& fileName, const QString& path);
    Q_DISABLE_COPY(Snapshot)

    /// Whether there is such a file. Without one, nothing is wrong and there are no tables.
    bool exists() const { return m_exists; }
    /// Why something could not be read to its end; empty if everything could.
    const QString& problem() const { return m_problem; }

    QStringList tableNames() const;
    const QStringList& triggers() const { return m_triggers; }

    /// Reads all rows of a table, if it is one. @p budget are the bytes that may still be read.
    void read(CheckedTable& table, qint64& budget);

    /// Whether rows with a value in a column are found without reading the whole table.
    bool isSearched(const QString& table, const QString& column);

private:
    struct Entry
    {
        QString name;  // as it is stored
        QString kind;  // what stands in the place of a table; empty for a table
    };

    bool readSchema();
    std::optional<QSqlQuery> run(const QString& statement, const QString& what);
    QStringList columnsOf(Entry& entry);
    void fail(const QString& what, const QSqlError& error);

    QString m_fileName;
    CVelmDatabase m_database;
    bool m_exists = false;
    QMap<QString, Entry> m_tables;  // by name, letter case of ASCII folded
    QStringList m_triggers;
    QString m_encoding;
    QString m_problem;
};
