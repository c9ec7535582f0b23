#include "common/files/FileLock.h"

#include <QDeadlineTimer>
#include <QThread>

namespace velm::detail {

FileLock::FileLock(const QString& file) : m_file(file) {}

FileLock::~FileLock()
{
    unlock();
}

bool FileLock::tryLock()
{
    if (m_lock == platform::kNoLock)
        m_lock = platform::lockFile(m_file);
    return m_lock != platform::kNoLock;
}

bool FileLock::lock(int timeoutMs)
{
    constexpr unsigned long kPauseMs = 20;
    const QDeadlineTimer deadline(timeoutMs);
    while (!tryLock()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(kPauseMs);
    }
    return true;
}

void FileLock::unlock()
{
    if (m_lock != platform::kNoLock)
        platform::unlockFile(m_file, m_lock);
    m_lock = platform::kNoLock;
}

}  // namespace velm::detail
