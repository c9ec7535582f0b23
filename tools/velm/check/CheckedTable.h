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
    /// The value by which the row is found: the feature code, mostly; of several columns that of
    /// the first, and names and values of the others: "JMD_PG, NAME FWCS".
    QString key;
    QString column;
    QString value;
};

/// "row 3"; of a table without row numbers "another row".
QString rowName(const Place& place);

struct CheckedRow
{
    qint64 id;  ///< rowid; 0 in a table without
    QVector<QVariant> cells;
    /// Columns whose text is no valid UTF-8, with what it reads as GBK; empty if it is neither.
    QHash<int, QString> damaged;
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

    /// The type with which a column was made, in upper case.
    QString typeOf(const QString& column) const { return m_types.value(column); }

    int size() const { return m_rows.size(); }
    /// Invalid if there is no such column.
    QVariant value(int row, const QString& column) const;
    QString text(int row, const QString& column) const { return value(row, column).toString(); }
    /// Whether the text was no valid UTF-8, so that characters of it are lost.
    bool isDamaged(int row, const QString& column) const;
    /// What such a text reads as GBK; empty for others, and if it is none either.
    QString asGbk(int row, const QString& column) const;
    /// Whether the text is what somebody has written: neither damaged nor with a NUL character.
    bool isSound(int row, const QString& column) const
    {
        return !isDamaged(row, column) && !text(row, column).contains(QChar::Null);
    }
    /// The name that is meant by a text: without what is told of its characters, so that nothing
    /// that follows from that is told too.
    QString plain(int row, const QString& column) const;
    /// The place of a value.
    Place place(int row, const QString& column) const;
    /// The place of a column, or of the whole table.
    Place place(const QString& column = QString()) const;

    /// Whether the line of a text file counts as its only row.
    bool isStoodInFor() const { return m_isStoodInFor; }

    void setStoodInFor() { m_isStoodInFor = true; }
    void setReplacedBy(const QString& kind) { m_replacedBy = kind; }
    void setColumns(const QStringList& names);
    void setType(const QString& column, const QString& type)
    {
        m_types.insert(column.toUpper(), type.toUpper());
    }
    void append(const CheckedRow& row) { m_rows.append(row); }

private:
    TableSchema m_schema;
    QString m_replacedBy;
    bool m_isStoodInFor = false;
    QHash<QString, int> m_columns;  // upper-case name to place in a row
    QHash<QString, QString> m_types;
    QVector<CheckedRow> m_rows;
};
