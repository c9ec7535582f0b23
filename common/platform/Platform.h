#pragma once

#include "VelmCommonGlobal.h"

#include <QString>

/// The few things that each system does in its own way. Paths have "/" throughout.
namespace velm::detail::platform {

/// The system's folder for temporary files, with the system's own separator at its end.
QString temporaryFolder();

/// Full path of a loaded module, given its handle; of the running program for null. Empty if it is
/// no module.
QString modulePath(HINSTANCE module);

/// Full path of the loaded module called @p name: its file name, or a path to it. Empty if none is
/// loaded.
QString modulePathByName(const QString& name);

/// Full path of this library (of the program, where it is linked in).
QString libraryPath();

}  // namespace velm::detail::platform
