#include "data/sql/Connection.h"

#include "common/files/DatabasePath.h"
#include "common/host/Singleton.h"
#include "common/platform/Platform.h"
#include "CVelmString.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QTimer>
#include <QVector>

#include <functional>
#include <mutex>

namespace velm::detail {

namespace {

/// Adds the folder of a module. One whose path the system does not tell adds nothing: plug-ins must
/// not come from the current folder.
void addFolderOf(const QString& module, QStringList& folders)
{
    const QString folder = QDir(QFileInfo(module).absolutePath()).canonicalPath();
    if (!module.isEmpty() && !folder.isEmpty())
        folders.append(folder);
}

/// Lets Qt look for plug-ins beside this library too, and then again when the application object
/// is there: Qt keeps the list of drivers that it found first. What the host has chosen comes
/// before, and so does the program's folder, which Qt puts behind when it makes the object.
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
    if (!hasApplication)
        addFolderOf(platform::modulePath(nullptr), folders);
    addFolderOf(platform::libraryPath(), folders);
    folders.removeDuplicates();
    QCoreApplication::setLibraryPaths(folders);
}

/// At the end of a process what Qt keeps of databases goes before an application object that is
/// older: at the end of that one nothing may be saved any more.
struct EndMark
{
    EndMark() = default;
    ~EndMark() { singletonsAreGone = true; }
    Q_DISABLE_COPY(EndMark)
};

/// A copy that shares nothing: Qt keeps texts of a connection longer than the library, or the
/// module that they come from, may be loaded.
QString copied(const QString& text)
{
    return QString(text.constData(), text.size());
}

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

QSqlDatabase addConnection(const QString& driver, const QString& name)
{
    static const EndMark mark;
    preparePlugins();
    return QSqlDatabase::addDatabase(copied(driver), copied(name));
}

QString cannotOpen(const QString& fileName, const QString& why)
{
    return QStringLiteral("cannot open the database \"%1\": ").arg(fileName) + why;
}

}  // namespace velm::detail

CVelmDatabasePrivate::CVelmDatabasePrivate()
{
    // Makes Qt's list of connections first, so that it is there when an object of static lifetime
    // goes and deregisters its own.
    QSqlDatabase::contains();
}

bool CVelmDatabasePrivate::openSqlite(const QString& fileName)
{
    add(QStringLiteral("QSQLITE"), velm::detail::databaseName(fileName));
    openProblem = velm::detail::databasePathProblem(fileName);
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
    budget = velm::detail::ReadBudget(velm::detail::kMostBytesOfConfig);
    connectionName = CVelmString::makeGuid();
    database = velm::detail::addConnection(driver, connectionName);
    database.setDatabaseName(velm::detail::copied(databaseName));
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
    static velm::detail::DeferredClosings closings;
    const std::weak_ptr<CVelmDatabasePrivate> observed = connection;
    const QString name = connection->connectionName;
    closings.add(qMax(0, delayMs), [observed, name] {
        const auto still = observed.lock();
        if (still && still->connectionName == name)
            still->close();
    });
}
