#pragma once

#include "archive/ZipEntry.h"

#include <QIODevice>
#include <QVector>

namespace velm::detail {

/// The directory of an archive (APPNOTE 4.3): what stands at its end about its entries. Whatever
/// the archive claims, nothing is read beyond the device.
class ZipDirectory
{
public:
    /// @p device is open, can be sought in and lives longer.
    explicit ZipDirectory(QIODevice& device) : m_device(device) {}

    // What went wrong is answered; nothing if nothing did.

    /// Finds the directory.
    QString open();
    /// Appends the entries in the order of the directory. More than @p most are refused.
    QString readEntries(QVector<ZipEntry>& entries, int most);

    /// Where it begins: contents end before.
    qint64 begin() const { return m_begin; }

private:
    QString readEnd(qint64 endAt, const QByteArray& end);
    QString readWideEnd(qint64 locatorAt);
    QString place(qint64 endAt);
    QByteArray bytesAt(qint64 at, qint64 size) const;
    QString readEntry(QVector<ZipEntry>& entries);
    bool have(int size);
    bool isWhole() const;

    QIODevice& m_device;
    qint64 m_begin = 0;
    qint64 m_size = 0;
    quint64 m_told = 0;     // how many entries, or that modulo 65,536
    quint64 m_count = 0;    // how many were read
    qint64 m_offset = 0;    // of the directory, as it is told
    qint64 m_before = 0;    // bytes before the archive, as of a program that extracts itself
    bool m_isWide = false;  // of the 64-bit form

    // While entries are read: a part of the directory, and how far it is read.
    QByteArray m_part;
    int m_at = 0;
    qint64 m_partEnd = 0;
};

}  // namespace velm::detail
