#include "common/platform/NewFile.h"

#include "common/platform/FileWindows.h"

#include <algorithm>
#include <utility>

namespace velm::detail::platform {

namespace {

HANDLE handleOf(qintptr handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

int NewFile::make(const FolderHandle& folder, const QString& name)
{
    close();
    const int error = folder.look();
    if (error != 0)
        return error;
    m_handle = reinterpret_cast<qintptr>(CreateFileW(windowsPath(folder.path(name)).c_str(),
                                                     GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                     CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    return m_handle == -1 ? failure() : 0;
}

int NewFile::write(const char* bytes, qint64 size)
{
    constexpr qint64 kMost = 1 << 24;
    for (qint64 done = 0; done < size;) {
        const auto part = static_cast<DWORD>(std::min(size - done, kMost));
        DWORD count = 0;
        if (WriteFile(handleOf(m_handle), bytes + done, part, &count, nullptr) == 0 || count == 0)
            return failure();
        done += count;
    }
    return 0;
}

void NewFile::setTime(const QDateTime& modified)
{
    const FILETIME time = windowsTime(modified);
    SetFileTime(handleOf(m_handle), nullptr, nullptr, &time);
}

int NewFile::close()
{
    const qintptr file = std::exchange(m_handle, -1);
    return file == -1 || CloseHandle(handleOf(file)) != 0 ? 0 : failure();
}

}  // namespace velm::detail::platform
