#include "common/platform/FolderRemoval.h"

#include "common/platform/FileWindows.h"

#include <new>

namespace velm::detail::platform {

namespace {

constexpr int kDeepest = 400;  // folders in one another

bool removeEntry(const QString& path, int depth);

QStringList namesIn(const QString& folder)
{
    QStringList names;
    WIN32_FIND_DATAW found{};
    const HANDLE search =
        FindFirstFileW(windowsPath(folder + QStringLiteral("/*")).c_str(), &found);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &found)) {
        const QString name = QString::fromWCharArray(found.cFileName);
        if (name != QLatin1String(".") && name != QLatin1String(".."))
            names.append(name);
    }
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
    return names;
}

/// A link to a folder is one that has no content.
bool removeFolderEntry(const QString& path, bool isLink, int depth)
{
    bool isEmpty = depth <= kDeepest;
    if (!isLink && isEmpty) {
        for (const QString& name : namesIn(path))
            isEmpty = removeEntry(path + QLatin1Char('/') + name, depth + 1) && isEmpty;
    }
    return isEmpty && RemoveDirectoryW(windowsPath(path).c_str()) != 0;
}

bool removeEntry(const QString& path, int depth)
{
    const std::wstring native = windowsPath(path);
    const DWORD attributes = GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return removeFolderEntry(path, (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0, depth);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        SetFileAttributesW(native.c_str(), FILE_ATTRIBUTE_NORMAL);
    return DeleteFileW(native.c_str()) != 0;
}

}  // namespace

bool removeFolder(const QString& path) noexcept
{
    try {
        const DWORD attributes = GetFileAttributesW(windowsPath(path).c_str());
        constexpr DWORD kLinkOrFolder = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;
        if (attributes == INVALID_FILE_ATTRIBUTES
            || (attributes & kLinkOrFolder) != FILE_ATTRIBUTE_DIRECTORY)
            return true;
        return removeEntry(path, 0);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool isOwn(const QString&)
{
    return true;
}

}  // namespace velm::detail::platform
