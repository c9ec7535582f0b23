#include "CVelmEvent.h"

#include "common/host/Singleton.h"

CVelmEvent* CVelmEvent::Instance()
{
    static velm::detail::Singleton<CVelmEvent> instance;
    return instance.get([] { return new CVelmEvent; });
}

CVelmEvent::CVelmEvent() = default;

CVelmEvent::~CVelmEvent() = default;
