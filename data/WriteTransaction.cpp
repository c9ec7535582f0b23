#include "data/WriteTransaction.h"

#include "data/Statement.h"

#include <new>

namespace velm::detail {

WriteTransaction::WriteTransaction(const QSqlDatabase& database) : m_database(database)
{
    if (database.driverName() != QLatin1String("QSQLITE"))
        return;
    m_error = run("begin immediate");
    if (!m_error.isValid()) {
        m_kind = Kind::Own;
    } else if (!isLock(m_error)) {  // there may be a transaction already, begun by whatever text
        m_error = run("savepoint velm");
        if (!m_error.isValid())
            m_kind = Kind::Part;
    }
}

WriteTransaction::~WriteTransaction()
{
    try {
        rollBack();
    } catch (const std::bad_alloc&) {
        m_kind = Kind::None;  // the end of the connection rolls back
    }
}

QSqlError WriteTransaction::commit()
{
    if (m_kind == Kind::None)
        return QSqlError();
    const QSqlError error = run(m_kind == Kind::Own ? "commit" : "release velm");
    if (error.isValid())
        rollBack();
    m_kind = Kind::None;
    return error;
}

bool WriteTransaction::isLost()
{
    if (m_kind == Kind::None || run("begin").isValid())
        return false;  // one cannot begin within another
    run("rollback");
    m_kind = Kind::None;
    return true;
}

QSqlError WriteTransaction::run(const char* sql) const
{
    return execute(m_database, QLatin1String(sql));
}

void WriteTransaction::rollBack()
{
    if (m_kind == Kind::Own)
        run("rollback");
    if (m_kind == Kind::Part) {
        run("rollback to velm");
        run("release velm");
    }
    m_kind = Kind::None;
}

}  // namespace velm::detail
