#include "common/platform/FolderRemoval.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velm::detail::platform {

namespace {

constexpr int kDeepest = 400;  // folders in one another; each is held open

bool removeEntry(int parent, const char* name, int depth);

/// Whether nothing is left in the folder, which is closed then.
bool removeContent(int folder, int depth)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(fdopendir(folder), &closedir);
    if (!entries) {
        close(folder);
        return false;
    }
    std::vector<std::string> names;
    while (const dirent* const entry = readdir(entries.get())) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
            names.emplace_back(entry->d_name);
    }
    bool isEmpty = true;
    for (const std::string& name : names)
        isEmpty = removeEntry(folder, name.c_str(), depth + 1) && isEmpty;
    return isEmpty;
}

/// @return whether it is gone, or was no folder
bool removeFolderIn(int parent, const char* name, int depth)
{
    const int folder = depth > kDeepest
                           ? -1
                           : openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return depth <= kDeepest && (errno == ENOENT || errno == ENOTDIR || errno == ELOOP);
    return removeContent(folder, depth) && unlinkat(parent, name, AT_REMOVEDIR) == 0;
}

bool removeEntry(int parent, const char* name, int depth)
{
    if (unlinkat(parent, name, 0) == 0 || errno == ENOENT)
        return true;
    return (errno == EISDIR || errno == EPERM) && removeFolderIn(parent, name, depth);
}

}  // namespace

bool removeFolder(const QString& path) noexcept
{
    try {
        const QFileInfo folder(path);
        const int parent =
            open(QFile::encodeName(folder.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (parent < 0)
            return errno == ENOENT || errno == ENOTDIR;
        const bool isGone =
            removeFolderIn(parent, QFile::encodeName(folder.fileName()).constData(), 0);
        close(parent);
        return isGone;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool isOwn(const QString& path)
{
    struct stat about
    {};
    return lstat(QFile::encodeName(path).constData(), &about) == 0 && about.st_uid == geteuid();
}

}  // namespace velm::detail::platform
