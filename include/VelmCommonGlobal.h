#pragma once

#include <QtCore/qglobal.h>

/// Marks what the library exports. VELMCOMMON_LIBRARY is defined only where the library's objects
/// are built or linked themselves.
#if defined(VELMCOMMON_LIBRARY)
#define VELMCOMMON_EXPORT Q_DECL_EXPORT
#else
#define VELMCOMMON_EXPORT Q_DECL_IMPORT
#endif

// Window and module handles as <windows.h> declares them, without including it: the two may meet in
// any order. Where Windows does not exist, an HWND is never used and an HINSTANCE is what dlopen()
// answers.
struct HWND__;       // NOLINT(bugprone-reserved-identifier)
struct HINSTANCE__;  // NOLINT(bugprone-reserved-identifier)
typedef HWND__* HWND;
typedef HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
