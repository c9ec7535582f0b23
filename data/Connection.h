#pragma once

#include <QSqlDatabase>
#include <QString>

#include <memory>

/// What the copies of one CVelmDatabase share. The last owner closes the connection.
class CVelmDatabasePrivate
{
public:
    CVelmDatabasePrivate();
    ~CVelmDatabasePrivate() { close(); }
    Q_DISABLE_COPY_MOVE(CVelmDatabasePrivate)

    /// Registers and opens a connection under a fresh name. False if it cannot be opened.
    bool open(const QString& driver, const QString& databaseName);

    /// Closes and deregisters the connection. One that never opened stays registered; only its name
    /// is forgotten.
    void close();

    /// Closes @p connection from the event loop of this thread after @p delayMs, unless it is gone
    /// or replaced then.
    static void closeLater(const std::shared_ptr<CVelmDatabasePrivate>& connection, int delayMs);

    /// Whether the connection goes to Access through ODBC.
    bool isOdbc() const { return database.driverName() == QLatin1String("QODBC"); }

    bool inTransaction = false;
    QString connectionName;  // empty while nothing is open
    QSqlDatabase database;
};
