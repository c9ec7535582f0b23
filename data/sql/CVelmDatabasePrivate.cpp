#include "data/sql/CVelmDatabasePrivate.h"

#include "common/files/DatabasePath.h"
#include "common/host/Singleton.h"
#include "CVelmString.h"
#include "data/sql/Connection.h"

#include <QPointer>
#include <QSqlError>
#include <QTimer>
#include <QVector>

#include <functional>
#include <mutex>

using namespace velm::detail;

namespace {

/// The timers of closings to come. They go with the library, whose code they would run.
class DeferredClosings
{
public:
    DeferredClosings() = default;
    ~DeferredClosings()
    {
        if (leaveSingletonsToSystem)
            return;
        for (const QPointer<QTimer>& timer : qAsConst(m_timers))
            delete timer.data();
    }
    Q_DISABLE_COPY(DeferredClosings)

    /// Runs @p close from the event loop of this thread after @p delayMs.
    void add(int delayMs, const std::function<void()>& close)
    {
        constexpr int kCoarseFromMs = 2000;
        auto* timer = new QTimer;
        timer->setSingleShot(true);
        timer->setTimerType(delayMs >= kCoarseFromMs ? Qt::CoarseTimer : Qt::PreciseTimer);
        QObject::connect(timer, &QTimer::timeout, timer, close);
        QObject::connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
        timer->start(delayMs);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_timers.removeAll(nullptr);
        m_timers.append(timer);
    }

private:
    std::mutex m_mutex;
    QVector<QPointer<QTimer>> m_timers;
};

}  // namespace

CVelmDatabasePrivate::CVelmDatabasePrivate()
{
    // Makes Qt's list of connections first, so that it is there when an object of static lifetime
    // goes and deregisters its own.
    QSqlDatabase::contains();
}

bool CVelmDatabasePrivate::openSqlite(const QString& fileName)
{
    add(QStringLiteral("QSQLITE"), databaseName(fileName));
    openProblem = databasePathProblem(fileName);
    return openProblem.isEmpty() && open();
}

bool CVelmDatabasePrivate::openAccess(const QString& databaseName)
{
    add(QStringLiteral("QODBC"), databaseName);
    return open();
}

void CVelmDatabasePrivate::add(const QString& driver, const QString& databaseName)
{
    problems.clear();
    budget = ReadBudget(kMostBytesOfConfig);
    connectionName = CVelmString::makeGuid();
    database = addConnection(driver, connectionName);
    database.setDatabaseName(unshared(databaseName));
}

bool CVelmDatabasePrivate::open()
{
    const bool isOpened = database.open();
    openProblem = isOpened ? QString() : database.lastError().text();
    return isOpened;
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
    static DeferredClosings closings;
    const std::weak_ptr<CVelmDatabasePrivate> observed = connection;
    const QString name = connection->connectionName;
    closings.add(qMax(0, delayMs), [observed, name] {
        const auto still = observed.lock();
        if (still && still->connectionName == name)
            still->close();
    });
}
