#include "archive/ZipReader.h"

#include "archive/EntryName.h"
#include "archive/ZipTime.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace velm::detail {

namespace {

QString damaged()
{
    return QStringLiteral("the archive is damaged or cut off");
}

/// Whether an entry of a Unix is a symbolic link.
bool isLink(const unz_file_info64& info)
{
    constexpr uLong kUnix = 3;
    constexpr uLong kTypeMask = 0170000;
    constexpr uLong kLink = 0120000;
    return info.version >> 8 == kUnix && (info.external_fa >> 16 & kTypeMask) == kLink;
}

/// A size that the archive claims; one that no file has counts as the greatest.
qint64 sizeOf(ZPOS64_T size)
{
    constexpr auto kMost = std::numeric_limits<qint64>::max();
    return static_cast<qint64>(std::min<ZPOS64_T>(size, static_cast<ZPOS64_T>(kMost)));
}

}  // namespace

ZipReader::~ZipReader()
{
    if (m_archive)
        unzClose(m_archive);
}

QString ZipReader::open()
{
    zlib_filefunc64_def functions = m_device.functions();
    m_archive = unzOpen2_64(nullptr, &functions);
    return m_archive ? QString() : QStringLiteral("it is no zip archive, or its end is missing");
}

QString ZipReader::readEntries(QVector<ZipEntry>& entries)
{
    unz_global_info64 info{};
    if (unzGetGlobalInfo64(m_archive, &info) != UNZ_OK)
        return damaged();
    if (info.number_entry > static_cast<ZPOS64_T>(kMostArchiveEntries))
        return QStringLiteral("it has more than %1 entries").arg(kMostArchiveEntries);
    if (info.number_entry == 0)
        return QString();
    int step = unzGoToFirstFile(m_archive);
    for (; step == UNZ_OK; step = unzGoToNextFile(m_archive)) {
        ZipEntry entry;
        QString problem = currentEntry(entry);
        if (!problem.isEmpty())
            return problem;
        entries.append(entry);
    }
    // An archive of the first format counts up to 65,535; minizip reads on then. One that has more
    // by 65,536 shows the next entry.
    const QByteArray next = signatureBehind();
    if (next == "PK\1\2")
        return QStringLiteral("it has more entries than it tells");
    const bool isEnd = next == "PK\5\6" || next == "PK\6\6";
    return step == UNZ_END_OF_LIST_OF_FILE || isEnd ? QString() : damaged();
}

QByteArray ZipReader::signatureBehind() const
{
    QIODevice& device = m_device.device();
    return device.seek(static_cast<qint64>(m_directoryEnd)) ? device.read(4) : QByteArray();
}

QString ZipReader::currentEntry(ZipEntry& entry)
{
    constexpr uLong kIsEncrypted = 1;
    constexpr uLong kIsUtf8 = 1U << 11;
    unz_file_info64 info{};
    int result = unzGetCurrentFileInfo64(m_archive, &info, nullptr, 0, nullptr, 0, nullptr, 0);
    QByteArray name(static_cast<int>(info.size_filename), '\0');
    QByteArray fields(static_cast<int>(info.size_file_extra), '\0');
    if (result == UNZ_OK)
        result = unzGetCurrentFileInfo64(m_archive, &info, name.data(), info.size_filename,
                                         fields.data(), info.size_file_extra, nullptr, 0);
    if (result != UNZ_OK || unzGetFilePos64(m_archive, &entry.place) != UNZ_OK)
        return damaged();
    constexpr quint64 kFixedSize = 46;
    m_directoryEnd = entry.place.pos_in_zip_directory + kFixedSize + info.size_filename
                     + info.size_file_extra + info.size_file_comment;
    entry.name = decodedEntryName(name, (info.flag & kIsUtf8) != 0);
    entry.size = sizeOf(info.uncompressed_size);
    entry.compressedSize = sizeOf(info.compressed_size);
    entry.crc = static_cast<quint32>(info.crc);
    entry.isFolder = entry.name.endsWith(QLatin1Char('/'));
    entry.isEncrypted = (info.flag & kIsEncrypted) != 0;
    entry.isLink = isLink(info);
    entry.method = static_cast<int>(info.compression_method);
    entry.modified = timeOfFields(fields);
    if (!entry.modified.isValid())
        entry.modified = timeOfDos(static_cast<quint32>(info.dosDate));
    return QString();
}

QString ZipReader::read(const ZipEntry& entry, const Sink& sink)
{
    if (entry.isEncrypted)
        return QStringLiteral("it is encrypted, which is not read");
    if (entry.method != 0 && entry.method != Z_DEFLATED)
        return QStringLiteral("it is compressed by a method that is not read (%1)")
            .arg(entry.method);
    unz64_file_pos place = entry.place;
    if (unzGoToFilePos64(m_archive, &place) != UNZ_OK || unzOpenCurrentFile(m_archive) != UNZ_OK)
        return damaged();
    QString problem = readOpened(entry.size, sink);
    const int closed = unzCloseCurrentFile(m_archive);
    if (!problem.isEmpty() || closed == UNZ_OK)
        return problem;
    return QStringLiteral("its content is damaged: the checksum is another");
}

/// minizip takes content that ends before its time for whole, and does not compare its checksum.
QString ZipReader::readOpened(qint64 size, const Sink& sink)
{
    for (qint64 done = 0;;) {
        const int got =
            unzReadCurrentFile(m_archive, m_part.data(), static_cast<unsigned>(m_part.size()));
        if (got < 0)
            return QStringLiteral("its content is damaged");
        if (got == 0)
            return done == size ? QString()
                                : QStringLiteral("its content is damaged: there is less than told");
        done += got;
        QString problem = sink(m_part.constData(), got);
        if (!problem.isEmpty())
            return problem;
    }
}

}  // namespace velm::detail
