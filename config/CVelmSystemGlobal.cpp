#include "CVelmSystemGlobal.h"

#include "common/platform/Platform.h"
#include "common/Singleton.h"
#include "CVelmFilePath.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString configFolder(const QString& root)
{
    return root + QStringLiteral("/config");
}

}  // namespace

CVelmSystemGlobal* CVelmSystemGlobal::Instance()
{
    static velm::detail::Singleton<CVelmSystemGlobal> instance;
    return instance.get([] { return new CVelmSystemGlobal; });
}

CVelmSystemGlobal::CVelmSystemGlobal() = default;

CVelmSystemGlobal::~CVelmSystemGlobal() = default;

QString CVelmSystemGlobal::getSystemConfigDb()
{
    return configFolder(getSystemRootRoute()) + QStringLiteral("/peltaconfig.db");
}

QString CVelmSystemGlobal::getPipeConfigDb()
{
    return configFolder(getSystemRootRoute()) + QStringLiteral("/PipeConfig.db");
}

QString CVelmSystemGlobal::getSystemRootRoute()
{
    const QString configured = qEnvironmentVariable("VELM_ROOT");
    if (!configured.isEmpty() && QFileInfo(configured).isDir())
        return QDir(QDir::fromNativeSeparators(configured)).absolutePath();
    return QFileInfo(velm::detail::platform::libraryPath()).absolutePath();
}

QString CVelmSystemGlobal::getProfileName()
{
    return CVelmFilePath::Instance()->getFolderName(getSystemRootRoute(), 0);
}

QStringList CVelmSystemGlobal::getSearchPaths()
{
    const QString root = getSystemRootRoute();
    QStringList paths = m_hostPaths;
    for (const QString& own : {configFolder(root), root}) {
        if (!paths.contains(own))
            paths.append(own);
    }
    return paths;
}

bool CVelmSystemGlobal::addSearchPath(const QString& path)
{
    if (path.isEmpty() || !QFileInfo(path).isDir())
        return false;
    const QString folder = QDir(path).canonicalPath();
    if (!m_hostPaths.contains(folder))
        m_hostPaths.append(folder);
    return true;
}

bool CVelmSystemGlobal::addSearchPathByDllName(const QString& dllName, unsigned short level)
{
    return addModuleFolder(velm::detail::platform::modulePathByName(dllName), level);
}

bool CVelmSystemGlobal::addSearchPathByHandle(HINSTANCE module, unsigned short level)
{
    return addModuleFolder(velm::detail::platform::modulePath(module), level);
}

bool CVelmSystemGlobal::addModuleFolder(const QString& modulePath, unsigned short level)
{
    if (modulePath.isEmpty())
        return false;
    QDir folder = QFileInfo(modulePath).absoluteDir();
    for (unsigned short step = 0; step < level; ++step) {
        if (!folder.cdUp())
            return false;
    }
    return addSearchPath(folder.path());
}

bool CVelmSystemGlobal::isCadSystem() const
{
    const QString program = QFileInfo(velm::detail::platform::modulePath(nullptr)).fileName();
    return program.compare(QLatin1String("cad.exe"), Qt::CaseInsensitive) == 0;
}

Velm::Version CVelmSystemGlobal::getVersion()
{
    return m_version;
}
