#include "common/host/HostCalls.h"

#include <QMessageLogger>

namespace velm::detail {

namespace {

// A plain pointer: an object with a destructor could outlive an unloaded library.
thread_local HostCallsLater* outermost = nullptr;

}  // namespace

HostCallsLater::HostCallsLater() : m_isOutermost(!outermost)
{
    if (m_isOutermost)
        outermost = this;
}

HostCallsLater::~HostCallsLater()
{
    if (!m_isOutermost)
        return;
    outermost = nullptr;
    for (const auto& call : qAsConst(m_calls))
        call();
}

bool HostCallsLater::keep(const std::function<void()>& call)
{
    if (!outermost)
        return false;
    outermost->m_calls.append(call);
    return true;
}

void callHost(const std::function<void()>& call)
{
    if (!HostCallsLater::keep(call))
        call();
}

void warnFrom(const char* file, int line, const char* function, const QString& text)
{
    callHost([=] { QMessageLogger(file, line, function).warning("%s", qUtf8Printable(text)); });
}

}  // namespace velm::detail
