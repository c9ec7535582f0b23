#include "common/platform/FileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

/// Closes a file, and leaves the error of the call before.
void closeQuietly(int file)
{
    const int error = errno;
    close(file);
    errno = error;
}

bool syncEntry(const QString& path, int flags)
{
    const int file = open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool synced = fsync(file) == 0;
    closeQuietly(file);
    return synced;
}

constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

/// What was meant for one group, where another has the file: it gets no more than everybody.
mode_t forAnotherGroup(mode_t mode)
{
    return mode & (~static_cast<mode_t>(S_IRWXG) | (mode & S_IRWXO) << 3);
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

QString linkTarget(const QString& link)
{
    QByteArray target(PATH_MAX, Qt::Uninitialized);
    const ssize_t size = readlink(QFile::encodeName(link).constData(), target.data(),
                                  static_cast<size_t>(target.size()));
    if (size <= 0)
        return QString();
    const QString named = QFile::decodeName(target.left(static_cast<int>(size)));
    // Not joined as texts: "sub/.." need not be the folder that holds "sub".
    return named.startsWith(QLatin1Char('/'))
               ? named
               : QDir(QFileInfo(link).path()).canonicalPath() + QLatin1Char('/') + named;
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

bool makePrivateFolder(const QString& folder)
{
    return mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0;
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
    mode_t mode = access.st_mode & kPermissions;
    if (chown(target.constData(), access.st_uid, access.st_gid) != 0
        && chown(target.constData(), static_cast<uid_t>(-1), access.st_gid) != 0)
        mode = forAnotherGroup(mode);
    chmod(target.constData(), mode);
}

void limitAccess(const QString& from, const QString& to)
{
    const QByteArray target = QFile::encodeName(to);
    struct stat given
    {};
    struct stat limited
    {};
    if (stat(QFile::encodeName(from).constData(), &given) != 0
        || stat(target.constData(), &limited) != 0)
        return;
    const bool isSameGroup = given.st_gid == limited.st_gid;
    const mode_t most = isSameGroup ? given.st_mode : forAnotherGroup(given.st_mode);
    chmod(target.constData(), limited.st_mode & most & kPermissions);
}

qintptr lockFile(const QString& file)
{
    const QByteArray name = QFile::encodeName(file);
    for (;;) {
        constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
        int lock = open(name.constData(), kFlags | O_RDWR | O_CREAT, 0666);
        if (lock < 0 && errno == EACCES) {  // another user's; to lock it, reading is enough
            lock = open(name.constData(), kFlags | O_RDONLY);
            if (lock < 0 && errno == ENOENT)
                errno = EACCES;  // none may be made
        }
        if (lock < 0)
            return kNoLock;
        const bool locked = flock(lock, LOCK_EX | LOCK_NB) == 0;
        const bool isBusy = !locked && errno == EWOULDBLOCK;
        if (locked && hasName(lock, name.constData()))
            return lock;
        closeQuietly(lock);
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
