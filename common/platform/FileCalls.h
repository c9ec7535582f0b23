#pragma once

#include <QString>

/// The bare calls of the system for one open file, behind each of which lastError() holds. A file
/// is told by its descriptor, on Windows by that of the C run-time.
namespace velm::detail::platform {

constexpr int kNoFile = -1;

enum class OpenFor
{
    Reading,
    Writing,  ///< what is there, which keeps its content
    Making,   ///< one that is not there yet, to read and write
};

/// Opens a file that is no folder. A new one may be read by whom the user lets read new files.
int openFile(const QString& path, OpenFor purpose);

/// @return the number of bytes; 0 at the end, -1 for an error
qint64 readFile(int file, char* bytes, qint64 size);

/// Writes all of the bytes. False leaves a part written.
bool writeFile(int file, const char* bytes, qint64 size);

/// Lets an ordinary file grow to @p size bytes now, so that there is room for them later. What it
/// holds stays. False leaves its size as it was.
bool growFile(int file, qint64 size);

/// Gives an ordinary file a size.
bool resizeFile(int file, qint64 size);

/// Waits until the content has reached the disk, where it is on one.
bool syncOpenFile(int file);

}  // namespace velm::detail::platform
