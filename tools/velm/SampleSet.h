#pragma once

#include <QStringList>
#include <QVector>

/// One table of the sample configuration.
struct SampleTable
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

/// One database of the sample configuration.
struct SampleDatabase
{
    QString fileName;
    QVector<SampleTable> tables;  ///< in the order of creation

    /// The table of that name; an empty one if there is none.
    SampleTable table(const QString& tableName) const;
};

/// Reads the sample configuration that the program carries. What is wrong with it ends up in @p
/// problem.
QVector<SampleDatabase> readSampleSet(QString& problem);

/// The system configuration database of it.
SampleDatabase systemDatabase(QString& problem);

/// Makes a database file with all tables, rows and an index on every key. @return what went wrong;
/// empty if nothing did
QString writeSampleDatabase(const SampleDatabase& sample, const QString& path);
