#include "archive/ZipDirectory.h"

#include "archive/EntryName.h"
#include "archive/ZipFields.h"
#include "archive/ZipTime.h"

#include <algorithm>
#include <cstring>

namespace velm::detail {

namespace {

constexpr qint64 kMostDirectory = 192 << 20;  // bytes, which become about twice as many in memory
constexpr int kEndSize = 22;
constexpr int kLocatorSize = 20;
constexpr int kWideEndSize = 56;
constexpr int kHeaderSize = 30;  // of a content, without its name
constexpr quint16 kWide16 = 0xFFFF;
constexpr quint32 kWide32 = 0xFFFFFFFF;

QString damaged()
{
    return QStringLiteral("the archive is damaged or cut off");
}

QString severalDisks()
{
    return QStringLiteral("it is a part of an archive on several disks, which is not read");
}

/// Where in the last bytes of a device the end of an archive begins: the last place from which on
/// its comment fits. -1 if there is none.
int findEnd(const QByteArray& last)
{
    int at = last.size() - kEndSize;
    while (at >= 0
           && (std::memcmp(last.constData() + at, "PK\5\6", 4) != 0
               || at + kEndSize + fieldOf<quint16>(last, at + 20) > last.size()))
        --at;
    return std::max(at, -1);
}

/// Whether an entry of a Unix is a symbolic link.
bool isLink(quint16 madeBy, quint32 attributes)
{
    constexpr int kUnix = 3;
    constexpr quint32 kTypeMask = 0170000;
    constexpr quint32 kLink = 0120000;
    return madeBy >> 8 == kUnix && (attributes >> 16 & kTypeMask) == kLink;
}

/// Whether an entry of MS-DOS or Windows is a folder, which need not end with "/" then.
bool isDosFolder(quint16 madeBy, quint32 attributes)
{
    constexpr quint32 kFolder = 0x10;
    const int system = madeBy >> 8;
    return (system == 0 || system == 10 || system == 11 || system == 14)
           && (attributes & kFolder) != 0;
}

/// Whether the contents lie one behind the other. Those of archives made to harm lie one over the
/// other, so that few bytes become many.
bool liesApart(QVector<ZipEntry> entries, qint64 end)
{
    const auto isBefore = [](const ZipEntry& a, const ZipEntry& b) { return a.at < b.at; };
    if (!std::is_sorted(entries.cbegin(), entries.cend(), isBefore))
        std::sort(entries.begin(), entries.end(), isBefore);
    for (int i = 0; i < entries.size(); ++i) {
        const qint64 next = i + 1 < entries.size() ? entries.at(i + 1).at : end;
        if (entries.at(i).compressedSize > next - entries.at(i).at - kHeaderSize)
            return false;
    }
    return true;
}

/// Takes the numbers that do not fit into the header from the field of the 64-bit form (APPNOTE
/// 4.5.3). False if they are not there, or more than any file has.
bool widen(const QByteArray& fields, qint64& size, qint64& compressedSize, qint64& at)
{
    const QByteArray wide = extraField(fields, 1);
    int next = 0;
    for (qint64* const number : {&size, &compressedSize, &at}) {
        if (*number != kWide32)
            continue;
        if (next + 8 > wide.size())
            return false;
        *number = fieldOf<qint64>(wide, next);
        next += 8;
    }
    return size >= 0 && compressedSize >= 0 && at >= 0;
}

}  // namespace

QByteArray ZipDirectory::bytesAt(qint64 at, qint64 size) const
{
    return at >= 0 && m_device.seek(at) ? m_device.read(size) : QByteArray();
}

QString ZipDirectory::open()
{
    constexpr qint64 kMostComment = 0xFFFF;
    const qint64 size = m_device.size();
    const qint64 from = std::max<qint64>(0, size - kEndSize - kMostComment);
    const QByteArray last = bytesAt(from, size - from);
    const int end = last.size() == size - from ? findEnd(last) : -1;
    if (end < 0)
        return QStringLiteral("it is no zip archive, or its end is missing");
    return readEnd(from + end, last.mid(end, kEndSize));
}

QString ZipDirectory::readEnd(qint64 endAt, const QByteArray& end)
{
    const auto disk = fieldOf<quint16>(end, 4);
    const auto diskOfDirectory = fieldOf<quint16>(end, 6);
    const auto ofThisDisk = fieldOf<quint16>(end, 8);
    m_told = fieldOf<quint16>(end, 10);
    m_size = fieldOf<quint32>(end, 12);
    m_offset = fieldOf<quint32>(end, 16);
    if (bytesAt(endAt - kLocatorSize, 4) == "PK\6\7")
        return readWideEnd(endAt - kLocatorSize);
    if (disk != 0 || diskOfDirectory != 0 || ofThisDisk != m_told)
        return severalDisks();
    return place(endAt);
}

/// The end of the 64-bit form. Its place is told from the beginning of the archive, before which
/// there may be a program.
QString ZipDirectory::readWideEnd(qint64 locatorAt)
{
    const QByteArray locator = bytesAt(locatorAt, kLocatorSize);
    if (locator.size() < kLocatorSize)
        return damaged();
    if (fieldOf<quint32>(locator, 4) != 0 || fieldOf<quint32>(locator, 16) > 1)
        return severalDisks();
    qint64 at = fieldOf<qint64>(locator, 8);
    QByteArray end = bytesAt(at, kWideEndSize);
    if (!end.startsWith("PK\6\6")) {
        at = locatorAt - kWideEndSize;
        end = bytesAt(at, kWideEndSize);
    }
    if (!end.startsWith("PK\6\6") || end.size() < kWideEndSize || at >= locatorAt)
        return damaged();
    if (fieldOf<quint32>(end, 16) != 0 || fieldOf<quint32>(end, 20) != 0)
        return severalDisks();
    m_isWide = true;
    m_told = fieldOf<quint64>(end, 32);
    m_size = fieldOf<qint64>(end, 40);
    m_offset = fieldOf<qint64>(end, 48);
    return place(at);
}

/// The directory ends where its end begins, wherever it is told to be; a few programs leave a gap.
QString ZipDirectory::place(qint64 endAt)
{
    if (m_size > kMostDirectory)
        return QStringLiteral("its directory has more than %1 MiB").arg(kMostDirectory >> 20);
    if (m_size < 0 || m_offset < 0 || m_size > endAt || m_offset > endAt - m_size)
        return damaged();
    m_begin = endAt - m_size;
    if (m_size > 0 && bytesAt(m_begin, 4) != "PK\1\2")
        m_begin = m_offset;
    m_before = m_begin - m_offset;
    return QString();
}

/// Whether there are so many bytes more of the directory, which then are in the part that is held.
bool ZipDirectory::have(int size)
{
    constexpr qint64 kPart = 1 << 18;
    if (m_part.size() - m_at >= size)
        return true;
    const qint64 left = m_begin + m_size - m_partEnd;
    m_part = m_part.mid(m_at);
    m_at = 0;
    const QByteArray more = bytesAt(m_partEnd, std::min(left, std::max<qint64>(size, kPart)));
    m_partEnd += more.size();
    m_part += more;
    return m_part.size() >= size;
}

QString ZipDirectory::readEntries(QVector<ZipEntry>& entries, int most)
{
    const int before = entries.size();
    m_part.clear();
    m_at = 0;
    m_partEnd = m_begin;
    m_count = 0;
    while (have(4) && m_part.mid(m_at, 4) == "PK\1\2") {
        if (++m_count > static_cast<quint64>(most))
            return QStringLiteral("it has more than %1 entries").arg(most);
        QString problem = readEntry(entries);
        if (!problem.isEmpty())
            return problem;
    }
    if (!isWhole())
        return damaged();
    return liesApart(before == 0 ? entries : entries.mid(before), m_begin)
               ? QString()
               : QStringLiteral("its contents lie one over the other, or beyond its end");
}

/// Whether there were as many entries as told, and nothing is left but a signature.
bool ZipDirectory::isWhole() const
{
    constexpr quint64 kOfFirstForm = 0x10000;  // which more entries are counted modulo
    const bool isSigned = m_part.mid(m_at, 4) == "PK\5\5";
    const bool isAtEnd = m_at == m_part.size() && m_partEnd == m_begin + m_size;
    const bool isCounted = m_isWide ? m_count == m_told : m_count % kOfFirstForm == m_told;
    return isCounted && (isAtEnd || isSigned);
}

/// Of a header of the directory (APPNOTE 4.3.12).
QString ZipDirectory::readEntry(QVector<ZipEntry>& entries)
{
    constexpr int kFixed = 46;
    constexpr quint16 kIsEncrypted = 1;
    if (!have(kFixed))
        return damaged();
    const QByteArray fixed = m_part.mid(m_at, kFixed);
    const int nameSize = fieldOf<quint16>(fixed, 28);
    const int fieldsSize = fieldOf<quint16>(fixed, 30);
    const int size = kFixed + nameSize + fieldsSize + fieldOf<quint16>(fixed, 32);
    if (!have(size))
        return damaged();
    const QByteArray name = m_part.mid(m_at + kFixed, nameSize);
    const QByteArray fields = m_part.mid(m_at + kFixed + nameSize, fieldsSize);
    m_at += size;

    const auto flags = fieldOf<quint16>(fixed, 8);
    ZipEntry entry;
    entry.name = decodedEntryName(name, fields);
    entry.hasBackslash = name.contains('\\');
    entry.method = fieldOf<quint16>(fixed, 10);
    entry.crc = fieldOf<quint32>(fixed, 16);
    entry.compressedSize = fieldOf<quint32>(fixed, 20);
    entry.size = fieldOf<quint32>(fixed, 24);
    entry.at = fieldOf<quint32>(fixed, 42);
    const auto madeBy = fieldOf<quint16>(fixed, 4);
    const auto attributes = fieldOf<quint32>(fixed, 38);
    if (isDosFolder(madeBy, attributes) && entry.size == 0 && !entry.name.isEmpty()
        && !entry.name.endsWith(QLatin1Char('/')))
        entry.name += QLatin1Char('/');
    entry.isFolder = entry.name.endsWith(QLatin1Char('/'));
    entry.isEncrypted = (flags & kIsEncrypted) != 0;
    entry.isLink = isLink(madeBy, attributes);
    entry.dosTime = fieldOf<quint32>(fixed, 12);
    entry.modified = timeOfFields(fields, entry.dosTime);
    if (!entry.modified.isValid())
        entry.modified = timeOfDos(entry.dosTime);
    const auto disk = fieldOf<quint16>(fixed, 34);
    if (disk != 0 && disk != kWide16)
        return severalDisks();
    if (!widen(fields, entry.size, entry.compressedSize, entry.at)
        || entry.at > m_begin - m_before - kHeaderSize)
        return damaged();
    entry.at += m_before;
    // "./" names the folder to extract into.
    if (!entry.name.isEmpty() || entry.size > 0 || entry.crc != 0)
        entries.append(entry);
    return QString();
}

}  // namespace velm::detail
