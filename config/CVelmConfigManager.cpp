#include "CVelmConfigManager.h"

#include "common/host/HostCalls.h"
#include "common/host/Singleton.h"
#include "config/DatabaseWork.h"
#include "config/tables/CVelmAttributeDB.h"
#include "config/tables/CVelmAttributeDef.h"
#include "config/tables/CVelmIndexDB.h"
#include "config/tables/CVelmIndexIni.h"
#include "config/tables/CVelmWorkDB.h"
#include "config/tables/CVelmWorkDef.h"
#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmCmdSetting.h"
#include "CVelmFrame.h"
#include "CVelmRecordManager.h"
#include "CVelmSystemGlobal.h"
#include "CVelmTBLManager.h"
#include "data/access/ConfigSources.h"

#include <new>

using namespace velm::detail;

namespace {

template<class Table>
void deleteAndNull(Table*& table)
{
    delete table;
    table = nullptr;
}

/// Makes a table of the text files and loads it, unless there is one. It stays empty if memory runs
/// out.
template<class Table, class Make, class Load>
void loadOnce(Table*& table, const Make& make, const Load& load)
{
    if (table)
        return;
    table = make();
    try {
        load(*table);
    } catch (const std::bad_alloc&) {
        VELM_WARN(QStringLiteral("configuration: out of memory for a text file"));
        deleteAndNull(table);
        table = make();
    }
}

}  // namespace

const CVelmWork& velm::detail::databaseWork()
{
    CVelmConfigManager* manager = CVelmConfigManager::Instance();
    return *manager->GetVelmWork();  // the const form follows the version
}

CVelmConfigManager* CVelmConfigManager::Instance()
{
    static Singleton<CVelmConfigManager> instance;
    return instance.get([] { return new CVelmConfigManager; },
                        [](CVelmConfigManager& manager) { manager.loadFirst(); });
}

CVelmConfigManager::CVelmConfigManager()
    : m_frame(new CVelmFrame), m_annotate(new CVelmAnnotate), m_cmdSetting(new CVelmCmdSetting)
{
    makeEmptyTables();
}

CVelmConfigManager::~CVelmConfigManager() = default;

void CVelmConfigManager::loadFirst()
{
    const HostCallsLater untilClosed;
    ConfigSources sources;
    try {
        m_cmdSetting->load(sources.system());
    } catch (const std::bad_alloc&) {
        sources.addProblem(QStringLiteral("command settings: out of memory"));
    }
    load(sources);
}

bool CVelmConfigManager::flushVelmConfig()
{
    const HostCallsLater untilClosed;
    makeEmptyTables();
    ConfigSources sources;
    return load(sources);
}

void CVelmConfigManager::makeEmptyTables()
{
    deleteAndNull(m_workDB);
    deleteAndNull(m_workDef);
    deleteAndNull(m_indexIni);
    deleteAndNull(m_areaLine);
    deleteAndNull(m_attributeDB);
    deleteAndNull(m_attributeDef);
    deleteAndNull(m_tblManager);
    deleteAndNull(m_recordManager);

    m_workDB = new CVelmWorkDB;
    m_indexDB = new CVelmIndexDB;  // the old one is abandoned on purpose
    m_areaLine = new CVelmAreaLine;
    m_tblManager = new CVelmTBLManager(nullptr);
    m_attributeDB = new CVelmAttributeDB;
    m_recordManager = new CVelmRecordManager(nullptr);
}

/// Loads the tables, which are empty, and tells what could not be loaded.
bool CVelmConfigManager::load(ConfigSources& sources)
{
    bool isLoaded = false;
    try {
        isLoaded = loadTables(sources);
    } catch (const std::bad_alloc&) {
        deleteAndNull(m_indexDB);  // nobody has seen this one
        makeEmptyTables();
        sources.addProblem(QStringLiteral("the configuration: out of memory"));
    }
    m_loadProblems = sources.reportProblems();
    return isLoaded;
}

bool CVelmConfigManager::loadTables(ConfigSources& sources)
{
    m_tblManager->load(sources);
    m_recordManager->load(sources);
    if (!sources.hasSystem())
        return false;
    m_areaLine->initVelmAreaLineConfig(sources.system());
    m_indexDB->load(sources.system());
    m_workDB->initVelmWork(sources.system());
    m_attributeDB->load(sources.system(), sources.pipe());
    switchVersion(m_version);
    return true;
}

QStringList CVelmConfigManager::loadProblems() const
{
    return m_loadProblems;
}

void CVelmConfigManager::switchVersion(Velm::Version version)
{
    m_version = version;
    CVelmSystemGlobal::Instance()->m_version = version;
    if (usesDatabase())
        return;
    loadOnce(
        m_attributeDef, [] { return new CVelmAttributeDef; },
        [](CVelmAttributeDef& table) { table.initVelmAttribute(); });
    loadOnce(
        m_workDef, [] { return new CVelmWorkDef; },
        [](CVelmWorkDef& table) { table.initVelmWork(); });
    loadOnce(
        m_indexIni, [] { return new CVelmIndexIni; }, [](CVelmIndexIni& table) { table.load(); });
}

CVelmIndex* CVelmConfigManager::GetVelmIndex()
{
    if (usesDatabase())
        return m_indexDB;
    return m_indexIni;
}

const CVelmIndex* CVelmConfigManager::GetVelmIndex() const
{
    return m_indexDB;
}

CVelmWork* CVelmConfigManager::GetVelmWork()
{
    return m_workDB;
}

const CVelmWork* CVelmConfigManager::GetVelmWork() const
{
    if (usesDatabase())
        return m_workDB;
    return m_workDef;
}

CVelmAttribute* CVelmConfigManager::GetVelmAttribute()
{
    if (usesDatabase())
        return m_attributeDB;
    return m_attributeDef;
}

const CVelmAttribute* CVelmConfigManager::GetVelmAttribute() const
{
    return m_attributeDB;
}
