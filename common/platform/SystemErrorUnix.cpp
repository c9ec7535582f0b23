#include "common/platform/SystemError.h"

#include <cerrno>

namespace velm::detail::platform {

namespace {

struct Meaning
{
    int error;
    const char* text;
};

constexpr Meaning kMeanings[] = {{ENOENT, "there is no such file or folder"},
                                 {ENOTDIR, "what is named as a folder there is none"},
                                 {EISDIR, "it is a folder"},
                                 {EACCES, "access denied"},
                                 {EPERM, "access denied"},
                                 {EROFS, "it is read-only"},
                                 {EEXIST, "it is there already"},
                                 {ENOSPC, "no space left on the disk"},
                                 {EDQUOT, "no space left on the disk for this user"},
                                 {EFBIG, "too large for this disk or the limit of the process"},
                                 {EMFILE, "too many open files"},
                                 {ENFILE, "too many open files"},
                                 {EBUSY, "in use by another program"},
                                 {ETXTBSY, "in use by another program"},
                                 {EWOULDBLOCK, "in use by another program"},
                                 {ENAMETOOLONG, "the name is too long"},
                                 {ELOOP, "too many links in one another"},
                                 {EXDEV, "it would lie on another disk"},
                                 {EIO, "the disk has an error"},
                                 {ENODEV, "there is no such device"},
                                 {ENXIO, "there is no such device"},
                                 {EINTR, "interrupted"},
                                 {EPIPE, "nobody reads it any more"},
                                 {ENOMEM, "not enough memory"}};

}  // namespace

int lastError()
{
    return errno;
}

QString errorText(int error)
{
    for (const Meaning& meaning : kMeanings) {
        if (meaning.error == error)
            return QString::fromLatin1(meaning.text);
    }
    return QStringLiteral("system error %1").arg(error);
}

QString lastErrorText()
{
    return errorText(lastError());
}

bool isRefusal(int error)
{
    return error == EACCES || error == EPERM || error == EROFS;
}

}  // namespace velm::detail::platform
