#pragma once

#include "archive/ZipDevice.h"
#include "archive/ZipEntry.h"
#include "archive/ZipPacked.h"

#include <QVector>

#include <functional>

namespace velm::detail {

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
    /// Appends the entries in the order of the directory. More than @p most are refused.
    QString readEntries(QVector<ZipEntry>& entries, int most = kMostArchiveEntries);

    /// Gets a part of the content; what is wrong ends the reading.
    using Sink = std::function<QString(const char* bytes, int size)>;
    /// Hands the content of an entry over part by part and compares its checksum.
    QString read(const ZipEntry& entry, const Sink& sink);
    /// Takes the bytes of an entry as they lie, which the caller has found not too many. Nothing is
    /// compared but their number. @p at is where they begin in the file.
    QString readPacked(const ZipEntry& entry, ZipPacked& packed, qint64& at);

private:
    QString currentEntry(ZipEntry& entry);
    QByteArray signatureBehind() const;
    QString readOpened(const Sink& sink);
    QString readOpened(qint64 size, QByteArray& bytes);

    ZipDevice m_device;
    QByteArray m_part = QByteArray(kArchivePart, Qt::Uninitialized);
    unzFile m_archive = nullptr;
    quint64 m_directoryEnd = 0;  // behind the entry that was read last
};

}  // namespace velm::detail
