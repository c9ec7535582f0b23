#include "CVelmConfigManager.h"

#include "common/Singleton.h"
#include "config/CVelmAttributeDB.h"
#include "config/CVelmAttributeDef.h"
#include "config/CVelmIndexDB.h"
#include "config/CVelmIndexIni.h"
#include "config/CVelmWorkDB.h"
#include "config/CVelmWorkDef.h"
#include "config/SystemConfig.h"
#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmCmdSetting.h"
#include "CVelmDatabase.h"
#include "CVelmFrame.h"
#include "CVelmRecordManager.h"
#include "CVelmSystemGlobal.h"
#include "CVelmTBLManager.h"

namespace {

template<class Table>
void deleteAndNull(Table*& table)
{
    delete table;
    table = nullptr;
}

}  // namespace

CVelmConfigManager* CVelmConfigManager::Instance()
{
    static velm::detail::Singleton<CVelmConfigManager> instance;
    return instance.get([] { return new CVelmConfigManager; });
}

CVelmConfigManager::CVelmConfigManager()
    : m_frame(new CVelmFrame), m_annotate(new CVelmAnnotate), m_cmdSetting(new CVelmCmdSetting)
{
    flushVelmConfig();
}

CVelmConfigManager::~CVelmConfigManager() = default;

bool CVelmConfigManager::flushVelmConfig()
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
    m_tblManager = new CVelmTBLManager;
    m_attributeDB = new CVelmAttributeDB;
    m_recordManager = new CVelmRecordManager;

    CVelmDatabase database;
    if (velm::detail::openSystemConfig(database) != Velm::VelmOk)
        return false;
    m_areaLine->initVelmAreaLineConfig(database);
    m_indexDB->load(database);
    m_workDB->initVelmWork(database);
    m_attributeDB->initVelmAttribute(database);
    switchVersion(m_version);
    return true;
}

void CVelmConfigManager::switchVersion(Velm::Version version)
{
    m_version = version;
    CVelmSystemGlobal::Instance()->m_version = version;
    if (usesDatabase())
        return;
    if (!m_attributeDef) {
        m_attributeDef = new CVelmAttributeDef;
        m_attributeDef->initVelmAttribute();
    }
    if (!m_workDef) {
        m_workDef = new CVelmWorkDef;
        m_workDef->initVelmWork();
    }
    if (!m_indexIni) {
        m_indexIni = new CVelmIndexIni;
        m_indexIni->load();
    }
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
