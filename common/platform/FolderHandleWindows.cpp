#include "common/platform/FolderHandle.h"

#include "common/platform/FileWindows.h"
#include "common/platform/FolderContent.h"

namespace velm::detail::platform {

namespace {

/// Holds a folder, so that nobody renames or removes it.
qintptr hold(const std::wstring& path)
{
    return reinterpret_cast<qintptr>(CreateFileW(
        path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

}  // namespace

int FolderHandle::open(const QString& path)
{
    close();
    m_path = path;
    m_mayBeLink = true;
    m_handle = hold(windowsPath(path));
    return m_handle == -1 ? failure() : look();
}

int FolderHandle::open(const FolderHandle& parent, const QString& name)
{
    close();
    m_path = parent.path(name);
    m_mayBeLink = false;
    m_handle = hold(windowsPath(m_path));
    return m_handle == -1 ? failure() : look();
}

void FolderHandle::close()
{
    if (m_handle != -1)
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
    m_handle = -1;
}

QString FolderHandle::path(const QString& name) const
{
    return m_path.endsWith(QLatin1Char('/')) ? m_path + name : m_path + QLatin1Char('/') + name;
}

int FolderHandle::look() const
{
    const EntryState state = lookAt(m_path);
    const bool isFolder =
        state.kind == EntryKind::Folder || (m_mayBeLink && state.kind == EntryKind::FolderLink);
    if (isFolder)
        return 0;
    return state.error != 0 ? state.error : ERROR_DIRECTORY;
}

int FolderHandle::makeFolder(const QString& name) const
{
    const int error = look();
    if (error != 0)
        return error;
    return CreateDirectoryW(windowsPath(path(name)).c_str(), nullptr) != 0 ? 0 : failure();
}

void FolderHandle::setFolderTime(const QString& name, const QDateTime& modified) const
{
    const HANDLE folder = CreateFileW(
        windowsPath(path(name)).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (folder == INVALID_HANDLE_VALUE)
        return;
    const FILETIME time = windowsTime(modified);
    SetFileTime(folder, nullptr, nullptr, &time);
    CloseHandle(folder);
}

int FolderHandle::moveFile(const QString& name, const FolderHandle& to, bool replaces) const
{
    int error = look();
    if (error == 0)
        error = to.look();
    if (error != 0)
        return error;
    SetLastError(ERROR_SUCCESS);
    if (replaces)
        return replaceFile(path(name), to.path(name)) ? 0 : failure();
    const Placed placed = placeFile(path(name), to.path(name));
    if (placed == Placed::ThereAlready)
        return ERROR_ALREADY_EXISTS;
    return placed == Placed::Yes ? 0 : failure();
}

int FolderHandle::moveFolder(const QString& name, const FolderHandle& to) const
{
    int error = look();
    if (error == 0)
        error = to.look();
    if (error != 0)
        return error;
    const EntryKind there = lookAt(to.path(name)).kind;
    if (there != EntryKind::Missing)
        return ERROR_ALREADY_EXISTS;
    SetLastError(ERROR_SUCCESS);
    return platform::moveFolder(path(name), to.path(name)) ? 0 : failure();
}

int makeFolder(const QString& path)
{
    return CreateDirectoryW(windowsPath(path).c_str(), nullptr) != 0 ? 0 : failure();
}

bool isTaken(int error)
{
    return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
}

bool isNoFolder(int error)
{
    return error == ERROR_DIRECTORY;
}

}  // namespace velm::detail::platform
