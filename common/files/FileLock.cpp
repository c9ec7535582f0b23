#include "common/files/FileLock.h"

#include "common/platform/SystemError.h"

#include <QDeadlineTimer>
#include <QThread>

#include <new>

namespace velm::detail {

FileLock::FileLock(const QString& file) : m_file(file) {}

FileLock::~FileLock()
{
    unlock();
}

bool FileLock::tryLock()
{
    if (!isHeld()) {
        m_lock = platform::lockFile(m_file);
        m_error = isHeld() ? 0 : platform::lastError();
    }
    return isHeld();
}

bool FileLock::lock(int timeoutMs)
{
    constexpr unsigned long kPauseMs = 20;
    const QDeadlineTimer deadline(timeoutMs);
    while (!tryLock()) {
        if (!isBusy() || deadline.hasExpired())
            return false;
        QThread::msleep(kPauseMs);
    }
    return true;
}

void FileLock::unlock()
{
    try {
        if (isHeld())
            platform::unlockFile(m_file, m_lock);
        m_lock = platform::kNoLock;
    } catch (const std::bad_alloc&) {  // the file stays, and goes with the next run
        abandon();
    }
}

void FileLock::abandon()
{
    if (isHeld())
        platform::abandonLock(m_lock);
    m_lock = platform::kNoLock;
}

}  // namespace velm::detail
