#include "common/platform/FileCalls.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velm::detail::platform {

namespace {

int flagsOf(OpenFor purpose)
{
    switch (purpose) {
    case OpenFor::Reading:
        return O_RDONLY;
    case OpenFor::Writing:
        return O_WRONLY;
    case OpenFor::Making:
        return O_RDWR | O_CREAT | O_EXCL;
    }
    return O_RDONLY;
}

qint64 sizeOf(int file)
{
    struct stat opened
    {};
    return fstat(file, &opened) == 0 ? qint64(opened.st_size) : -1;
}

}  // namespace

int openFile(const QString& path, OpenFor purpose)
{
    const int file = open(QFile::encodeName(path).constData(), flagsOf(purpose) | O_CLOEXEC, 0666);
    struct stat opened
    {};
    if (file < 0 || fstat(file, &opened) != 0 || !S_ISDIR(opened.st_mode))
        return file;
    close(file);
    errno = EISDIR;
    return kNoFile;
}

qint64 readFile(int file, char* bytes, qint64 size)
{
    for (;;) {
        const ssize_t got = read(file, bytes, static_cast<size_t>(size));
        if (got >= 0 || errno != EINTR)
            return got;
    }
}

bool writeFile(int file, const char* bytes, qint64 size)
{
    while (size > 0) {
        const ssize_t written = write(file, bytes, static_cast<size_t>(size));
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0) {
            bytes += written;
            size -= written;
        }
    }
    return true;
}

bool growFile(int file, qint64 size)
{
    const qint64 old = sizeOf(file);
    if (old < 0 || old >= size)
        return old >= 0;
    const int error = posix_fallocate(file, old, size - old);
    if (error == 0)
        return true;
    resizeFile(file, old);
    errno = error;
    return false;
}

bool resizeFile(int file, qint64 size)
{
    return ftruncate(file, size) == 0;
}

bool syncOpenFile(int file)
{
    return fsync(file) == 0 || errno == EINVAL || errno == EROFS;  // a device or a pipe has no disk
}

}  // namespace velm::detail::platform
