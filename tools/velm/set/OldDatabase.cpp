#include "set/OldDatabase.h"

#include "data/sql/Patience.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#include <algorithm>

namespace {

/// SQLite's result codes for a database that another program uses.
bool tellsBusy(const QSqlError& error)
{
    return error.nativeErrorCode() == QLatin1String("5")
           || error.nativeErrorCode() == QLatin1String("6");
}

bool hasSideFiles(const QString& path)
{
    const QStringList files = OldDatabase::sideFiles(path);
    return std::any_of(files.begin(), files.end(),
                       [](const QString& file) { return QFileInfo::exists(file); });
}

}  // namespace

OldDatabase::OldDatabase(const QString& path)
    : m_path(path), m_connection(QUuid::createUuid().toString())
{}

OldDatabase::~OldDatabase()
{
    QSqlDatabase::removeDatabase(m_connection);
}

QStringList OldDatabase::sideFiles(const QString& path)
{
    return {path + QStringLiteral("-journal"), path + QStringLiteral("-wal"),
            path + QStringLiteral("-shm")};
}

QString OldDatabase::settle()
{
    if (!QFileInfo(m_path).isFile())
        return QString();
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
        database.setDatabaseName(m_path);
        database.setConnectOptions(
            QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(velm::detail::kReplacePatienceMs));
        database.open();
    }
    bool busy = false;
    QString problem = execute(QStringLiteral("pragma journal_mode=delete"), busy);
    if (problem.isEmpty())
        problem = execute(QStringLiteral("begin exclusive"), busy);
    if (busy)
        return QStringLiteral("another program uses it");
    if (problem.isEmpty())
        return QString();
    QSqlDatabase::removeDatabase(m_connection);  // SQLite may remove what belongs to nothing now
    if (!hasSideFiles(m_path))
        return QString();
    return QStringLiteral("what SQLite has left beside it cannot be brought into it: ") + problem;
}

QString OldDatabase::execute(const QString& statement, bool& busy)
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (query.exec(statement))
        return QString();
    busy = busy || tellsBusy(query.lastError());
    return query.lastError().databaseText();
}
