#include "common/platform/FileCalls.h"

#include "common/platform/FileSystem.h"

#include <QDir>

#include <algorithm>
#include <string>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace velm::detail::platform {

namespace {

constexpr DWORD kErrorDirectoryNotSupported = 336;  // the headers of MinGW lack it
constexpr qint64 kMostAtOnce = 1 << 24;             // bytes; a share on the net takes no 2 GiB

HANDLE handleOf(int file)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(file));
}

HANDLE openHandle(const std::wstring& path, OpenFor purpose)
{
    const DWORD reads = purpose == OpenFor::Writing ? 0 : GENERIC_READ;
    const DWORD writes = purpose == OpenFor::Reading ? 0 : GENERIC_WRITE;
    return CreateFileW(path.c_str(), reads | writes, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       purpose == OpenFor::Making ? CREATE_NEW : OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool isFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

int openFile(const QString& path, OpenFor purpose)
{
    const std::wstring native = QDir::toNativeSeparators(longPath(path)).toStdWString();
    const HANDLE handle = openHandle(native, purpose);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();  // a folder is answered as what may not be opened
        SetLastError(error == ERROR_ACCESS_DENIED && isFolder(native) ? kErrorDirectoryNotSupported
                                                                      : error);
        return kNoFile;
    }
    const int flags = _O_BINARY | _O_NOINHERIT | (purpose == OpenFor::Reading ? _O_RDONLY : 0);
    const int file = _open_osfhandle(reinterpret_cast<intptr_t>(handle), flags);
    if (file < 0) {
        CloseHandle(handle);
        SetLastError(ERROR_TOO_MANY_OPEN_FILES);
    }
    return file;
}

qint64 readFile(int file, char* bytes, qint64 size)
{
    DWORD got = 0;
    const auto most = static_cast<DWORD>(std::min(size, kMostAtOnce));
    if (ReadFile(handleOf(file), bytes, most, &got, nullptr) != 0)
        return got;
    return GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF ? 0 : -1;
}

bool writeFile(int file, const char* bytes, qint64 size)
{
    while (size > 0) {
        DWORD written = 0;
        const auto most = static_cast<DWORD>(std::min(size, kMostAtOnce));
        if (WriteFile(handleOf(file), bytes, most, &written, nullptr) == 0)
            return false;
        bytes += written;
        size -= written;
    }
    return true;
}

bool growFile(int file, qint64 size)
{
    LARGE_INTEGER old{};
    if (GetFileSizeEx(handleOf(file), &old) == 0)
        return false;
    return old.QuadPart >= size || resizeFile(file, size);
}

bool resizeFile(int file, qint64 size)
{
    const HANDLE handle = handleOf(file);
    LARGE_INTEGER here{};
    LARGE_INTEGER end{};
    end.QuadPart = size;
    if (SetFilePointerEx(handle, LARGE_INTEGER{}, &here, FILE_CURRENT) == 0
        || SetFilePointerEx(handle, end, nullptr, FILE_BEGIN) == 0)
        return false;
    const bool resized = SetEndOfFile(handle) != 0;
    const DWORD error = GetLastError();
    SetFilePointerEx(handle, here, nullptr, FILE_BEGIN);
    SetLastError(error);
    return resized;
}

bool syncOpenFile(int file)
{
    return FlushFileBuffers(handleOf(file)) != 0 || GetFileType(handleOf(file)) != FILE_TYPE_DISK;
}

}  // namespace velm::detail::platform
