#include "common/platform/FolderContent.h"

#include "common/platform/FileWindows.h"

namespace velm::detail::platform {

namespace {

/// A name of which each half of a character that lacks the other is written as "\uNNNN".
QString escaped(const QString& name)
{
    QString text;
    for (const QChar unit : name)
        text += unit.isSurrogate() ? QStringLiteral("\\u%1").arg(int(unit.unicode()), 4, 16)
                                   : QString(unit);
    return text;
}

void addName(const WIN32_FIND_DATAW& entry, FolderNames& content)
{
    const QString name = QString::fromWCharArray(entry.cFileName);
    if (name == QLatin1String(".") || name == QLatin1String(".."))
        return;
    if (name.isValidUtf16())
        content.names.append(name);
    else
        content.unreadable.append(escaped(name));
}

bool isLink(const std::wstring& path, DWORD attributes)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return false;
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW(path.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return true;
    FindClose(search);
    return entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK
           || entry.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT;
}

EntryState stateOf(DWORD attributes, quint64 size, const FILETIME& written, bool isLink)
{
    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    EntryState state;
    if (isLink)
        state.kind = isFolder ? EntryKind::FolderLink : EntryKind::FileLink;
    else
        state.kind = isFolder ? EntryKind::Folder : EntryKind::File;
    state.size = isFolder ? 0 : qint64(size);
    state.modified = timeOfWindows(written);
    return state;
}

EntryState failed(DWORD error)
{
    EntryState state;
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND
        || error == ERROR_INVALID_NAME)
        state.kind = EntryKind::Missing;
    else
        state.error = int(error);
    return state;
}

EntryState lookBehind(const std::wstring& link)
{
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE target = CreateFileW(link.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION about{};
    const bool isKnown =
        target != INVALID_HANDLE_VALUE && GetFileInformationByHandle(target, &about) != 0;
    EntryState state = failed(isKnown ? ERROR_SUCCESS : GetLastError());
    if (target != INVALID_HANDLE_VALUE)
        CloseHandle(target);
    if (isKnown)
        return stateOf(about.dwFileAttributes,
                       quint64(about.nFileSizeHigh) << 32 | about.nFileSizeLow,
                       about.ftLastWriteTime, true);
    if (state.kind == EntryKind::Missing)
        state.kind = EntryKind::DeadLink;
    return state;
}

}  // namespace

int listFolder(const QString& folder, FolderNames& content)
{
    const QString all = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    std::wstring pattern = windowsPath(all);
    if (pattern.back() != L'\\')
        pattern += L'\\';
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW((pattern + L'*').c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)  // the root of a drive may hold nothing, not even "."
        return GetLastError() == ERROR_FILE_NOT_FOUND ? 0 : int(GetLastError());
    do {
        addName(entry, content);
    } while (FindNextFileW(search, &entry) != 0);
    const DWORD end = GetLastError();
    FindClose(search);
    return end == ERROR_NO_MORE_FILES ? 0 : int(end);
}

EntryState lookAt(const QString& path)
{
    const std::wstring name = windowsPath(path);
    WIN32_FILE_ATTRIBUTE_DATA about{};
    if (GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &about) == 0)
        return failed(GetLastError());
    if (isLink(name, about.dwFileAttributes))
        return lookBehind(name);
    return stateOf(about.dwFileAttributes, quint64(about.nFileSizeHigh) << 32 | about.nFileSizeLow,
                   about.ftLastWriteTime, false);
}

}  // namespace velm::detail::platform
