#include "data/sql/WriteTransaction.h"

#include "data/sql/RowReading.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QThread>

#include <new>

namespace velm::detail {

namespace {

constexpr int kShortestPauseUs = 500;
constexpr int kLongestPauseUs = 5000;

}  // namespace

WriteTransaction::WriteTransaction(const QSqlDatabase& database, bool isWithin)
    : m_database(database)
{
    if (database.driverName() != QLatin1String("QSQLITE"))
        return;
    try {
        isWithin ? beginPart() : begin();
    } catch (const std::bad_alloc&) {
        rollBack();
        m_error = outOfMemory();
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

/// Takes the write lock. SQLite itself asks for it ever more seldom, every 100 ms in the end, and
/// so hardly gets it where several programs write one after the other.
void WriteTransaction::begin()
{
    QVariant patienceMs;
    readFirstValue(m_database, QStringLiteral("pragma busy_timeout"), patienceMs);
    const QDeadlineTimer deadline(patienceMs.toInt());
    run("pragma busy_timeout=0");
    m_error = run("begin immediate");
    while (isLock(m_error) && !deadline.hasExpired()) {
        QThread::usleep(QRandomGenerator::global()->bounded(kShortestPauseUs, kLongestPauseUs));
        m_error = run("begin immediate");
    }
    if (!m_error.isValid())
        m_kind = Kind::Own;
    execute(m_database, QStringLiteral("pragma busy_timeout=%1").arg(patienceMs.toInt()));
    if (m_error.isValid() && !isLock(m_error))
        beginPart();  // there may be a transaction already, begun by whatever text
}

void WriteTransaction::beginPart()
{
    m_error = run("savepoint velm");
    if (!m_error.isValid())
        m_kind = Kind::Part;
}

QSqlError WriteTransaction::commit()
{
    if (m_kind == Kind::None)
        return QSqlError();
    QSqlError error = run(m_kind == Kind::Own ? "commit" : "release velm");
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
