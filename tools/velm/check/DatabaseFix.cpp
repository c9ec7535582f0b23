#include "check/DatabaseFix.h"

#include "check/Quoted.h"

#include <QDateTime>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>

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

}  // namespace

DatabaseFix::DatabaseFix(const QString& path)
{
    CVelmDatabase copied;
    if (m_database.initDatabase(path, QString()) != Velm::VelmOk
        || copied.initDatabase(path, QString()) != Velm::VelmOk)
        m_problem = QStringLiteral("it cannot be opened");
    execute(m_database, QStringLiteral("pragma trusted_schema=off"), {}, QString());
    // The copy is made by a connection that only reads, while this one keeps writers out.
    execute(m_database, QStringLiteral("begin immediate"), {},
            QStringLiteral("it cannot be written: "));
    if (m_problem.isEmpty())
        m_copy = nameOfCopy(path);  // the lock keeps others from choosing the same
    execute(copied, QStringLiteral("vacuum into ?"), {m_copy},
            QStringLiteral("no copy could be made of it: "));
}

DatabaseFix::~DatabaseFix()
{
    if (m_committed)
        return;
    m_database.getQSqlDatabase().rollback();
    if (!m_copy.isEmpty())
        QFile::remove(m_copy);
}

bool DatabaseFix::execute(CVelmDatabase& database, const QString& statement,
                          const QVariantList& values, const QString& failure)
{
    if (!m_problem.isEmpty())
        return false;
    QSqlQuery query(database.getQSqlDatabase());
    bool done = query.prepare(statement);
    for (const QVariant& value : values)
        query.addBindValue(value);
    done = done && query.exec();
    m_changed = query.numRowsAffected();
    if (!done)
        m_problem = failure + query.lastError().databaseText().trimmed();
    return done;
}

bool DatabaseFix::change(const Place& place, const QString& value)
{
    return execute(m_database,
                   QStringLiteral("update %1 set %2 = ? where rowid = ? and %2 = ?")
                       .arg(quoted(place.table), quoted(place.column)),
                   {value, place.row, place.value}, QStringLiteral("a change was refused: "))
           && m_changed > 0;
}

bool DatabaseFix::removeRow(const Place& place)
{
    return execute(m_database,
                   QStringLiteral("delete from %1 where rowid = ? and coalesce(%2, '') = ''")
                       .arg(quoted(place.table), quoted(place.column)),
                   {place.row}, QStringLiteral("a change was refused: "))
           && m_changed > 0;
}

bool DatabaseFix::commit()
{
    m_committed = execute(m_database, QStringLiteral("commit"), {},
                          QStringLiteral("the changes could not be committed: "));
    return m_committed;
}
