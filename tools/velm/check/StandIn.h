#pragma once

#include "check/CheckedTable.h"

#include "set/TextImport.h"

#include <QFileInfo>
#include <QVector>

/// A text file of the older set that stands in for a table without rows.
class StandIn
{
public:
    /// The names of the files, and of the tables that they stand in for.
    static const QVector<QPair<QString, QString>>& files();

    /// Reads the file @p name from where the library finds it, if there is one.
    explicit StandIn(const QString& name);

    bool isThere() const { return m_file.isFile(); }
    /// Why what is there cannot be read; empty if it can, or nothing is there.
    const QString& problem() const { return m_problem; }

    /// Whether the library's reader takes files of one line only.
    bool takesOneLine() const { return m_name != QLatin1String("attribute.def"); }
    int lineCount() const { return m_import.lineCount(); }
    /// Whether the reader takes lines of it.
    bool isTaken() const { return isThere() && (!takesOneLine() || lineCount() == 1); }
    const QVector<UnusedLine>& unused() const { return m_import.unused(); }

    /// The place of a line; of the file as a whole for line 0.
    Place place(int line) const;
    /// What the lines say of a table, as rows numbered by line.
    CheckedTable table(const QString& name) const;

private:
    QString m_name;
    QFileInfo m_file;
    QString m_problem;
    TextImport m_import;
};
