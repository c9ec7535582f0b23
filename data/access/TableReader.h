#pragma once

#include "data/sql/RowReading.h"

class CVelmDatabase;

namespace velm::detail {

struct ConfigTable;

/// Notes what is wrong with a table. Nothing if the database is not open: that is known already.
void addReadProblem(const CVelmDatabase& database, const QString& table, const QString& problem);
/// What could not be read of a database since it was opened, a line each.
QStringList readProblems(const CVelmDatabase& database);

/// Reads one table of a configuration database row by row and finds its columns by upper-case name.
/// What is wrong with it is added to the problems of the connection. Throws std::bad_alloc where
/// memory runs out.
class TableReader
{
public:
    /// Begins to read. A table that is missing or cannot be read has no rows.
    TableReader(const CVelmDatabase& database, const QString& table);
    /// The same for one that findConfigTables() has found.
    TableReader(const CVelmDatabase& database, const ConfigTable& table);

    /// The number of a column for value() and text(); -1 if there is none.
    int column(const QString& upperName) const;
    /// Steps to the next row. False behind the last one.
    bool next();
    /// The value in the row; invalid for column -1.
    QVariant value(int column) const;
    QString text(int column) const { return value(column).toString(); }

    /// Behind the last row: whether the reading broke off, so that rows are missing.
    bool brokeOff() const { return m_brokeOff; }

private:
    void begin(const ConfigTable& table);
    void tell(const QString& problem) const { addReadProblem(m_database, m_table, problem); }

    const CVelmDatabase& m_database;
    QString m_table;
    QSqlQuery m_query;
    QMap<QString, int> m_columns;
    ReadBudget& m_budget;  // of the connection: its tables may share their pages
    bool m_brokeOff = false;
};

}  // namespace velm::detail
