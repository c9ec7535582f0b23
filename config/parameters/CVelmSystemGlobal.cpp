#include "CVelmSystemGlobal.h"

#include "common/files/SearchPaths.h"
#include "common/host/MessageHandler.h"
#include "common/host/Module.h"
#include "common/host/Process.h"
#include "common/host/Singleton.h"
#include "common/platform/Platform.h"
#include "config/parameters/GlobalParamStore.h"
#include "CVelmFilePath.h"
#include "CVelmSaveUserData.h"
#include "VelmGlobalParam.h"

#include <QFileInfo>

using namespace velm::detail;

VelmGlobalParam g_VelmGlobalParam;

void velm::detail::saveParametersAtEnd()
{
    CVelmSystemGlobal::Instance()->saveAtEnd();
}

namespace {

// Though nobody may have asked for an object: the parameters can be changed without one.
const bool isSavedAtEnd = module::callAtEnd(&saveParametersAtEnd);

}  // namespace

CVelmSystemGlobal* CVelmSystemGlobal::Instance()
{
    static Singleton<CVelmSystemGlobal> instance;
    return instance.get([] { return new CVelmSystemGlobal; });
}

CVelmSystemGlobal::CVelmSystemGlobal()
    : m_globalParam(std::make_unique<GlobalParamStore>(
        []() -> UserStore& { return *CVelmSaveUserData::Instance()->m_store; }))
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
    return SearchPaths::instance().systemDatabase();
}

QString CVelmSystemGlobal::getPipeConfigDb()
{
    return SearchPaths::instance().pipeDatabase();
}

QString CVelmSystemGlobal::getSystemRootRoute()
{
    return SearchPaths::instance().root();
}

bool CVelmSystemGlobal::setSystemRootRoute(const QString& folder)
{
    return SearchPaths::instance().setRoot(folder);
}

QString CVelmSystemGlobal::getProfileName()
{
    return CVelmFilePath::Instance()->getFolderName(getSystemRootRoute(), 0);
}

QStringList CVelmSystemGlobal::getSearchPaths()
{
    return SearchPaths::instance().folders();
}

bool CVelmSystemGlobal::addSearchPath(const QString& path)
{
    return SearchPaths::instance().add(path);
}

bool CVelmSystemGlobal::addSearchPathByDllName(const QString& dllName, unsigned short level)
{
    return SearchPaths::instance().addModuleFolder(platform::modulePathByName(dllName), level);
}

bool CVelmSystemGlobal::addSearchPathByHandle(HINSTANCE module, unsigned short level)
{
    return SearchPaths::instance().addModuleFolder(platform::modulePath(module), level);
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
