#pragma once

#include <QStringList>
#include <QVector>

/// Rows of text whose columns are as wide as their widest cell on a terminal.
class TextTable
{
public:
    explicit TextTable(const QStringList& header) : m_rows{header} {}

    /// Control characters in the cells are shown as "?".
    void addRow(const QStringList& cells);
    /// Prints the header and the rows to standard output, each line behind @p indent blanks.
    void print(int indent = 0) const;

private:
    QVector<QStringList> m_rows;  // the header first; all of one length
};
