#include "data/Connection.h"

#include "CVelmString.h"

#include <QTimer>

QString velm::detail::cannotOpen(const QString& fileName, const QSqlError& error)
{
    return QStringLiteral("cannot open the database \"%1\": ").arg(fileName) + error.text();
}

CVelmDatabasePrivate::CVelmDatabasePrivate()
{
    // Makes Qt's list of connections first, so that it is there when an object of static lifetime
    // goes and deregisters its own.
    QSqlDatabase::contains();
}

bool CVelmDatabasePrivate::open(const QString& driver, const QString& databaseName)
{
    problems.clear();
    budget = velm::detail::ReadBudget(velm::detail::kMostBytesOfConfig);
    connectionName = CVelmString::makeGuid();
    database = QSqlDatabase::addDatabase(driver, connectionName);
    database.setDatabaseName(databaseName);
    return database.open();
}

void CVelmDatabasePrivate::close()
{
    if (database.isOpen()) {
        database.close();
        database = QSqlDatabase();  // Qt removes a connection only after its last handle
        QSqlDatabase::removeDatabase(connectionName);
    }
    connectionName.clear();
    inTransaction = false;
}

void CVelmDatabasePrivate::closeLater(const std::shared_ptr<CVelmDatabasePrivate>& connection,
                                      int delayMs)
{
    const std::weak_ptr<CVelmDatabasePrivate> observed = connection;
    const QString name = connection->connectionName;
    QTimer::singleShot(qMax(0, delayMs), [observed, name] {
        const auto still = observed.lock();
        if (still && still->connectionName == name)
            still->close();
    });
}
