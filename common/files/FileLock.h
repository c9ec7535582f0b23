#pragma once

#include "common/platform/FileSystem.h"

#include <QString>

namespace velm::detail {

/// Keeps other processes out by a file that exists while the lock is held. A process that ends in
/// whatever way holds no lock any more; the file that it may leave is taken over. An object belongs
/// to one thread.
class FileLock
{
public:
    explicit FileLock(const QString& file);
    /// Lets go.
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// False if another process or object holds it, or if the file cannot be made.
    bool tryLock();
    /// Whether it is held elsewhere, after an attempt that failed.
    bool isBusy() const { return m_lock == platform::kBusyLock; }
    /// Why not, as platform::lastError().
    int error() const { return m_error; }
    /// Tries again and again for about @p timeoutMs while it is held elsewhere.
    bool lock(int timeoutMs);
    void unlock();
    /// Lets go as a process does that is killed: the file stays, for the next one to take over.
    void abandon();

private:
    bool isHeld() const { return m_lock != platform::kNoLock && !isBusy(); }

    QString m_file;
    qintptr m_lock = platform::kNoLock;
    int m_error = 0;
};

}  // namespace velm::detail
