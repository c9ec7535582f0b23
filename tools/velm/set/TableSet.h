#pragma once

#include <QStringList>
#include <QVector>

/// One table of a configuration set.
struct SetTable
{
    struct Column
    {
        QString name;
        QString type;  ///< TEXT, INT, LONG or REAL
    };

    QString name;
    QVector<Column> columns;
    QStringList key;  ///< the columns by which it is looked up
    QVector<QStringList>
        rows;  ///< cells in column order; documents that stood beside the table are filled in
};

/// One database of a configuration set.
struct DatabaseTables
{
    QString fileName;
    QVector<SetTable> tables;  ///< in the order of creation

    /// The table of that name; an empty one if there is none.
    SetTable table(const QString& tableName) const;
};

/// Reads the sample configuration that the program carries. What is wrong with it ends up in @p
/// problem.
QVector<DatabaseTables> readSampleSet(QString& problem);

/// The system configuration database of it.
DatabaseTables systemDatabase(QString& problem);

/// Makes a database file with all tables, rows and an index on every key. @return what went wrong;
/// empty if nothing did
QString writeDatabase(const DatabaseTables& sample, const QString& path);
