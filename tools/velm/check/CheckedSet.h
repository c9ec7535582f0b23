#pragma once

#include "check/Problems.h"
#include "set/Schema.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

class CVelmDatabase;

/// A table as it is stored, with what the library reads from it.
class CheckedTable
{
public:
    explicit CheckedTable(const TableSchema& schema);

    /// Reads all rows; none if there is no such table. @return why they cannot be read to the end;
    /// empty if they can
    QString read(CVelmDatabase& database);

    /// What the library reads. Its columns are in upper case here, as the rows have them.
    const TableSchema& schema() const { return m_schema; }
    const QString& name() const { return m_schema.name; }
    bool exists() const { return m_exists; }
    bool has(const QString& column) const { return m_stored.contains(column); }
    int size() const { return m_rows.size(); }
    QString text(int row, const QString& column) const
    {
        return m_rows.at(row).value(column).toString();
    }
    QVariant value(int row, const QString& column) const { return m_rows.at(row).value(column); }
    /// The place of a value; of the whole table for row -1.
    Place place(int row, const QString& column) const;

private:
    TableSchema m_schema;
    bool m_exists = false;
    QStringList m_stored;  // upper-case names of the columns there are
    QVector<QMap<QString, QVariant>> m_rows;
};

/// The tables of a configuration set, as far as they are there.
class CheckedSet
{
public:
    /// Reads the databases that the library has for the root in use.
    CheckedSet();

    /// Why a database cannot be read to its end; empty if they all can.
    const QString& problem() const { return m_problem; }

    const QVector<CheckedTable>& tables() const { return m_tables; }
    /// A table that the library reads, by its name; that of the system configuration if both
    /// databases have one.
    const CheckedTable& table(const char* name) const;

    /// Upper-case names of all GIS tables, and of their fields.
    const QMap<QString, QStringList>& gisTables() const { return m_gisTables; }
    /// Names of all dictionaries that the library loads.
    const QStringList& dictionaries() const { return m_dictionaries; }
    /// Key columns without an index, as "table.column".
    const QStringList& withoutIndex() const { return m_withoutIndex; }

private:
    void readTables(CVelmDatabase& database, const QString& fileName);
    void readSystem();
    void addDictionaryTables(CVelmDatabase& database);
    void findDictionaries();
    void readPipe();
    void collectGisTables();

    QVector<CheckedTable> m_tables;
    QMap<QString, QStringList> m_gisTables;
    QStringList m_dictionaries;
    QStringList m_withoutIndex;
    QString m_problem;
};
