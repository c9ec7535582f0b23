#include "common/platform/FolderHandle.h"

#include "common/platform/ChangedAtUnix.h"

#include <QFile>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velm::detail::platform {

namespace {

// To work in a folder takes no right to list it.
#ifdef O_PATH
constexpr int kHold = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int kHold = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

int answer(int result)
{
    return result == 0 ? 0 : errno;
}

}  // namespace

int FolderHandle::open(const QString& path)
{
    close();
    m_path = path;
    m_handle = ::open(QFile::encodeName(path).constData(), kHold);
    return m_handle < 0 ? errno : 0;
}

int FolderHandle::open(const FolderHandle& parent, const QString& name)
{
    close();
    m_path = parent.path(name);
    m_handle = openat(static_cast<int>(parent.m_handle), QFile::encodeName(name).constData(),
                      kHold | O_NOFOLLOW);
    return m_handle < 0 ? errno : 0;
}

void FolderHandle::close()
{
    if (m_handle >= 0)
        ::close(static_cast<int>(m_handle));
    m_handle = -1;
}

QString FolderHandle::path(const QString& name) const
{
    return m_path.endsWith(QLatin1Char('/')) ? m_path + name : m_path + QLatin1Char('/') + name;
}

int FolderHandle::look() const
{
    return 0;  // what is held cannot become another
}

int FolderHandle::makeFolder(const QString& name) const
{
    return answer(mkdirat(static_cast<int>(m_handle), QFile::encodeName(name).constData(), 0777));
}

void FolderHandle::setFolderTime(const QString& name, const QDateTime& modified) const
{
    const auto times = changedAt(modified);
    utimensat(static_cast<int>(m_handle), QFile::encodeName(name).constData(), times.data(),
              AT_SYMLINK_NOFOLLOW);
}

int FolderHandle::moveFile(const QString& name, const FolderHandle& to, bool replaces) const
{
    const QByteArray file = QFile::encodeName(name);
    const int from = static_cast<int>(m_handle);
    const int into = static_cast<int>(to.m_handle);
    if (replaces)
        return answer(renameat(from, file.constData(), into, file.constData()));
#ifdef RENAME_NOREPLACE
    if (renameat2(from, file.constData(), into, file.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)  // as file systems answer that do not have it
        return errno;
#endif
    if (linkat(from, file.constData(), into, file.constData(), 0) == 0)
        return answer(unlinkat(from, file.constData(), 0));
    if (errno == EEXIST)
        return EEXIST;
    // Neither is there: the name is taken by an empty file of our own.
    constexpr int kClaim = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const int claim = openat(into, file.constData(), kClaim, 0600);
    if (claim < 0)
        return errno;
    ::close(claim);
    const int error = answer(renameat(from, file.constData(), into, file.constData()));
    if (error != 0)
        unlinkat(into, file.constData(), 0);
    return error;
}

int FolderHandle::moveFolder(const QString& name, const FolderHandle& to) const
{
    const QByteArray folder = QFile::encodeName(name);
    const int from = static_cast<int>(m_handle);
    const int into = static_cast<int>(to.m_handle);
#ifdef RENAME_NOREPLACE
    if (renameat2(from, folder.constData(), into, folder.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
#endif
    struct stat there
    {};
    if (fstatat(into, folder.constData(), &there, AT_SYMLINK_NOFOLLOW) == 0)
        return EEXIST;
    // What comes there now is replaced only if it is an empty folder.
    return answer(renameat(from, folder.constData(), into, folder.constData()));
}

int makeFolder(const QString& path)
{
    return answer(mkdir(QFile::encodeName(path).constData(), 0777));
}

bool isTaken(int error)
{
    return error == EEXIST || error == ENOTEMPTY;
}

bool isNoFolder(int error)
{
    return error == ENOTDIR || error == ELOOP;
}

}  // namespace velm::detail::platform
