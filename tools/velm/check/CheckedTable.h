#pragma once

#include "set/Schema.h"

#include <QHash>
#include <QVariant>
#include <QVector>

/// Where in the configuration something is.
struct Place
{
    QString database;  ///< its file, as seen from the folder of the configuration
    QString table;     ///< empty for a text file, or a database as a whole
    qint64 row = 0;    ///< rowid, of a text file the line; 0 for the whole
    QString keyColumn;
    QString key;  ///< the value by which the row is found: the feature code, mostly
    QString column;
    QString value;
};

struct CheckedRow
{
    qint64 id;  ///< rowid; 0 in a table without
    QVector<QVariant> cells;
    QVector<int> damaged;  ///< columns whose text is no valid UTF-8
};

/// A table as it is stored, with what the library reads from it. Columns go by upper-case name.
class CheckedTable
{
public:
    explicit CheckedTable(const TableSchema& schema);

    /// What the library reads; its columns in upper case, as here.
    const TableSchema& schema() const { return m_schema; }
    const QString& name() const { return m_schema.name; }
    /// Whether the table is there and stores its rows.
    bool exists() const { return !m_columns.isEmpty(); }
    /// What stands in its place, "a view"; empty for nothing and for a table.
    const QString& replacedBy() const { return m_replacedBy; }
    bool has(const QString& column) const { return m_columns.contains(column); }
    /// Whether the columns by which rows are found are there.
    bool hasKey() const;

    int size() const { return m_rows.size(); }
    /// Invalid if there is no such column.
    QVariant value(int row, const QString& column) const;
    QString text(int row, const QString& column) const { return value(row, column).toString(); }
    /// Whether the text was no valid UTF-8, so that characters of it are lost.
    bool isDamaged(int row, const QString& column) const;
    /// The place of a value.
    Place place(int row, const QString& column) const;
    /// The place of a column, or of the whole table.
    Place place(const QString& column = QString()) const;

    void setReplacedBy(const QString& kind) { m_replacedBy = kind; }
    void setColumns(const QStringList& names);
    void append(const CheckedRow& row) { m_rows.append(row); }

private:
    TableSchema m_schema;
    QString m_replacedBy;
    QHash<QString, int> m_columns;  // upper-case name to place in a row
    QVector<CheckedRow> m_rows;
};
