#pragma once

#include <QByteArray>
#include <QString>

/// What each system does in its own way with files. Paths have "/" throughout. On Windows a program
/// that opens a file may keep others from moving, replacing or removing it; that is tried for 2 s
/// before it fails.
namespace velm::detail::platform {

/// A path in a form that the system takes however long it is: on Windows, from 240 characters on,
/// the absolute path behind "\\?\". One that begins so already is left as it is.
QString longPath(const QString& path);

/// What tells a file from every other that there is at the same time, whatever its name; empty if
/// it is not there or cannot be asked. A link stands for its target.
QByteArray fileIdentity(const QString& file);

/// What a link names, seen from the folder that really holds it; empty if it is none.
QString linkTarget(const QString& link);

/// Whether a file can have that name, short or long.
bool canNameFile(const QString& name);

/// The longest path, in bytes of UTF-8, that SQLite opens here.
int longestDatabasePath();

/// Gives the file @p from the name @p to in one step: whoever looks at that name finds the old file
/// or the new one, also if the process ends meanwhile. Both are in one file system.
bool replaceFile(const QString& from, const QString& to);

enum class Placed
{
    Yes,
    ThereAlready,
    Failed
};

/// The same where nothing has the name @p to yet; what has come there meanwhile stays.
Placed placeFile(const QString& from, const QString& to);

/// What replaceFile() does for a folder, which replaces nothing (elsewhere than on Windows an empty
/// folder).
bool moveFolder(const QString& from, const QString& to);

/// Makes a folder that nobody else may enter; on Windows one with the permissions of its folder.
bool makePrivateFolder(const QString& folder);

/// Removes a file.
bool removeFile(const QString& file);

/// Whether replaceFile() replaces a file that a process, this one included, has open.
bool replacesOpenFiles();

/// Gives a file a second name. False where the file system has no such thing.
bool linkFile(const QString& file, const QString& name);

/// Waits until the content of a file has reached the disk.
bool syncFile(const QString& file);
/// The same for the names in a folder, where the system has a call for it.
void syncFolder(const QString& folder);

/// Gives @p to the owner and the permissions of @p from, as far as this process may. On Windows a
/// file has those of its folder.
void copyAccess(const QString& from, const QString& to);

/// Takes the permissions from @p to that @p from does not give.
void limitAccess(const QString& from, const QString& to);

constexpr qintptr kNoLock = -1;
constexpr qintptr kBusyLock = -2;

/// Makes and locks a file; the system lets go of it with the process, however that ends, and leaves
/// the file. kBusyLock if another process holds it; kNoLock if it cannot be made.
qintptr lockFile(const QString& file);
/// Removes the file and lets go of it.
void unlockFile(const QString& file, qintptr lock);
/// Lets go of the file and leaves it, as a process does that is killed.
void abandonLock(qintptr lock);

}  // namespace velm::detail::platform
