#pragma once

#include "common/platform/FolderHandle.h"

namespace velm::detail::platform {

/// A file that is made in a folder that is held, and was not there. It tells what the system says
/// when something fails, also when it is closed.
/// Numbers that are answered are the system's of what went wrong; 0 if nothing did.
class NewFile
{
public:
    NewFile() = default;
    ~NewFile() { close(); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// Makes it. What has its name is in the way, a link, too.
    int make(const FolderHandle& folder, const QString& name);

    /// Writes all of them.
    int write(const char* bytes, qint64 size);
    /// Sets when it was changed, as far as the system lets us.
    void setTime(const QDateTime& modified);
    /// Closes it. What could not be written is told by some systems here only.
    int close();

private:
    qintptr m_handle = -1;
};

}  // namespace velm::detail::platform
