#include "archive/ZipWriter.h"

#include "archive/ZipTime.h"

#include <QtEndian>

#include <zlib.h>

namespace velm::detail {

namespace {

constexpr uLong kArchived = 0x20;  // of MS-DOS
constexpr uLong kIsUtf8 = 1U << 11;
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

/// What stands before the content of an entry.
struct ZipWriter::Opening
{
    zip_fileinfo info{};
    QByteArray fields;  // behind the name
    int method = 0;
    bool isRaw = false;  // what is put is compressed already
    uLong flags = 0;
    bool isWide = false;  // of the 64-bit form
};

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

QString ZipWriter::addPacked(const QString& name, const ZipPacked& packed)
{
    Opening opening;
    opening.info.dosDate = packed.time;
    opening.info.external_fa = kArchived;
    opening.method = packed.method;
    opening.isRaw = true;
    const QByteArray bytes = name.toUtf8();
    // Other programs mark no name of ASCII.
    opening.flags = bytes.size() == name.size() ? 0 : kIsUtf8;
    opening.isWide = packed.size > kMostWithout64;
    QString problem = open(bytes, opening);
    if (problem.isEmpty())
        problem = put(packed.bytes.constData(), packed.bytes.size());
    if (problem.isEmpty()
        && zipCloseFileInZipRaw64(m_archive, static_cast<quint64>(packed.size), packed.crc)
               != ZIP_OK)
        problem = failed();
    return problem;
}

/// The attributes are those of MS-DOS, which every system takes for files with its usual access.
QString ZipWriter::beginEntry(const QString& name, const QDateTime& modified, bool isFolder,
                              qint64 size)
{
    constexpr uLong kFolder = 0x10;
    Opening opening;
    opening.info.dosDate = dosTime(modified);
    opening.info.external_fa = isFolder ? kFolder : kArchived;
    opening.fields = timeField(modified);
    opening.method = isFolder || m_level == 0 ? 0 : Z_DEFLATED;
    opening.isRaw = !isFolder;
    opening.flags = kIsUtf8;
    opening.isWide = size > kMostWithout64;
    return open(name.toUtf8(), opening);
}

QString ZipWriter::open(const QByteArray& name, const Opening& opening)
{
    constexpr uLong kMadeByDos = 45;  // version 4.5 of the format, and system 0
    constexpr int kMostNameBytes = 0xFFFF;
    if (name.size() > kMostNameBytes)
        return QStringLiteral("its name is too long for an archive");
    const char* fields = opening.fields.constData();
    const auto fieldsSize = static_cast<uInt>(opening.fields.size());
    const int result = zipOpenNewFileInZip4_64(
        m_archive, name.constData(), &opening.info, fields, fieldsSize, fields, fieldsSize, nullptr,
        opening.method, m_level, opening.isRaw ? 1 : 0, -MAX_WBITS, MAX_MEM_LEVEL - 1,
        Z_DEFAULT_STRATEGY, nullptr, 0, kMadeByDos, opening.flags, opening.isWide ? 1 : 0);
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
