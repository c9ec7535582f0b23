#include "data/sql/Connection.h"

#include "common/host/Singleton.h"
#include "common/platform/Platform.h"
#include "data/sql/Patience.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

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

}  // namespace

QSqlDatabase addConnection(const QString& driver, const QString& name)
{
    static const EndMark mark;
    preparePlugins();
    QSqlDatabase database = QSqlDatabase::addDatabase(unshared(driver), unshared(name));
    if (driver == QLatin1String("QSQLITE"))
        database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(kLockPatienceMs));
    return database;
}

QString unshared(const QString& text)
{
    return QString(text.constData(), text.size());
}

QString cannotOpen(const QString& fileName, const QString& why)
{
    return QStringLiteral("cannot open the database \"%1\": ").arg(fileName) + why;
}

}  // namespace velm::detail
