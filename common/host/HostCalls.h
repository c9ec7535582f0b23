#pragma once

#include <QString>
#include <QVector>

#include <functional>

/// Code of the host (its log callback, its message boxes) never runs while a lock or a transaction
/// of the library is held: the host may call the library from there.
namespace velm::detail {

/// Keeps the calls of this thread back while it lives; the outermost one makes them, in order, at
/// its end. Declare it before the lock.
class HostCallsLater
{
public:
    HostCallsLater();
    ~HostCallsLater();
    Q_DISABLE_COPY(HostCallsLater)

    /// Keeps @p call back if this thread has such an object. False if it has none.
    static bool keep(const std::function<void()>& call);

private:
    QVector<std::function<void()>> m_calls;
    bool m_isOutermost;
};

/// Makes a call that leads to the host: now, or when the HostCallsLater of this thread ends.
void callHost(const std::function<void()>& call);

/// Writes a warning to the log as callHost() does, with the place in the source that asks for it.
void warnFrom(const char* file, int line, const char* function, const QString& text);

#define VELM_WARN(text) velm::detail::warnFrom(__FILE__, __LINE__, Q_FUNC_INFO, text)

}  // namespace velm::detail
