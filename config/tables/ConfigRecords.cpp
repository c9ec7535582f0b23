#include "config/tables/ConfigRecords.h"

#include "config/tables/ConfigRecord.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/SystemConfig.h"
#include "data/sql/SqlText.h"

#include <QSet>

#include <new>

namespace velm::detail {

namespace {

/// Whether SQLite finds rows by a text without reading the whole table, given the statement up to
/// that text.
bool searches(const QSqlDatabase& database, const QString& sql)
{
    QSqlQuery plan = forwardQuery(database);
    const QSqlError error =
        execute(plan, QStringLiteral("explain query plan ") + sql + QStringLiteral("'x'"));
    return !error.isValid() && plan.next()
           && plan.value(3).toString().startsWith(QLatin1String("SEARCH"));
}

/// Whether SQLite finds a text in the column just where the column holds that very text: it turns
/// none into a number, and letter case and blanks count. @p definition is that of the table.
bool holdsTexts(const QSqlDatabase& database, const QString& table, const QString& definition,
                const QString& column)
{
    if (definition.contains(QLatin1String("collate"), Qt::CaseInsensitive))
        return false;
    QVariant count;
    readFirstValue(database,
                   QStringLiteral("select count(*) from pragma_table_info('%1') where name = '%2' "
                                  "collate nocase and type not like '%int%' and (type = '' or "
                                  "type like '%char%' or type like '%clob%' or "
                                  "type like '%text%' or type like '%blob%')")
                       .arg(table, column),
                   count);
    return count.toInt() > 0;
}

}  // namespace

ConfigRecords::ConfigRecords(const QString& table, const QString& keyColumn,
                             const QStringList& keys)
    : m_table(table), m_keyColumn(keyColumn)
{
    m_status = openSystemConfig(m_database);
    if (m_status == Velm::VelmOk)
        m_status = keepResult(execute(m_database.getQSqlDatabase(), QStringLiteral("begin")));
    try {
        if (m_status == Velm::VelmOk)
            find(keys);
    } catch (const std::bad_alloc&) {
        m_rows.clear();
        m_status = keepResult(outOfMemory());
    }
}

void ConfigRecords::find(const QStringList& keys)
{
    const QSqlDatabase connection = m_database.getQSqlDatabase();
    const ConfigTable found = findConfigTable(connection, m_table);
    m_status = Velm::VelmNoData;  // a table that is missing has no rows
    if (found.status == Velm::VelmSqlExecFailed)
        m_status = keepResult(sqlFailure(found.problem));
    if (found.status != Velm::VelmOk)
        return;
    const QString all = selectAll(QLatin1Char('[') + found.name + QLatin1Char(']'));
    const QString one = all + QStringLiteral(" where [%1]=").arg(m_keyColumn);
    if (!searches(connection, one) && holdsTexts(connection, found.name, found.sql, m_keyColumn)) {
        readAll(all, keys);
        return;
    }
    m_isPrepared = true;
    m_query = forwardQuery(connection);
    if (!m_query.prepare(one + QLatin1Char('?')))
        m_status = keepResult(m_query.lastError());
}

void ConfigRecords::readAll(const QString& sql, const QStringList& keys)
{
    const QSet<QString> wanted(keys.begin(), keys.end());
    const QString key = m_keyColumn.toUpper();
    ReadBudget budget(kMostBytesOfConfig);
    QSqlQuery query = forwardQuery(m_database.getQSqlDatabase());
    QSqlError error = execute(query, sql);
    const RecordReader reader(query);
    while (!error.isValid() && query.next()) {
        const Record row = reader.record(query, budget);
        const QVariant value = row.value(key);
        const bool isText = value.userType() == QMetaType::QString && !value.isNull();
        const QString found = value.toString();
        if (isText && wanted.contains(found) && !m_rows.contains(found))
            m_rows.insert(found, row);
        if (budget.isSpent())
            error = ReadBudget::error();
    }
    if (!error.isValid())
        error = query.lastError();
    if (error.isValid())
        m_status = keepResult(error);
}

Velm::ErrorStatus ConfigRecords::read(const QString& key, Record& row)
{
    if (m_status == Velm::VelmNoData && m_isPrepared)
        return search(key, row);
    row = m_rows.value(key);
    return row.isEmpty() ? m_status : Velm::VelmOk;
}

Velm::ErrorStatus ConfigRecords::search(const QString& key, Record& row)
{
    row.clear();
    try {
        m_query.bindValue(0, key.isNull() ? QStringLiteral("") : key);
        const bool found = m_query.exec() && m_query.next();
        if (found && !m_reader)
            m_reader.emplace(m_query);
        ReadBudget budget(kMostBytesOfRead);
        if (found)
            row = m_reader->record(m_query, budget);
        const Velm::ErrorStatus status = keepResult(m_query.lastError());
        m_query.finish();
        return found || status != Velm::VelmOk ? status : Velm::VelmNoData;
    } catch (const std::bad_alloc&) {
        return keepResult(outOfMemory());
    }
}

}  // namespace velm::detail
