#pragma once

#include <QByteArray>

namespace velm::detail {

/// A content as it lies in an archive, and what the archive tells of it.
struct ZipPacked
{
    /// The first of January 1980, for contents without a time.
    static constexpr quint32 kNoTime = 0x00210000;

    QByteArray bytes;
    int method = 0;          ///< 0 stored, 8 "deflate"
    quint32 crc = 0;         ///< CRC-32 of the content
    qint64 size = 0;         ///< of the content, in bytes
    quint32 time = kNoTime;  ///< in the form of MS-DOS
};

}  // namespace velm::detail
