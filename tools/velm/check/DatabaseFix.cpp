#include "check/DatabaseFix.h"

#include "check/Quoted.h"
#include "check/SqlCause.h"

#include "common/files/AtomicFile.h"
#include "common/platform/FileSystem.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>

namespace {

/// The name of a copy that is made now, which no file has yet.
QString nameOfCopy(const QString& path)
{
    const QString ofSecond =
        path + QStringLiteral(".before-fix-")
        + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = ofSecond;
    for (int i = 2; QFile::exists(name); ++i)
        name = QStringLiteral("%1-%2").arg(ofSecond).arg(i);
    return name;
}

QString causeOf(const QSqlQuery& query)
{
    return sqlCause(query.lastError().databaseText());
}

/// Whether a failure concerns the one row only, and the transaction goes on.
bool isRefusal(const QSqlQuery& query)
{
    constexpr int kConstraint = 19;
    return (query.lastError().nativeErrorCode().toInt() & 0xFF) == kConstraint;
}

}  // namespace

DatabaseFix::DatabaseFix(const QString& path)
    : m_path(path), m_identity(velm::detail::platform::fileIdentity(path))
{
    if (m_database.initDatabase(path, QString()) != Velm::VelmOk)
        m_problem = QStringLiteral("it cannot be opened");
    run(QStringLiteral("pragma trusted_schema=off"), QString());
    run(QStringLiteral("begin immediate"), QString());
    makeCopy();
}

DatabaseFix::~DatabaseFix()
{
    m_change = QSqlQuery();
    if (m_committed)
        return;
    m_database.getQSqlDatabase().rollback();
    if (!m_copy.isEmpty())
        QFile::remove(m_copy);
}

/// The copy is made by a connection that only reads, while ours keeps writers out, and under
/// another name: what is called a copy is a whole one.
void DatabaseFix::makeCopy()
{
    if (!m_problem.isEmpty())
        return;
    const QString folder = QFileInfo(m_path).absolutePath();
    velm::detail::StagingFolder::removeLeftOver(folder);
    CVelmDatabase copied;
    if (!m_staging.make(folder))
        m_problem = QStringLiteral("no copy could be kept of it: its folder may not be written");
    else if (copied.initDatabase(m_path, QString()) != Velm::VelmOk)
        m_problem = QStringLiteral("it cannot be opened");
    if (!m_problem.isEmpty())
        return;
    QSqlQuery query(copied.getQSqlDatabase());
    query.prepare(QStringLiteral("vacuum into ?"));
    query.addBindValue(m_staging.path(QStringLiteral("copy")));
    if (!query.exec())
        m_problem = QStringLiteral("no copy could be made of it: ") + causeOf(query);
}

bool DatabaseFix::placeCopy()
{
    const QString made = m_staging.path(QStringLiteral("copy"));
    const QString name = nameOfCopy(m_path);  // the lock keeps others from choosing the same
    QString problem;
    velm::detail::platform::copyAccess(m_path, made);
    if (velm::detail::AtomicFile(name, made).commit(problem))
        m_copy = name;
    else
        m_problem = QStringLiteral("no copy could be kept of it: ") + problem;
    return m_problem.isEmpty();
}

void DatabaseFix::run(const QString& statement, const QString& failure)
{
    if (!m_problem.isEmpty())
        return;
    QSqlQuery query(m_database.getQSqlDatabase());
    if (!query.exec(statement))
        m_problem = failure + causeOf(query);
}

QString DatabaseFix::execute(QSqlQuery& query, const QVariantList& values)
{
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (query.exec())
        return QString();
    if (isRefusal(query))
        return QStringLiteral("SQLite refuses the change: ") + causeOf(query);
    m_problem = QStringLiteral("a change failed: ") + causeOf(query);
    return m_problem;
}

QString DatabaseFix::changeRow(const QString& statement, const QVariantList& values)
{
    if (!m_problem.isEmpty())
        return m_problem;
    if (m_change.lastQuery() != statement) {
        m_change = QSqlQuery(m_database.getQSqlDatabase());
        if (!m_change.prepare(statement)) {
            m_problem = QStringLiteral("a change failed: ") + causeOf(m_change);
            return m_problem;
        }
    }
    QString refusal = execute(m_change, values);
    if (!refusal.isEmpty() || m_change.numRowsAffected() > 0)
        return refusal;
    return QStringLiteral("it is no longer the text that was checked");
}

// "or abort": what the table says of conflicts might end the transaction, or remove other rows.
QString DatabaseFix::change(const Place& place, const QString& value)
{
    return changeRow(QStringLiteral("update or abort %1 set %2 = ? where rowid = ? and %2 = ?")
                         .arg(quoted(place.table), quoted(place.column)),
                     {value, place.row, place.value});
}

QString DatabaseFix::removeRow(const Place& place)
{
    return changeRow(QStringLiteral("delete from %1 where rowid = ? and coalesce(%2, '') = "
                                    "coalesce(?, '')")
                         .arg(quoted(place.table), quoted(place.column)),
                     {place.row, place.value});
}

bool DatabaseFix::commit()
{
    m_change = QSqlQuery();
    if (!m_problem.isEmpty() || !placeCopy())
        return false;
    run(QStringLiteral("commit"), QStringLiteral("the changes could not be committed: "));
    m_committed = m_problem.isEmpty();
    if (velm::detail::platform::fileIdentity(m_path) != m_identity)
        m_problem = QStringLiteral("another program has put another file in its place meanwhile, "
                                   "which is not changed");
    return m_problem.isEmpty();
}
