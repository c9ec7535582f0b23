#include "common/files/SearchPaths.h"

#include "common/files/DatabaseNames.h"
#include "common/host/Singleton.h"
#include "common/platform/Platform.h"

#include <QDir>
#include <QFileInfo>

namespace velm::detail {

namespace {

bool isFolderPath(const QString& path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

QString absoluteFolder(const QString& path)
{
    return QDir(QDir::fromNativeSeparators(path)).absolutePath();
}

}  // namespace

SearchPaths& SearchPaths::instance()
{
    static Singleton<SearchPaths> instance;
    return *instance.get([] { return new SearchPaths; });
}

QString SearchPaths::root() const
{
    const QString configured =
        m_root.isEmpty() ? platform::environmentVariable(QStringLiteral("VELM_ROOT")) : m_root;
    return isFolderPath(configured) ? absoluteFolder(configured)
                                    : QFileInfo(platform::libraryPath()).absolutePath();
}

bool SearchPaths::setRoot(const QString& folder)
{
    if (!folder.isEmpty() && !isFolderPath(folder))
        return false;
    m_root = folder.isEmpty() ? QString() : absoluteFolder(folder);
    return true;
}

QString SearchPaths::configFolder() const
{
    return root() + QStringLiteral("/config");
}

QString SearchPaths::systemDatabase() const
{
    return configFolder() + QLatin1Char('/') + QLatin1String(kSystemDatabaseName);
}

QString SearchPaths::pipeDatabase() const
{
    return configFolder() + QLatin1Char('/') + QLatin1String(kPipeDatabaseName);
}

QStringList SearchPaths::folders() const
{
    QStringList folders = m_hostPaths;
    for (const QString& own : {configFolder(), root()}) {
        if (!folders.contains(own))
            folders.append(own);
    }
    return folders;
}

bool SearchPaths::add(const QString& folder)
{
    if (!isFolderPath(folder))
        return false;
    const QString path = QDir(folder).canonicalPath();
    if (!m_hostPaths.contains(path))
        m_hostPaths.append(path);
    return true;
}

bool SearchPaths::addModuleFolder(const QString& modulePath, unsigned short level)
{
    if (modulePath.isEmpty())
        return false;
    QDir folder = QFileInfo(modulePath).absoluteDir();
    for (unsigned short step = 0; step < level; ++step) {
        if (!folder.cdUp())
            return false;
    }
    return add(folder.path());
}

}  // namespace velm::detail
