#pragma once

#include <QStringList>

namespace velm::detail::platform {

/// The names of the ODBC drivers that are registered on this machine.
QStringList odbcDrivers();

}  // namespace velm::detail::platform
