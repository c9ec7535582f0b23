#pragma once

#include "VelmCommonGlobal.h"

#include <QString>

#include <cstddef>
#include <memory>

class QSettings;

/// The few things that each system does in its own way. Paths have "/" throughout.
namespace velm::detail::platform {

/// The system's folder for temporary files, with the system's own separator at its end.
QString temporaryFolder();

/// The variable's value in the environment of the process as it is now, also where it was set by a
/// host with another C run-time; empty without it.
QString environmentVariable(const QString& name);

/// Full path of a loaded module, given its handle; of the running program for null. Empty if it is
/// no module.
QString modulePath(HINSTANCE module);

/// Full path of the loaded module called @p name: its file name, or a path to it. Empty if none is
/// loaded.
QString modulePathByName(const QString& name);

/// Full path of this library (of the program, where it is linked in).
QString libraryPath();

/// Whether the running program exports a symbol of that name.
bool programExports(const char* name);

/// Loads the library at @p path; null if that fails. Let go of it with freeModule().
HMODULE loadModule(const QString& path);
void freeModule(HMODULE module);

/// Shows a message box, styles and answers as MessageBoxW has them.
int messageBox(const QString& text, const QString& title, unsigned int style, HWND owner);

/// The window that the user works in; null where there is none.
HWND foregroundWindow();

/// Asks for a large piece of memory to be kept in large pages, where the system has a choice.
void useLargePages(void* memory, size_t size);

/// The settings under a registry key, "\" between the parts of its path.
std::unique_ptr<QSettings> openRegistryKey(const QString& keyPath);

}  // namespace velm::detail::platform
