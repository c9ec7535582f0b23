#pragma once

#include "data/sql/Statement.h"

#include <QVector>

/// Reading the rows of queries within bounds.
namespace velm::detail {

/// What became of a read. Rows that damage in the file hides end the reading: then the status is
/// VelmOk, and the error tells.
struct ReadOutcome
{
    Velm::ErrorStatus status = Velm::VelmOk;
    QSqlError error;

    bool isComplete() const { return !error.isValid(); }
};

/// Keeps the error, or that there is none, as the process-wide last error text. @return the status
Velm::ErrorStatus keep(const ReadOutcome& outcome);

/// Counts what the values that were read take in memory, about.
class ReadBudget
{
public:
    explicit ReadBudget(qint64 mostBytes) : m_left(mostBytes) {}

    void takeRow() { m_left -= kRow; }
    void take(const QVariant& value);
    bool isSpent() const { return m_left < 0; }
    /// The error of a read that has passed the bound.
    static QSqlError error();

private:
    static constexpr qint64 kRow = 32;
    static constexpr qint64 kValue = 64;

    qint64 m_left;
};

// Bytes of memory that one read, and all the tables of one configuration database, may take; far
// beyond what is kept as records.
constexpr qint64 kMostBytesOfRead = Q_INT64_C(4) * 1024 * 1024 * 1024;
constexpr qint64 kMostBytesOfConfig = Q_INT64_C(512) * 1024 * 1024;

/// Turns the rows of an executed query into records with upper-case keys.
class RecordReader
{
public:
    explicit RecordReader(const QSqlQuery& query);
    /// The record on which @p query stands.
    Record record(const QSqlQuery& query, ReadBudget& budget) const;

private:
    struct Column
    {
        QString key;
        int index;
    };
    QVector<Column> m_columns;  // in key order, so that a record is built by appending
};

// These read what a statement yields and leave the last-error text alone. If the statement fails,
// memory runs out or the bound is passed, the status is VelmSqlExecFailed and the output stays.

/// Appends a record for each row.
ReadOutcome readRecords(const QSqlDatabase& database, const QString& sql, QVector<Record>& rows);
/// Appends the first column of each row.
ReadOutcome readColumn(const QSqlDatabase& database, const QString& sql, QList<QVariant>& values);
/// The first row; @p record is empty if there is none.
ReadOutcome readFirstRecord(const QSqlDatabase& database, const QString& sql, Record& record);
/// The first column of the first row; @p value is invalid if there is none.
ReadOutcome readFirstValue(const QSqlDatabase& database, const QString& sql, QVariant& value);

}  // namespace velm::detail
