#pragma once

#include <QDateTime>
#include <QString>

namespace velm::detail {

/// The most entries of one archive.
constexpr int kMostArchiveEntries = 1000000;
/// How much is read and written at a time.
constexpr int kArchivePart = 1 << 17;

/// What an archive says about one of its entries, and what it takes to read it.
struct ZipEntry
{
    QString name;               ///< with "/" between folders, at the end of a folder's name, too
    qint64 size = 0;            ///< in bytes
    qint64 compressedSize = 0;  ///< in bytes
    QDateTime modified;         ///< invalid if the archive does not tell
    quint32 crc = 0;            ///< CRC-32 of the content
    bool isFolder = false;
    bool isEncrypted = false;
    bool isLink = false;
    bool hasBackslash = false;  ///< in the bytes of its name
    int method = 0;             ///< 0 stored, 8 "deflate"
    quint32 dosTime = 0;        ///< the time in the form of MS-DOS
    qint64 at = 0;              ///< of its header, from the beginning of the device
};

}  // namespace velm::detail
