#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

/// What a folder holds, and what that is. Paths have "/" throughout. Numbers that are answered are
/// the system's of what went wrong, 0 if nothing did: QDir and QFileInfo take a folder that cannot
/// be read for an empty one.
namespace velm::detail::platform {

struct FolderNames
{
    QStringList names;  // without "." and "..", in no certain order
    QStringList
        unreadable;  // those that are no text here, with \xNN (Windows: \uNNNN) for the rest
};

/// Lists a folder. What is told if that fails is a part.
int listFolder(const QString& folder, FolderNames& content);

enum class EntryKind
{
    Unknown,  // it cannot be asked
    Missing,
    File,
    Folder,
    FileLink,
    FolderLink,
    DeadLink,  // it leads nowhere
    Other      // neither file nor folder
};

struct EntryState
{
    EntryKind kind = EntryKind::Unknown;
    int error = 0;       // with Unknown
    qint64 size = 0;     // of what a link leads to
    QDateTime modified;  // the same, in UTC
};

/// Looks at what has a name, by one call of the system where it is no link.
EntryState lookAt(const QString& path);

}  // namespace velm::detail::platform
