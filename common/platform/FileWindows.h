#pragma once

#include "common/platform/FileSystem.h"

#include <QDateTime>
#include <QDir>

#include <string>

#include <windows.h>

// Paths, times and errors as the functions of Windows have them.

namespace velm::detail::platform {

/// A path in the form that is taken however long it is.
inline std::wstring windowsPath(const QString& path)
{
    return QDir::toNativeSeparators(longPath(path)).toStdWString();
}

constexpr qint64 kFrom1601To1970Ms = 11644473600000;
constexpr qint64 kTicksOfMs = 10000;

inline FILETIME windowsTime(const QDateTime& time)
{
    const auto ticks =
        static_cast<quint64>((time.toMSecsSinceEpoch() + kFrom1601To1970Ms) * kTicksOfMs);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

inline QDateTime timeOfWindows(const FILETIME& time)
{
    const quint64 ticks = quint64(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return QDateTime::fromMSecsSinceEpoch(qint64(ticks) / kTicksOfMs - kFrom1601To1970Ms, Qt::UTC);
}

/// The number of what went wrong just now; never 0.
inline int failure()
{
    const DWORD error = GetLastError();
    return static_cast<int>(error != 0 ? error : ERROR_GEN_FAILURE);
}

}  // namespace velm::detail::platform
