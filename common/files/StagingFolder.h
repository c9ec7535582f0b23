#pragma once

#include "common/files/FileLock.h"

#include <QString>

#include <memory>

namespace velm::detail {

/// A folder of our own to make files in, gone with the object. Its name is ".velm-" and eight
/// hexadecimal digits; a lock beside it, called the same with ".lock", tells that its process
/// lives.
class StagingFolder
{
public:
    StagingFolder();
    ~StagingFolder();
    StagingFolder(const StagingFolder&) = delete;
    StagingFolder& operator=(const StagingFolder&) = delete;

    /// The lock of those who give files their places in @p folder.
    static QString commitLock(const QString& folder);

    /// Whether a file or folder of that name, without a path, is one of these, its lock or the lock
    /// of those who commit. What gathers a folder's content leaves it out.
    static bool isStagingName(const QString& name);

    /// Removes those in @p folder whose process has ended, and such a process's commit lock.
    static void removeLeftOver(const QString& folder);

    /// Makes it in @p folder, where nobody else may look into it. False if that cannot be done.
    bool make(const QString& folder);
    /// Why not, as platform::lastError().
    int error() const { return m_error; }

    /// A path in it. The folders that lead there exist then.
    QString path(const QString& relative) const;

    /// Leaves the folder and what is in it behind for the user.
    void keep();

private:
    QString m_path;
    std::unique_ptr<FileLock> m_lock;
    int m_error = 0;
};

}  // namespace velm::detail
