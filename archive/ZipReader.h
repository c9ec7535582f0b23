#pragma once

#include "archive/ZipDirectory.h"
#include "archive/ZipPacked.h"

#include <functional>

namespace velm::detail {

/// Reads an archive from a device. Whatever its content, nothing is read beyond it, and no more
/// than the caller takes. What is handed out as whole is what was stored: as many bytes as told,
/// with the checksum that is told, and no byte of the archive left.
///
/// minizip, which writes the archives, reads none: where long has 64 bits it mistakes sizes from
/// 4 GiB on, and it compares no checksum of content that ends early.
class ZipReader
{
public:
    /// @p device is open, can be sought in and lives longer.
    explicit ZipReader(QIODevice& device) : m_device(device), m_directory(device) {}
    Q_DISABLE_COPY(ZipReader)

    // What went wrong is answered; nothing if nothing did.

    QString open() { return m_directory.open(); }
    /// Appends the entries in the order of the directory. More than @p most are refused.
    QString readEntries(QVector<ZipEntry>& entries, int most = kMostArchiveEntries)
    {
        return m_directory.readEntries(entries, most);
    }

    /// Gets a part of the content; what is wrong ends the reading.
    using Sink = std::function<QString(const char* bytes, int size)>;
    /// Hands the content of an entry over part by part and compares its checksum.
    QString read(const ZipEntry& entry, const Sink& sink);
    /// Takes the bytes of an entry as they lie, which the caller has found not too many. Nothing is
    /// compared but their number.
    QString readPacked(const ZipEntry& entry, ZipPacked& packed);

private:
    QString openEntry(const ZipEntry& entry);
    QByteArray nextPart();
    QString readStored(const ZipEntry& entry, const Sink& sink);
    QString readDeflated(const ZipEntry& entry, const Sink& sink);

    QIODevice& m_device;
    ZipDirectory m_directory;
    QByteArray m_part;  // what was read along with the header of an entry
    qint64 m_left = 0;  // bytes of its content that are not yet handed over
    QByteArray m_out = QByteArray(kArchivePart, Qt::Uninitialized);
};

}  // namespace velm::detail
