#pragma once

#include <QDateTime>
#include <QString>

#include <utility>

namespace velm::detail::platform {

/// A folder that is held open. What is done in it by name is done in that very folder, whatever is
/// put in the place of its path meanwhile, and no link in the place of that name is followed.
/// On Windows the folder cannot be renamed or removed while it is held; whether it has become a
/// link is looked at right before each step, which is not the same moment.
/// Numbers that are answered are the system's of what went wrong; 0 if nothing did.
class FolderHandle
{
public:
    FolderHandle() = default;
    ~FolderHandle() { close(); }
    FolderHandle(FolderHandle&& other) noexcept { swap(other); }
    FolderHandle& operator=(FolderHandle&& other) noexcept
    {
        swap(other);
        return *this;
    }
    FolderHandle(const FolderHandle&) = delete;
    FolderHandle& operator=(const FolderHandle&) = delete;

    /// Opens a folder; a link to one is followed.
    int open(const QString& path);
    /// Opens a folder in another; a link is none.
    int open(const FolderHandle& parent, const QString& name);
    void close();

    /// The path under which it was opened.
    QString path() const { return m_path; }
    QString path(const QString& name) const;

    int makeFolder(const QString& name) const;
    /// Sets when a folder in it was changed, as far as the system lets us.
    void setFolderTime(const QString& name, const QDateTime& modified) const;

    /// Moves a file of that name into another folder of the same file system. What has its name
    /// there stays unless @p replaces, and a folder in any case.
    int moveFile(const QString& name, const FolderHandle& to, bool replaces) const;
    /// The same for a folder, which replaces nothing.
    int moveFolder(const QString& name, const FolderHandle& to) const;

private:
    friend class NewFile;

    void swap(FolderHandle& other) noexcept
    {
        std::swap(m_path, other.m_path);
        std::swap(m_handle, other.m_handle);
        std::swap(m_mayBeLink, other.m_mayBeLink);
    }
    int look() const;

    QString m_path;
    qintptr m_handle = -1;
    bool m_mayBeLink = false;  // on Windows
};

/// Makes a folder in one that is there.
int makeFolder(const QString& path);

/// Whether something was in the place where something was to be made or moved to.
bool isTaken(int error);
/// Whether what was to be opened is no folder, but a file or a link.
bool isNoFolder(int error);

}  // namespace velm::detail::platform
