#include "CVelmObjectManager.h"

#include "common/host/Singleton.h"

CVelmObjectManager* CVelmObjectManager::Instance()
{
    static velm::detail::Singleton<CVelmObjectManager> instance;
    return instance.get([] { return new CVelmObjectManager; });
}

CVelmObjectManager::CVelmObjectManager() = default;

CVelmObjectManager::~CVelmObjectManager() = default;

bool CVelmObjectManager::RegisterClassW(const CVelmObject*)
{
    return true;
}
