#pragma once

#include "set/TableSet.h"

#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// A line of a text file that could not be used, and why.
struct UnusedLine
{
    QString file;
    int line = 0;  ///< from 1
    QString reason;
};

/// Reads the text files of the older set, all lines of them, into the tables of a system
/// configuration database. Texts are UTF-8 or GBK, found out for each file, and for each line of a
/// file that is neither.
class TextImport
{
public:
    /// Reads "index.ini", "work.def" and "attribute.def" of @p folder, in any letter case; a
    /// missing one leaves its tables empty. @return why a file cannot be read; empty if all can
    QString read(const QString& folder);

    /// Reads the file @p name of them only, and answers the same way.
    QString readFile(const QString& folder, const QString& name);

    /// The lines of the file read last; an end of line at its end begins no other one.
    int lineCount() const { return m_lineCount; }
    /// The files that were there.
    const QStringList& files() const { return m_files; }
    const DatabaseTables& database() const { return m_database; }
    const QVector<UnusedLine>& unused() const { return m_unused; }
    /// The line that a row of a table comes from.
    int lineOf(const QString& table, int row) const { return m_linesOfRows[table].at(row); }

private:
    using LineUser = void (TextImport::*)(const QStringList& fields);

    static LineUser userOf(const QString& name);
    void useIndexLine(const QStringList& fields);
    void useWorkLine(const QStringList& fields);
    void useAttributeLine(const QStringList& fields);

    /// Adds a row whose cells are @p fields under @p columns; reports what is wrong with them.
    /// Without a @p key column, which is unique, any number of rows may be alike.
    void addRow(const QString& table, const QStringList& columns, const QStringList& fields,
                const QString& key);
    SetTable& table(const QString& name);
    void reject(int line, const QString& reason);

    DatabaseTables m_database = emptySystemDatabase();
    QStringList m_files;
    QVector<UnusedLine> m_unused;
    QString m_file;  // the one that is being read
    int m_line = 0;
    int m_lineCount = 0;
    QMap<QString, QVector<int>> m_linesOfRows;  // by table
    QMap<QString, QPair<int, int>> m_rowOfKey;  // of the table and key: row, line
};
