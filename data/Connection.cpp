#include "data/Connection.h"

#include "common/files/DatabasePath.h"
#include "common/platform/Platform.h"
#include "CVelmString.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <mutex>

namespace velm::detail {

namespace {

/// Lets Qt look for plug-ins beside this library too, and then again when the application object
/// is there: Qt keeps the list of drivers that it found first.
void preparePlugins()
{
    static std::mutex mutex;
    static bool looked = false;
    static bool lookedWithApplication = false;
    const bool hasApplication = QCoreApplication::instance();
    const std::lock_guard<std::mutex> lock(mutex);
    if (looked && (lookedWithApplication || !hasApplication))
        return;
    looked = true;
    lookedWithApplication = hasApplication;
    QStringList folders = QCoreApplication::libraryPaths();
    const QString own = QDir(QFileInfo(platform::libraryPath()).absolutePath()).canonicalPath();
    if (!folders.contains(own))
        folders.append(own);  // last: what the host has chosen comes first
    QCoreApplication::setLibraryPaths(folders);
}

}  // namespace

QSqlDatabase addConnection(const QString& driver, const QString& name)
{
    preparePlugins();
    return QSqlDatabase::addDatabase(driver, name);
}

QString openingProblem(const QString& fileName, const QSqlError& error)
{
    const QString problem = databasePathProblem(fileName);
    return problem.isEmpty() ? error.text() : problem;
}

QString cannotOpen(const QString& fileName, const QSqlError& error)
{
    return QStringLiteral("cannot open the database \"%1\": ").arg(fileName)
           + openingProblem(fileName, error);
}

}  // namespace velm::detail

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
    database = velm::detail::addConnection(driver, connectionName);
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
