#include "data/Statement.h"

#include "data/SqlText.h"

#include <QMutex>
#include <QMutexLocker>
#include <QSqlError>
#include <QSqlRecord>

#include <algorithm>

namespace velm::detail {

namespace {

/// The last error text, shared by all connections of the process.
struct LastError
{
    QMutex mutex;
    QString text;
    bool isLock = false;
};

LastError& lastError()
{
    static LastError error;
    return error;
}

/// SQLITE_BUSY and SQLITE_LOCKED.
bool isLock(const QSqlError& error)
{
    return error.nativeErrorCode() == QLatin1String("5")
           || error.nativeErrorCode() == QLatin1String("6");
}

Velm::ErrorStatus keepResult(const QSqlQuery& query, bool succeeded)
{
    const QMutexLocker lock(&lastError().mutex);
    lastError().text = succeeded ? QString() : query.lastError().text();
    lastError().isLock = !succeeded && isLock(query.lastError());
    return succeeded ? Velm::VelmOk : Velm::VelmSqlExecFailed;
}

/// SQLite's driver binds a float as text.
QVariant bindable(const QVariant& value)
{
    return value.userType() == QMetaType::Float && !value.isNull() ? value.toDouble() : value;
}

}  // namespace

QSqlQuery forwardQuery(const QSqlDatabase& database)
{
    // Made from an invalid handle, a query would go to the default connection of the process.
    QSqlQuery query =
        database.isValid() ? QSqlQuery(database) : QSqlQuery(static_cast<QSqlResult*>(nullptr));
    query.setForwardOnly(true);
    return query;
}

Velm::ErrorStatus runStatement(QSqlQuery& query, const QString& sql)
{
    if (query.isValid())
        return Velm::VelmQueryBusy;
    return keepResult(query, query.exec(sql));
}

Velm::ErrorStatus runBound(QSqlQuery& query, const QString& sql, const QVariantList& values)
{
    bool succeeded = query.prepare(sql);
    if (succeeded) {
        // By position: Qt finds no placeholder by a name that is not ASCII.
        for (int i = 0; i < values.size(); ++i)
            query.bindValue(i, bindable(values.at(i)));
        succeeded = query.exec();
    }
    return keepResult(query, succeeded);
}

void keepReadError(const QSqlQuery& query)
{
    if (query.lastError().isValid())
        keepResult(query, false);
}

bool lastErrorIsLock()
{
    const QMutexLocker lock(&lastError().mutex);
    return lastError().isLock;
}

QString lastErrorText()
{
    const QMutexLocker lock(&lastError().mutex);
    return lastError().text;
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

Record RecordReader::record(const QSqlQuery& query) const
{
    Record record;
    for (const Column& column : m_columns)
        record.insert(record.cend(), column.key, query.value(column.index));
    return record;
}

TableReader::TableReader(const QSqlDatabase& database, const QString& table)
    : m_query(forwardQuery(database))
{
    if (runStatement(m_query, selectAll(table)) != Velm::VelmOk)
        return;
    const QSqlRecord fields = m_query.record();
    for (int i = 0; i < fields.count(); ++i)
        m_columns.insert(fields.fieldName(i).toUpper(), i);
}

bool TableReader::next()
{
    const bool found = m_query.next();
    if (!found)
        keepReadError(m_query);
    return found;
}

int TableReader::column(const QString& upperName) const
{
    return m_columns.value(upperName, -1);
}

}  // namespace velm::detail
