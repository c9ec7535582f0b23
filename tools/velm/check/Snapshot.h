#pragma once

#include "check/CheckedTable.h"

#include "set/HeldDatabase.h"

#include <QStringList>

/// One database of a configuration, read in one state from first to last: it is held while this
/// lives.
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

    const QStringList& tableNames() const { return m_tables; }
    struct Trigger
    {
        QString name;
        QString table;
    };
    const QVector<Trigger>& triggers() const { return m_triggers; }

    /// Reads all rows of a table, if it is one. @p budget are the bytes that may still be read.
    void read(CheckedTable& table, qint64& budget);

    /// Whether rows with a value in a column are found without reading the whole table.
    bool isSearched(const QString& table, const QString& column);

    /// Reads the indexes over the keys of a table, in which the library looks rows up: they are to
    /// hold what its rows hold.
    void readIndexes(const CheckedTable& table);

private:
    void readSchema();
    void readTypes(CheckedTable& table, const QString& name);
    void readRows(CheckedTable& table, const HeldDatabase::Entry& stored, qint64& budget);
    void readIndex(const CheckedTable& table, const QString& column, const QString& index);
    void fail(const QString& what, const QString& problem);

    QString m_fileName;
    HeldDatabase m_database;
    bool m_exists = false;
    QStringList m_tables;
    QVector<Trigger> m_triggers;
    QString m_encoding;
    QString m_problem;
};
