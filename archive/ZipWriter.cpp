#include "archive/ZipWriter.h"

#include "archive/ZipTime.h"

#include <QtEndian>

#include <zlib.h>

namespace velm::detail {

namespace {

constexpr qint64 kMostWithout64 = 0xF0000000;  // what does not compress becomes a little larger

template<class Number>
void put(QByteArray& bytes, Number number)
{
    char little[sizeof number];
    qToLittleEndian(number, little);
    bytes.append(little, sizeof number);
}

/// The "zip64 end of central directory record" of the format (APPNOTE 4.3.14).
QByteArray wideEnd(quint64 entries, quint64 directorySize, quint64 directoryAt)
{
    constexpr quint64 kRest = 44;  // bytes that follow the size
    constexpr quint16 kVersion = 45;
    QByteArray bytes("PK\6\6");
    put(bytes, kRest);
    put(bytes, kVersion);
    put(bytes, kVersion);
    put(bytes, quint32(0));  // this disk
    put(bytes, quint32(0));  // that of the directory
    put(bytes, entries);
    put(bytes, entries);
    put(bytes, directorySize);
    put(bytes, directoryAt);
    return bytes;
}

/// The "zip64 end of central directory locator" (APPNOTE 4.3.15).
QByteArray wideEndLocator(quint64 endAt)
{
    QByteArray bytes("PK\6\7");
    put(bytes, quint32(0));  // disk
    put(bytes, endAt);
    put(bytes, quint32(1));  // disks
    return bytes;
}

QString changed()
{
    return QStringLiteral("it changed while it was read");
}

}  // namespace

ZipWriter::~ZipWriter()
{
    if (!m_archive)
        return;
    m_device.abandon();
    zipClose(m_archive, nullptr);  // lets go of memory
}

QString ZipWriter::open()
{
    zlib_filefunc64_def functions = m_device.functions();
    m_archive = zipOpen2_64(nullptr, APPEND_STATUS_CREATE, nullptr, &functions);
    if (m_level > 0)
        m_deflater = std::make_unique<Deflater>(m_level);
    return m_archive ? QString() : QStringLiteral("out of memory");
}

QString ZipWriter::addFile(const QString& name, const QDateTime& modified, QIODevice& content,
                           qint64 size, const Progress& progress)
{
    QString problem = beginEntry(name, modified, false, size);
    if (problem.isEmpty())
        problem = copy(content, static_cast<quint64>(size), progress);
    if (problem.isEmpty() && zipCloseFileInZipRaw64(m_archive, m_size, m_crc) != ZIP_OK)
        problem = failed();
    return problem;
}

QString ZipWriter::addFolder(const QString& name, const QDateTime& modified)
{
    QString problem = beginEntry(name, modified, true, 0);
    if (!problem.isEmpty())
        return problem;
    return zipCloseFileInZip(m_archive) == ZIP_OK ? QString() : failed();
}

/// The attributes are those of MS-DOS, which every system takes for files with its usual access.
QString ZipWriter::beginEntry(const QString& name, const QDateTime& modified, bool isFolder,
                              qint64 size)
{
    constexpr uLong kFolder = 0x10;
    constexpr uLong kArchived = 0x20;
    constexpr uLong kMadeByDos = 45;  // version 4.5 of the format, and system 0
    constexpr uLong kIsUtf8 = 1U << 11;
    constexpr int kMostNameBytes = 0xFFFF;
    const QByteArray bytes = name.toUtf8();
    if (bytes.size() > kMostNameBytes)
        return QStringLiteral("its name is too long for an archive");
    zip_fileinfo info{};
    info.dosDate = dosTime(modified);
    info.external_fa = isFolder ? kFolder : kArchived;
    const QByteArray time = timeField(modified);
    const auto timeSize = static_cast<uInt>(time.size());
    const int method = isFolder || m_level == 0 ? 0 : Z_DEFLATED;
    const int result = zipOpenNewFileInZip4_64(
        m_archive, bytes.constData(), &info, time.constData(), timeSize, time.constData(), timeSize,
        nullptr, method, m_level, isFolder ? 0 : 1, -MAX_WBITS, MAX_MEM_LEVEL - 1,
        Z_DEFAULT_STRATEGY, nullptr, 0, kMadeByDos, kIsUtf8, size > kMostWithout64 ? 1 : 0);
    ++m_entries;
    return result == ZIP_OK ? QString() : failed();
}

/// Compresses a content, or hands it on as it is.
QString ZipWriter::copy(QIODevice& content, quint64 size, const Progress& progress)
{
    const auto toArchive = [this](const char* bytes, int size) { return put(bytes, size); };
    m_crc = crc32(0, nullptr, 0);
    m_size = 0;
    // Less than asked for is not the end: a disk answers what it has before the bad place.
    for (;;) {
        const qint64 got = content.read(m_part.data(), m_part.size());
        if (got < 0)
            return content.errorString();
        if (got == 0)
            break;
        m_size += static_cast<quint64>(got);
        QString problem =
            m_size > size ? changed() : take(m_part.constData(), static_cast<int>(got), toArchive);
        if (problem.isEmpty())
            problem = progress(got);
        if (!problem.isEmpty())
            return problem;
    }
    if (m_size != size)
        return changed();
    return m_deflater ? m_deflater->end(toArchive) : QString();
}

QString ZipWriter::take(const char* bytes, int size, const Deflater::Sink& sink)
{
    m_crc = crc32(m_crc, reinterpret_cast<const Bytef*>(bytes), static_cast<uInt>(size));
    return m_deflater ? m_deflater->take(bytes, size, sink) : sink(bytes, size);
}

QString ZipWriter::put(const char* bytes, int size)
{
    const int result = zipWriteInFileInZip(m_archive, bytes, static_cast<unsigned>(size));
    return result == ZIP_OK ? QString() : failed();
}

QString ZipWriter::close()
{
    const int result = zipClose(m_archive, nullptr);
    m_archive = nullptr;
    return result == ZIP_OK && widenEnd() ? QString() : failed();
}

/// minizip ends an archive in the 64-bit form if it is large, and not if it has more entries than
/// the first form counts.
bool ZipWriter::widenEnd()
{
    constexpr int kMostOfFirstForm = 0xFFFE;
    constexpr int kEndSize = 22;
    constexpr quint32 kOfForm64 = 0xFFFFFFFF;
    const qint64 endAt = m_device.device().size() - kEndSize;
    QByteArray end;
    if (m_entries <= kMostOfFirstForm)
        return true;
    if (!m_device.device().seek(endAt)
        || (end = m_device.device().read(kEndSize)).size() < kEndSize)
        return false;
    const auto directorySize = qFromLittleEndian<quint32>(end.constData() + 12);
    const auto directoryAt = qFromLittleEndian<quint32>(end.constData() + 16);
    if (directoryAt == kOfForm64)
        return true;
    const QByteArray wide = wideEnd(static_cast<quint64>(m_entries), directorySize, directoryAt)
                            + wideEndLocator(static_cast<quint64>(endAt)) + end;
    return m_device.device().seek(endAt) && m_device.device().write(wide) == wide.size();
}

QString ZipWriter::failed() const
{
    if (m_device.isOutOfMemory())
        return QStringLiteral("out of memory");
    return QStringLiteral("the archive cannot be written: ") + m_device.device().errorString();
}

}  // namespace velm::detail
