#pragma once

#include <QDateTime>

#include <array>

#include <sys/stat.h>

namespace velm::detail::platform {

/// The times that give a file that time of its last change and leave the other one.
inline std::array<timespec, 2> changedAt(const QDateTime& modified)
{
    const qint64 ms = modified.toMSecsSinceEpoch();
    const qint64 rest = (ms % 1000 + 1000) % 1000;
    std::array<timespec, 2> times{};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = static_cast<time_t>((ms - rest) / 1000);
    times[1].tv_nsec = static_cast<long>(rest * 1000000);
    return times;
}

}  // namespace velm::detail::platform
