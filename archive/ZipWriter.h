#pragma once

#include "archive/Deflater.h"
#include "archive/ZipDevice.h"
#include "archive/ZipEntry.h"
#include "archive/ZipPacked.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

#include <minizip/zip.h>

namespace velm::detail {

/// Writes an archive to a device.
class ZipWriter
{
public:
    /// @p device is open and empty, can be sought in and lives longer. @p level is 0 to 9.
    ZipWriter(QIODevice& device, int level) : m_device(device), m_level(level) {}
    ~ZipWriter();
    Q_DISABLE_COPY(ZipWriter)

    // What went wrong is answered; nothing if nothing did.

    QString open();
    /// Told how many bytes more are written; what is wrong ends the writing.
    using Progress = std::function<QString(qint64 bytes)>;
    /// Adds what a device holds. That it is @p size bytes was found before; another number tells
    /// that it changed meanwhile, and fails.
    QString addFile(const QString& name, const QDateTime& modified, QIODevice& content, qint64 size,
                    const Progress& progress);
    /// Adds a folder; its name ends with "/".
    QString addFolder(const QString& name, const QDateTime& modified);
    /// Adds a content that is compressed, or lies in another archive, as it is.
    QString addPacked(const QString& name, const ZipPacked& packed);
    /// Writes the directory. Without it, what was written is no archive.
    QString close();

private:
    struct Opening;

    QString open(const QByteArray& name, const Opening& opening);
    QString beginEntry(const QString& name, const QDateTime& modified, bool isFolder, qint64 size);
    QString copy(QIODevice& content, quint64 size, const Progress& progress);
    QString take(const char* bytes, int size, const Deflater::Sink& sink);
    QString put(const char* bytes, int size);
    bool widenEnd();
    QString failed() const;

    ZipDevice m_device;
    std::unique_ptr<Deflater> m_deflater;  // null if contents are stored as they are
    QByteArray m_part = QByteArray(kArchivePart, Qt::Uninitialized);
    int m_level;
    zipFile m_archive = nullptr;
    int m_entries = 0;
    quint64 m_size = 0;  // of the content that is added
    uLong m_crc = 0;     // the same
};

}  // namespace velm::detail
