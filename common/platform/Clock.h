#pragma once

#include <QDateTime>

namespace velm::detail::platform {

/// What the clock here showed at that time, given as if it were UTC. QDateTime::toLocalTime() looks
/// three times at the file of the time zone, a tenth of what it costs to compress a small file.
QDateTime clockTime(const QDateTime& time);

}  // namespace velm::detail::platform
