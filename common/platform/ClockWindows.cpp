#include "common/platform/Clock.h"

namespace velm::detail::platform {

QDateTime clockTime(const QDateTime& time)
{
    const QDateTime local = time.toLocalTime();
    return QDateTime(local.date(), local.time(), Qt::UTC);
}

}  // namespace velm::detail::platform
