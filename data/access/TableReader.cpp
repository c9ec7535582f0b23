#include "data/access/TableReader.h"

#include "CVelmDatabase.h"
#include "data/access/ConfigDatabase.h"
#include "data/sql/CVelmDatabasePrivate.h"
#include "data/sql/SqlText.h"

#include <QFileInfo>
#include <QSqlRecord>

#include <new>

namespace velm::detail {

TableReader::TableReader(const CVelmDatabase& database, const QString& table)
    : m_database(database), m_table(table), m_query(forwardQuery(database.getQSqlDatabase())),
      m_budget(DatabaseAccess::connection(database).budget)
{
    begin(findConfigTable(database.getQSqlDatabase(), table));
}

TableReader::TableReader(const CVelmDatabase& database, const ConfigTable& table)
    : m_database(database), m_table(table.name), m_query(forwardQuery(database.getQSqlDatabase())),
      m_budget(DatabaseAccess::connection(database).budget)
{
    begin(table);
}

void TableReader::begin(const ConfigTable& table)
{
    if (table.status != Velm::VelmOk) {
        tell(table.problem);
        return;
    }
    const QSqlError error =
        execute(m_query, selectAll(QLatin1Char('[') + table.name + QLatin1Char(']')));
    if (isOutOfMemory(error))
        throw std::bad_alloc();
    if (error.isValid()) {
        tell(describe(error));
        return;
    }
    const QSqlRecord fields = m_query.record();
    for (int i = 0; i < fields.count(); ++i)
        m_columns.insert(fields.fieldName(i).toUpper(), i);
}

bool TableReader::next()
{
    if (m_brokeOff)
        return false;
    m_budget.takeRow();
    if (!m_budget.isSpent() && m_query.next())
        return true;
    const QSqlError error = m_budget.isSpent() ? ReadBudget::error() : m_query.lastError();
    if (isOutOfMemory(error))
        throw std::bad_alloc();
    m_brokeOff = m_query.isActive() && error.isValid();
    if (m_brokeOff)
        tell(QStringLiteral("reading broke off: ") + describe(error));
    return false;
}

int TableReader::column(const QString& upperName) const
{
    return m_columns.value(upperName, -1);
}

QVariant TableReader::value(int column) const
{
    if (column < 0)
        return QVariant();
    QVariant value = m_query.value(column);
    m_budget.take(value);
    return value;
}

void addReadProblem(const CVelmDatabase& database, const QString& table, const QString& problem)
{
    if (!database.isOpen())
        return;
    const QString file = QFileInfo(database.getQSqlDatabase().databaseName()).fileName();
    DatabaseAccess::connection(database).problems.append(
        QStringLiteral("%1, table \"%2\": ").arg(file, table) + problem);
}

QStringList readProblems(const CVelmDatabase& database)
{
    return DatabaseAccess::connection(database).problems;
}

}  // namespace velm::detail
