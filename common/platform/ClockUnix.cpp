#include "common/platform/Clock.h"

#include <algorithm>
#include <ctime>

namespace velm::detail::platform {

QDateTime clockTime(const QDateTime& time)
{
    const time_t seconds = time.toSecsSinceEpoch();
    tm clock{};
    if (!time.isValid() || !localtime_r(&seconds, &clock))
        return QDateTime();
    return QDateTime(QDate(clock.tm_year + 1900, clock.tm_mon + 1, clock.tm_mday),
                     QTime(clock.tm_hour, clock.tm_min, std::min(clock.tm_sec, 59)), Qt::UTC);
}

}  // namespace velm::detail::platform
