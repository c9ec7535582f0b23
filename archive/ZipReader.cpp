#include "archive/ZipReader.h"

#include "archive/ZipFields.h"

#include <zlib.h>

#include <algorithm>
#include <new>

namespace velm::detail {

namespace {

constexpr int kHeaderSize = 30;
constexpr int kUsualFields = 64;  // bytes of a header's extra fields

QString damaged(const char* what)
{
    return QStringLiteral("its content is damaged: ") + QLatin1String(what);
}

const Bytef* asZlib(const char* bytes)
{
    return reinterpret_cast<const Bytef*>(bytes);
}

/// Counts what is handed over, and compares it with what is told of an entry.
class Checked
{
public:
    Checked(const ZipEntry& entry, const ZipReader::Sink& sink) : m_entry(entry), m_sink(sink) {}

    QString take(const char* bytes, int size)
    {
        if (size > m_entry.size - m_taken)
            return damaged("there is more than told");
        m_taken += size;
        m_crc = crc32(m_crc, asZlib(bytes), static_cast<uInt>(size));
        return size > 0 ? m_sink(bytes, size) : QString();
    }
    QString end() const
    {
        if (m_taken != m_entry.size)
            return damaged("there is less than told");
        return m_crc == m_entry.crc ? QString() : damaged("the checksum is another");
    }

private:
    const ZipEntry& m_entry;
    const ZipReader::Sink& m_sink;
    qint64 m_taken = 0;
    uLong m_crc = crc32(0, nullptr, 0);
};

/// What was deflated, on its way back.
class Inflater
{
public:
    Inflater()
    {
        if (inflateInit2(&m_stream, -MAX_WBITS) != Z_OK)
            throw std::bad_alloc();
    }
    ~Inflater() { inflateEnd(&m_stream); }
    Q_DISABLE_COPY(Inflater)

    /// Inflates a part into @p checked by way of @p out.
    QString take(const QByteArray& part, QByteArray& out, Checked& checked)
    {
        // zlib does not write there.
        m_stream.next_in = const_cast<Bytef*>(asZlib(part.constData()));
        m_stream.avail_in = static_cast<uInt>(part.size());
        do {
            m_stream.next_out = reinterpret_cast<Bytef*>(out.data());
            m_stream.avail_out = static_cast<uInt>(out.size());
            const int result = inflate(&m_stream, Z_NO_FLUSH);
            if (result == Z_MEM_ERROR)
                throw std::bad_alloc();
            m_isAtEnd = result == Z_STREAM_END;
            if (!m_isAtEnd && result != Z_OK && result != Z_BUF_ERROR)
                return damaged("it cannot be decompressed");
            const int made = out.size() - static_cast<int>(m_stream.avail_out);
            QString problem = checked.take(out.constData(), made);
            if (!problem.isEmpty())
                return problem;
        } while (!m_isAtEnd && m_stream.avail_out == 0);
        return m_stream.avail_in == 0 ? QString() : damaged("something follows its end");
    }
    bool isAtEnd() const { return m_isAtEnd; }

private:
    z_stream m_stream{};
    bool m_isAtEnd = false;
};

}  // namespace

QString ZipReader::read(const ZipEntry& entry, const Sink& sink)
{
    if (entry.isEncrypted)
        return QStringLiteral("it is encrypted, which is not read");
    if (entry.method != 0 && entry.method != Z_DEFLATED)
        return QStringLiteral("it is compressed by a method that is not read (%1)")
            .arg(entry.method);
    QString problem = openEntry(entry);
    if (!problem.isEmpty())
        return problem;
    const bool isNothing = entry.compressedSize == 0 && entry.size == 0 && entry.crc == 0;
    return entry.method == 0 || isNothing ? readStored(entry, sink) : readDeflated(entry, sink);
}

/// Goes to the content of an entry, behind a header of its own (APPNOTE 4.3.7), whose name may have
/// another length than that of the directory.
QString ZipReader::openEntry(const ZipEntry& entry)
{
    const qint64 usual = kHeaderSize + entry.name.size() + kUsualFields + entry.compressedSize;
    if (!m_device.seek(entry.at))
        return damaged("it lies beyond the end");
    m_part = m_device.read(std::min<qint64>(usual, kArchivePart));
    if (!m_part.startsWith("PK\3\4") || m_part.size() < kHeaderSize)
        return damaged("it is not where the archive tells");
    const qint64 begin = kHeaderSize + fieldOf<quint16>(m_part, 26) + fieldOf<quint16>(m_part, 28);
    if (fieldOf<quint16>(m_part, 8) != entry.method
        || entry.compressedSize > m_directory.begin() - entry.at - begin)
        return damaged("its header tells something else");
    m_left = entry.compressedSize;
    if (begin <= m_part.size())
        m_part = m_part.mid(static_cast<int>(begin));
    else if (m_device.seek(entry.at + begin))
        m_part.clear();
    return QString();
}

/// The next bytes of the content; none at its end, or where they cannot be read.
QByteArray ZipReader::nextPart()
{
    QByteArray part = m_part;
    m_part.clear();
    if (part.isEmpty())
        part = m_device.read(std::min<qint64>(m_left, kArchivePart));
    if (part.size() > m_left)
        part.truncate(static_cast<int>(m_left));
    m_left -= part.size();
    return part;
}

QString ZipReader::readPacked(const ZipEntry& entry, ZipPacked& packed)
{
    QString problem = openEntry(entry);
    if (!problem.isEmpty())
        return problem;
    packed.method = entry.method;
    packed.crc = entry.crc;
    packed.size = entry.size;
    packed.time = entry.dosTime;
    packed.bytes = m_part.left(static_cast<int>(std::min<qint64>(m_left, m_part.size())));
    for (QByteArray more("?"); packed.bytes.size() < m_left && !more.isEmpty();) {
        more = m_device.read(m_left - packed.bytes.size());
        packed.bytes += more;
    }
    return packed.bytes.size() == m_left ? QString() : damaged("it cannot be read");
}

QString ZipReader::readStored(const ZipEntry& entry, const Sink& sink)
{
    Checked checked(entry, sink);
    while (m_left > 0) {
        const QByteArray part = nextPart();
        if (part.isEmpty())
            return damaged("it cannot be read");
        QString problem = checked.take(part.constData(), part.size());
        if (!problem.isEmpty())
            return problem;
    }
    return checked.end();
}

QString ZipReader::readDeflated(const ZipEntry& entry, const Sink& sink)
{
    Checked checked(entry, sink);
    Inflater inflater;
    while (m_left > 0) {
        const QByteArray part = nextPart();
        if (part.isEmpty())
            return damaged("it cannot be read");
        if (inflater.isAtEnd())
            return damaged("something follows its end");
        QString problem = inflater.take(part, m_out, checked);
        if (!problem.isEmpty())
            return problem;
    }
    return inflater.isAtEnd() ? checked.end() : damaged("its end is missing");
}

}  // namespace velm::detail
