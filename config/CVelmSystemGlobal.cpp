#include "CVelmSystemGlobal.h"

#include "common/MessageHandler.h"
#include "common/Module.h"
#include "common/platform/Platform.h"
#include "common/Process.h"
#include "common/Singleton.h"
#include "config/GlobalParamStore.h"
#include "CVelmFilePath.h"
#include "CVelmSaveUserData.h"
#include "VelmGlobalParam.h"

#include <QDir>
#include <QFileInfo>

using namespace velm::detail;

VelmGlobalParam g_VelmGlobalParam;

namespace {

QString configFolder(const QString& root)
{
    return root + QStringLiteral("/config");
}

bool isFolder(const QString& path)
{
    return !path.isEmpty() && QFileInfo(path).isDir();
}

QString absoluteFolder(const QString& path)
{
    return QDir(QDir::fromNativeSeparators(path)).absolutePath();
}

}  // namespace

void velm::detail::saveParametersAtEnd()
{
    CVelmSystemGlobal::Instance()->saveAtEnd();
}

CVelmSystemGlobal* CVelmSystemGlobal::Instance()
{
    static Singleton<CVelmSystemGlobal> instance;
    return instance.get([] { return new CVelmSystemGlobal; });
}

CVelmSystemGlobal::CVelmSystemGlobal()
    : m_globalParam(std::make_unique<GlobalParamStore>(&CVelmSaveUserData::Instance))
{
    CVelmSaveUserData::prepareInstance();
}

CVelmSystemGlobal::~CVelmSystemGlobal() = default;

QString CVelmSystemGlobal::libraryVersion()
{
    return QStringLiteral(VELM_VERSION);
}

bool CVelmSystemGlobal::startModule()
{
    return module::start();
}

void CVelmSystemGlobal::stopModule()
{
    module::stop();
}

QString CVelmSystemGlobal::findModuleFile(const QString& name)
{
    return module::findFile(name);
}

bool CVelmSystemGlobal::initGlobalParam() const
{
    module::saveWithApplication();
    return m_globalParam->load(g_VelmGlobalParam);
}

bool CVelmSystemGlobal::saveGlobalParam(bool flag) const
{
    return m_globalParam->save(g_VelmGlobalParam, flag, GlobalParamStore::Extent::Record);
}

void CVelmSystemGlobal::saveAtEnd() const
{
    m_globalParam->save(g_VelmGlobalParam, false, GlobalParamStore::Extent::Changes);
}

bool CVelmSystemGlobal::getDataFormat(const QString& name, VelmDataFormat& format)
{
    for (const VelmDataFormat& candidate : qAsConst(g_VelmGlobalParam.m_dataFormatArray)) {
        if (candidate.m_formatName == name) {
            format = candidate;
            return true;
        }
    }
    return false;
}

void CVelmSystemGlobal::installMessageHandler(void (*handler)(const QString&))
{
    setLogCallback(handler);
}

unsigned long CVelmSystemGlobal::createProcess(const QString& program,
                                               const VelmProcessParam& param)
{
    if (!param.m_workingFolder.isEmpty() && !QFileInfo(param.m_workingFolder).isDir())
        return 0;  // Qt would start the program in the current folder
    return param.m_waitMs == 0 ? startProcess(program, param) : runProcess(program, param);
}

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
    const QString configured =
        m_root.isEmpty() ? platform::environmentVariable(QStringLiteral("VELM_ROOT")) : m_root;
    return isFolder(configured) ? absoluteFolder(configured)
                                : QFileInfo(platform::libraryPath()).absolutePath();
}

bool CVelmSystemGlobal::setSystemRootRoute(const QString& folder)
{
    if (!folder.isEmpty() && !isFolder(folder))
        return false;
    m_root = folder.isEmpty() ? QString() : absoluteFolder(folder);
    return true;
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
    if (!isFolder(path))
        return false;
    const QString folder = QDir(path).canonicalPath();
    if (!m_hostPaths.contains(folder))
        m_hostPaths.append(folder);
    return true;
}

bool CVelmSystemGlobal::addSearchPathByDllName(const QString& dllName, unsigned short level)
{
    return addModuleFolder(platform::modulePathByName(dllName), level);
}

bool CVelmSystemGlobal::addSearchPathByHandle(HINSTANCE module, unsigned short level)
{
    return addModuleFolder(platform::modulePath(module), level);
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
    const QString program = QFileInfo(platform::modulePath(nullptr)).fileName();
    return program.compare(QLatin1String("cad.exe"), Qt::CaseInsensitive) == 0;
}

Velm::Version CVelmSystemGlobal::getVersion()
{
    return m_version;
}
