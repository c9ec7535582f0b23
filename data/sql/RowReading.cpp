#include "data/sql/RowReading.h"

#include <QSqlRecord>

#include <algorithm>
#include <new>
#include <optional>

namespace velm::detail {

namespace {

ReadOutcome failed(const QSqlError& error)
{
    return {Velm::VelmSqlExecFailed, error};
}

/// Executes @p sql and calls @p readRow on each row until it answers false.
template<class ReadRow>
ReadOutcome readRows(const QSqlDatabase& database, const QString& sql, const ReadRow& readRow)
{
    QSqlQuery query = forwardQuery(database);
    const QSqlError error = execute(query, sql);
    if (error.isValid())
        return failed(error);
    while (query.next()) {
        if (!readRow(query))
            return {};
    }
    return isOutOfMemory(query.lastError()) ? failed(outOfMemory())
                                            : ReadOutcome{Velm::VelmOk, query.lastError()};
}

/// Appends to @p list what @p make makes of each row; takes it all back unless the end is reached
/// or damage hides the rest.
template<class List, class Make>
ReadOutcome appendRows(const QSqlDatabase& database, const QString& sql, List& list,
                       const Make& make)
{
    const int before = list.size();
    ReadBudget budget(kMostBytesOfRead);
    ReadOutcome outcome;
    try {
        outcome = readRows(database, sql, [&](const QSqlQuery& query) {
            budget.takeRow();
            list.append(make(query, budget));
            return !budget.isSpent();
        });
        if (budget.isSpent())
            outcome = failed(ReadBudget::error());
    } catch (const std::bad_alloc&) {
        outcome = failed(outOfMemory());
    }
    if (outcome.status != Velm::VelmOk)
        list.erase(list.begin() + before, list.end());
    return outcome;
}

}  // namespace

Velm::ErrorStatus keep(const ReadOutcome& outcome)
{
    keepResult(outcome.error);
    return outcome.status;
}

void ReadBudget::take(const QVariant& value)
{
    constexpr qint64 kHeader = 40;  // of the memory that a text or its like has for itself
    m_left -= kValue;
    if (value.userType() == QMetaType::QString)
        m_left -= kHeader + 2 * static_cast<const QString*>(value.constData())->size();
    else if (value.userType() == QMetaType::QByteArray)
        m_left -= kHeader + static_cast<const QByteArray*>(value.constData())->size();
}

QSqlError ReadBudget::error()
{
    return sqlFailure(QStringLiteral("more rows than can be read at a time"));
}

RecordReader::RecordReader(const QSqlQuery& query)
{
    const QSqlRecord fields = query.record();
    m_columns.reserve(fields.count());
    for (int i = 0; i < fields.count(); ++i)
        m_columns.append({fields.fieldName(i).toUpper(), i});
    std::stable_sort(m_columns.begin(), m_columns.end(),
                     [](const Column& a, const Column& b) { return a.key < b.key; });
}

Record RecordReader::record(const QSqlQuery& query, ReadBudget& budget) const
{
    Record record;
    for (const Column& column : m_columns) {
        const QVariant value = query.value(column.index);
        budget.take(value);
        record.insert(record.cend(), column.key, value);
    }
    return record;
}

ReadOutcome readRecords(const QSqlDatabase& database, const QString& sql, QVector<Record>& rows)
{
    std::optional<RecordReader> reader;
    return appendRows(database, sql, rows, [&](const QSqlQuery& query, ReadBudget& budget) {
        if (!reader)
            reader.emplace(query);
        return reader->record(query, budget);
    });
}

ReadOutcome readColumn(const QSqlDatabase& database, const QString& sql, QList<QVariant>& values)
{
    return appendRows(database, sql, values, [](const QSqlQuery& query, ReadBudget& budget) {
        QVariant value = query.value(0);
        budget.take(value);
        return value;
    });
}

ReadOutcome readFirstRecord(const QSqlDatabase& database, const QString& sql, Record& record)
{
    Record first;
    try {
        ReadOutcome outcome = readRows(database, sql, [&](const QSqlQuery& query) {
            ReadBudget budget(kMostBytesOfRead);
            first = RecordReader(query).record(query, budget);
            return false;
        });
        if (outcome.status == Velm::VelmOk)
            record = first;
        return outcome;
    } catch (const std::bad_alloc&) {
        return failed(outOfMemory());
    }
}

ReadOutcome readFirstValue(const QSqlDatabase& database, const QString& sql, QVariant& value)
{
    QVariant first;
    try {
        ReadOutcome outcome = readRows(database, sql, [&](const QSqlQuery& query) {
            first = query.value(0);
            return false;
        });
        if (outcome.status == Velm::VelmOk)
            value = first;
        return outcome;
    } catch (const std::bad_alloc&) {
        return failed(outOfMemory());
    }
}

}  // namespace velm::detail
