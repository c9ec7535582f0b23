#include "common/platform/FileSystem.h"

#include <QFile>

#include <cerrno>
#include <climits>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velm::detail::platform {

namespace {

bool renameEntry(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool syncEntry(const QString& path, int flags)
{
    const int file = open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool synced = fsync(file) == 0;
    close(file);
    return synced;
}

/// Whether the open file still has that name: another process may have removed it meanwhile.
bool hasName(int file, const char* name)
{
    struct stat opened
    {};
    struct stat named
    {};
    return fstat(file, &opened) == 0 && lstat(name, &named) == 0 && opened.st_dev == named.st_dev
           && opened.st_ino == named.st_ino;
}

}  // namespace

QString longPath(const QString& path)
{
    return path;
}

QByteArray fileIdentity(const QString& file)
{
    struct stat named
    {};
    if (stat(QFile::encodeName(file).constData(), &named) != 0)
        return QByteArray();
    return QByteArray::number(quint64(named.st_dev)) + ':'
           + QByteArray::number(quint64(named.st_ino));
}

FileStamp fileStamp(const QString& file)
{
    struct stat named
    {};
    if (stat(QFile::encodeName(file).constData(), &named) != 0)
        return FileStamp();
    const qint64 milliseconds =
        qint64(named.st_mtim.tv_sec) * 1000 + named.st_mtim.tv_nsec / 1000000;
    return {qint64(named.st_size), QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)};
}

bool canNameFile(const QString& name)
{
    return QFile::encodeName(name).size() <= NAME_MAX;
}

int longestDatabasePath()
{
    return 512 - 8;  // MAX_PATHNAME, and the end of a journal's name
}

bool replaceFile(const QString& from, const QString& to)
{
    return renameEntry(from, to);
}

Placed placeFile(const QString& from, const QString& to)
{
    const QByteArray made = QFile::encodeName(from);
    const QByteArray place = QFile::encodeName(to);
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, made.constData(), AT_FDCWD, place.constData(), RENAME_NOREPLACE) == 0)
        return Placed::Yes;
    if (errno != EINVAL && errno != ENOSYS)  // as file systems answer that do not have it
        return errno == EEXIST ? Placed::ThereAlready : Placed::Failed;
#endif
    if (link(made.constData(), place.constData()) == 0)
        return unlink(made.constData()) == 0 ? Placed::Yes : Placed::Failed;
    if (errno == EEXIST)
        return Placed::ThereAlready;
    // Neither is there: the name is taken by an empty file of our own.
    const int claim = open(place.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (claim < 0)
        return errno == EEXIST ? Placed::ThereAlready : Placed::Failed;
    close(claim);
    if (renameEntry(from, to))
        return Placed::Yes;
    const int error = errno;
    unlink(place.constData());
    errno = error;
    return Placed::Failed;
}

bool moveFolder(const QString& from, const QString& to)
{
    return renameEntry(from, to);
}

bool removeFile(const QString& file)
{
    return QFile::remove(file);
}

bool replacesOpenFiles()
{
    return true;
}

bool linkFile(const QString& file, const QString& name)
{
    return link(QFile::encodeName(file).constData(), QFile::encodeName(name).constData()) == 0;
}

bool syncFile(const QString& file)
{
    return syncEntry(file, O_RDONLY);
}

void syncFolder(const QString& folder)
{
    syncEntry(folder, O_RDONLY | O_DIRECTORY);
}

void copyAccess(const QString& from, const QString& to)
{
    struct stat access
    {};
    if (stat(QFile::encodeName(from).constData(), &access) != 0)
        return;
    const QByteArray target = QFile::encodeName(to);
    constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
    mode_t mode = access.st_mode & kPermissions;
    if (chown(target.constData(), access.st_uid, access.st_gid) != 0
        && chown(target.constData(), static_cast<uid_t>(-1), access.st_gid) != 0)
        // What was meant for another group: this one gets no more than everybody.
        mode &= ~static_cast<mode_t>(S_IRWXG) | (mode & S_IRWXO) << 3;
    chmod(target.constData(), mode);
}

qintptr lockFile(const QString& file)
{
    const QByteArray name = QFile::encodeName(file);
    for (;;) {
        constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
        int lock = open(name.constData(), kFlags | O_RDWR | O_CREAT, 0666);
        if (lock < 0 && errno == EACCES)  // another user's; to lock it, reading is enough
            lock = open(name.constData(), kFlags | O_RDONLY);
        if (lock < 0)
            return kNoLock;
        const bool locked = flock(lock, LOCK_EX | LOCK_NB) == 0;
        const bool isBusy = !locked && errno == EWOULDBLOCK;
        if (locked && hasName(lock, name.constData()))
            return lock;
        close(lock);
        if (!locked)
            return isBusy ? kBusyLock : kNoLock;
    }
}

void unlockFile(const QString& file, qintptr lock)
{
    unlink(QFile::encodeName(file).constData());
    close(static_cast<int>(lock));
}

void abandonLock(qintptr lock)
{
    close(static_cast<int>(lock));
}

}  // namespace velm::detail::platform
