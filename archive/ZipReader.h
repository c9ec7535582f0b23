#pragma once

#include "archive/CompressSettings.h"
#include "archive/ZipDevice.h"

#include <minizip/unzip.h>

namespace velm::detail {

/// An entry, and what it takes to read it.
struct ZipEntry : VelmArchiveEntry
{
    unz64_file_pos place{};
    int method = 0;
    bool isLink = false;
};

/// Reads an archive from a device. Whatever its content, nothing is read beyond it, and no more
/// than the caller takes.
class ZipReader
{
public:
    /// @p device is open, can be sought in and lives longer.
    explicit ZipReader(QIODevice& device) : m_device(device) {}
    ~ZipReader();
    Q_DISABLE_COPY(ZipReader)

    // What went wrong is answered; nothing if nothing did.

    QString open();
    /// Appends the entries in the order of the directory.
    QString readEntries(QVector<ZipEntry>& entries);

    /// Gets a part of the content; what is wrong ends the reading.
    using Sink = std::function<QString(const char* bytes, int size)>;
    /// Hands the content of an entry over part by part and compares its checksum.
    QString read(const ZipEntry& entry, const Sink& sink);

private:
    QString currentEntry(ZipEntry& entry);
    QByteArray signatureBehind() const;
    QString readOpened(qint64 size, const Sink& sink);

    ZipDevice m_device;
    QByteArray m_part = QByteArray(kArchivePart, Qt::Uninitialized);
    unzFile m_archive = nullptr;
    quint64 m_directoryEnd = 0;  // behind the entry that was read last
};

}  // namespace velm::detail
