#include "common/platform/FileSystem.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <string>

#include <windows.h>

namespace velm::detail::platform {

namespace {

std::wstring native(const QString& path)
{
    return QDir::toNativeSeparators(longPath(path)).toStdWString();
}

/// Whether a file is held by another program.
bool isHeld(DWORD error)
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION
           || error == ERROR_USER_MAPPED_FILE;
}

/// The same where moving a file to @p place failed. A file held there is answered as one that may
/// never be replaced.
bool isHeld(DWORD error, const std::wstring& place)
{
    if (error != ERROR_ACCESS_DENIED)
        return isHeld(error);
    const DWORD attributes = GetFileAttributesW(place.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return GetLastError() == ERROR_ACCESS_DENIED;  // it is just being removed
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
}

/// The same where moving a folder to @p place failed. A file held in it is answered as one that may
/// not be moved.
bool isFolderHeld(DWORD error, const std::wstring& place)
{
    return isHeld(error)
           || (error == ERROR_ACCESS_DENIED
               && GetFileAttributesW(place.c_str()) == INVALID_FILE_ATTRIBUTES);
}

/// Repeats @p attempt for a while if its error may pass: a virus scanner opens each new file.
template<typename Attempt, typename MayPass>
bool repeat(const Attempt& attempt, const MayPass& mayPass)
{
    constexpr int kPatienceMs = 2000;
    constexpr DWORD kLongestPauseMs = 100;
    const QDeadlineTimer deadline(kPatienceMs);
    DWORD pauseMs = 10;
    while (!attempt()) {
        if (!mayPass(GetLastError()) || deadline.hasExpired())
            return false;
        Sleep(pauseMs);
        pauseMs = std::min(2 * pauseMs, kLongestPauseMs);
    }
    return true;
}

}  // namespace

QString longPath(const QString& path)
{
    const QString given = QDir::toNativeSeparators(path);
    if (given.startsWith(QLatin1String("\\\\?\\")) || given.startsWith(QLatin1String("\\\\.\\")))
        return path;
    constexpr int kLongestPlain = 240;  // with the names of journals and staged files below 260
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (absolute.size() < kLongestPlain)
        return path;
    const QString native = QDir::toNativeSeparators(absolute);
    return native.startsWith(QLatin1String("\\\\")) ? QLatin1String("\\\\?\\UNC") + native.mid(1)
                                                    : QLatin1String("\\\\?\\") + native;
}

QByteArray fileIdentity(const QString& file)
{
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE handle = CreateFileW(native(file).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return QByteArray();
    BY_HANDLE_FILE_INFORMATION about{};
    const bool known = GetFileInformationByHandle(handle, &about) != 0;
    CloseHandle(handle);
    if (!known)
        return QByteArray();
    return QByteArray::number(quint64(about.dwVolumeSerialNumber)) + ':'
           + QByteArray::number(quint64(about.nFileIndexHigh) << 32 | about.nFileIndexLow);
}

QString linkTarget(const QString& link)
{
    const QFileInfo file(link);
    return file.isSymbolicLink() ? file.symLinkTarget() : QString();
}

bool canNameFile(const QString& name)
{
    return name.size() <= 255;
}

int longestDatabasePath()
{
    return 260 * 4 - 8;  // SQLITE_WIN32_MAX_PATH_BYTES, and the end of a journal's name
}

bool replaceFile(const QString& from, const QString& to)
{
    const std::wstring made = native(from), place = native(to);
    return repeat(
        [&] {
            return MoveFileExW(made.c_str(), place.c_str(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
                   != 0;
        },
        [&](DWORD error) { return isHeld(error, place); });
}

Placed placeFile(const QString& from, const QString& to)
{
    const std::wstring made = native(from), place = native(to);
    const bool moved = repeat(
        [&] { return MoveFileExW(made.c_str(), place.c_str(), MOVEFILE_WRITE_THROUGH) != 0; },
        [](DWORD error) { return isHeld(error); });
    if (moved)
        return Placed::Yes;
    const DWORD error = GetLastError();
    return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ? Placed::ThereAlready
                                                                       : Placed::Failed;
}

bool moveFolder(const QString& from, const QString& to)
{
    const std::wstring made = native(from), place = native(to);
    return repeat(
        [&] { return MoveFileExW(made.c_str(), place.c_str(), MOVEFILE_WRITE_THROUGH) != 0; },
        [&](DWORD error) { return isFolderHeld(error, place); });
}

bool makePrivateFolder(const QString& folder)
{
    return CreateDirectoryW(native(folder).c_str(), nullptr) != 0;
}

bool removeFile(const QString& file)
{
    const std::wstring path = native(file);
    return repeat([&] { return DeleteFileW(path.c_str()) != 0; },
                  [](DWORD error) { return isHeld(error); });
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
    const std::wstring path = native(file);
    HANDLE handle = INVALID_HANDLE_VALUE;
    const auto open = [&] {
        handle = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        return handle != INVALID_HANDLE_VALUE;
    };
    if (!repeat(open, [](DWORD error) { return isHeld(error); }))
        return false;
    const bool synced = FlushFileBuffers(handle) != 0;
    const DWORD error = GetLastError();
    CloseHandle(handle);
    SetLastError(error);
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

void limitAccess(const QString& from, const QString& to)
{
    Q_UNUSED(from);
    Q_UNUSED(to);
}

qintptr lockFile(const QString& file)
{
    constexpr DWORD kPauseMs = 20;
    DWORD error = 0;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const HANDLE handle =
            CreateFileW(native(file).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
        if (handle != INVALID_HANDLE_VALUE)
            return reinterpret_cast<qintptr>(handle);
        error = GetLastError();
        if (error == ERROR_SHARING_VIOLATION)
            return kBusyLock;
        Sleep(kPauseMs);  // one that is just being removed is refused too
    }
    SetLastError(error);
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
