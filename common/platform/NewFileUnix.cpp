#include "common/platform/NewFile.h"

#include "common/platform/ChangedAtUnix.h"

#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace velm::detail::platform {

int NewFile::make(const FolderHandle& folder, const QString& name)
{
    close();
    constexpr int kNew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    m_handle =
        openat(static_cast<int>(folder.m_handle), QFile::encodeName(name).constData(), kNew, 0666);
    return m_handle < 0 ? errno : 0;
}

int NewFile::write(const char* bytes, qint64 size)
{
    for (qint64 done = 0; done < size;) {
        const qint64 put =
            ::write(static_cast<int>(m_handle), bytes + done, static_cast<size_t>(size - done));
        if (put < 0 && errno != EINTR)
            return errno;
        done += put > 0 ? put : 0;
    }
    return 0;
}

void NewFile::setTime(const QDateTime& modified)
{
    const auto times = changedAt(modified);
    futimens(static_cast<int>(m_handle), times.data());
}

int NewFile::close()
{
    const qintptr file = std::exchange(m_handle, -1);
    return file < 0 || ::close(static_cast<int>(file)) == 0 ? 0 : errno;
}

}  // namespace velm::detail::platform
