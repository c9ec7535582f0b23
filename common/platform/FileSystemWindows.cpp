#include "common/platform/FileSystem.h"

#include <QDir>
#include <QFileInfo>

#include <string>

#include <windows.h>

namespace velm::detail::platform {

namespace {

std::wstring native(const QString& path)
{
    return QDir::toNativeSeparators(longPath(path)).toStdWString();
}

}  // namespace

QString longPath(const QString& path)
{
    constexpr int kLongestPlain = 240;  // with the names of journals and staged files below 260
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (absolute.size() < kLongestPlain || absolute.startsWith(QLatin1String("//?/")))
        return path;
    const QString native = QDir::toNativeSeparators(absolute);
    return native.startsWith(QLatin1String("\\\\")) ? QLatin1String("\\\\?\\UNC") + native.mid(1)
                                                    : QLatin1String("\\\\?\\") + native;
}

int longestDatabasePath()
{
    return 260 * 4 - 8;  // SQLITE_WIN32_MAX_PATH_BYTES, and the end of a journal's name
}

bool replaceFile(const QString& from, const QString& to)
{
    return MoveFileExW(native(from).c_str(), native(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
           != 0;
}

bool moveFolder(const QString& from, const QString& to)
{
    return MoveFileExW(native(from).c_str(), native(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0;
}

bool replacesOpenFiles()
{
    return false;
}

bool linkFile(const QString& file, const QString& name)
{
    return CreateHardLinkW(native(name).c_str(), native(file).c_str(), nullptr) != 0;
}

bool syncFile(const QString& file)
{
    const HANDLE handle =
        CreateFileW(native(file).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const bool synced = FlushFileBuffers(handle) != 0;
    CloseHandle(handle);
    return synced;
}

void syncFolder(const QString& folder)
{
    Q_UNUSED(folder);  // moving a file writes its name through
}

void copyAccess(const QString& from, const QString& to)
{
    Q_UNUSED(from);
    Q_UNUSED(to);
}

qintptr lockFile(const QString& file)
{
    constexpr DWORD kPauseMs = 20;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const HANDLE handle =
            CreateFileW(native(file).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
        if (handle != INVALID_HANDLE_VALUE)
            return reinterpret_cast<qintptr>(handle);
        if (GetLastError() == ERROR_SHARING_VIOLATION)
            return kBusyLock;
        Sleep(kPauseMs);  // one that is just being removed is refused too
    }
    return kNoLock;
}

void unlockFile(const QString& file, qintptr lock)
{
    Q_UNUSED(file);
    const auto handle = reinterpret_cast<HANDLE>(lock);
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = TRUE;
    SetFileInformationByHandle(handle, FileDispositionInfo, &disposition, sizeof disposition);
    CloseHandle(handle);
}

void abandonLock(qintptr lock)
{
    CloseHandle(reinterpret_cast<HANDLE>(lock));
}

}  // namespace velm::detail::platform
