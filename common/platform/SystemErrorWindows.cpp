#include "common/platform/SystemError.h"

#include <windows.h>

namespace velm::detail::platform {

namespace {

struct Meaning
{
    DWORD error;
    const char* text;
};

// The headers of MinGW lack these.
constexpr DWORD kErrorDirectoryNotSupported = 336;
constexpr DWORD kErrorDiskQuotaExceeded = 1295;

constexpr Meaning kMeanings[] = {
    {ERROR_FILE_NOT_FOUND, "there is no such file or folder"},
    {ERROR_PATH_NOT_FOUND, "there is no such file or folder"},
    {ERROR_INVALID_DRIVE, "there is no such file or folder"},
    {ERROR_BAD_NETPATH, "there is no such file or folder"},
    {ERROR_BAD_NET_NAME, "there is no such file or folder"},
    {ERROR_INVALID_NAME, "no file can have that name"},
    {ERROR_BAD_PATHNAME, "no file can have that name"},
    {kErrorDirectoryNotSupported, "it is a folder"},
    {ERROR_ACCESS_DENIED, "access denied"},
    {ERROR_WRITE_PROTECT, "it is read-only"},
    {ERROR_FILE_EXISTS, "it is there already"},
    {ERROR_ALREADY_EXISTS, "it is there already"},
    {ERROR_DISK_FULL, "no space left on the disk"},
    {ERROR_HANDLE_DISK_FULL, "no space left on the disk"},
    {kErrorDiskQuotaExceeded, "no space left on the disk for this user"},
    {ERROR_FILE_TOO_LARGE, "too large for this disk or the limit of the process"},
    {ERROR_TOO_MANY_OPEN_FILES, "too many open files"},
    {ERROR_SHARING_VIOLATION, "in use by another program"},
    {ERROR_LOCK_VIOLATION, "in use by another program"},
    {ERROR_USER_MAPPED_FILE, "in use by another program"},
    {ERROR_BUSY, "in use by another program"},
    {ERROR_FILENAME_EXCED_RANGE, "the name is too long"},
    {ERROR_NOT_SAME_DEVICE, "it would lie on another disk"},
    {ERROR_CRC, "the disk has an error"},
    {ERROR_IO_DEVICE, "the disk has an error"},
    {ERROR_GEN_FAILURE, "the disk has an error"},
    {ERROR_NOT_READY, "there is no such device"},
    {ERROR_BROKEN_PIPE, "nobody reads it any more"},
    {ERROR_NO_DATA, "nobody reads it any more"},
    {ERROR_NOT_ENOUGH_MEMORY, "not enough memory"},
    {ERROR_OUTOFMEMORY, "not enough memory"}};

}  // namespace

int lastError()
{
    return static_cast<int>(GetLastError());
}

QString errorText(int error)
{
    for (const Meaning& meaning : kMeanings) {
        if (meaning.error == static_cast<DWORD>(error))
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
    return error == ERROR_ACCESS_DENIED || error == ERROR_WRITE_PROTECT;
}

}  // namespace velm::detail::platform
