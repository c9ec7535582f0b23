#pragma once

#include "CVelmDatabase.h"
#include "data/sql/RowReading.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <memory>

/// What the copies of one CVelmDatabase share. The last owner closes the connection.
class CVelmDatabasePrivate
{
public:
    CVelmDatabasePrivate();
    ~CVelmDatabasePrivate() { close(); }
    Q_DISABLE_COPY_MOVE(CVelmDatabasePrivate)

    /// Registers a connection under a fresh name and opens it. False if that fails; then
    /// openProblem tells why.
    bool openSqlite(const QString& fileName);
    bool openAccess(const QString& databaseName);

    /// Closes and deregisters the connection. One that never opened stays registered; only its name
    /// is forgotten.
    void close();

    /// Closes @p connection from the event loop of this thread after @p delayMs, unless it is gone
    /// or replaced then.
    static void closeLater(const std::shared_ptr<CVelmDatabasePrivate>& connection, int delayMs);

    /// Whether the connection goes to Access through ODBC.
    bool isOdbc() const { return database.driverName() == QLatin1String("QODBC"); }

    bool inTransaction = false;
    QString openProblem;
    QStringList problems;  // what could not be read of the configuration that is open
    velm::detail::ReadBudget budget{velm::detail::kMostBytesOfConfig};  // for all its tables
    QString connectionName;  // empty while nothing is open
    QSqlDatabase database;

private:
    void add(const QString& driver, const QString& databaseName);
    bool open();
};

namespace velm::detail {

/// Leads from a database object to its connection.
struct DatabaseAccess
{
    static CVelmDatabasePrivate& connection(const CVelmDatabase& database) { return *database.d; }
};

}  // namespace velm::detail
