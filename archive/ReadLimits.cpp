#include "archive/ReadLimits.h"

namespace velm::detail {

QString ReadLimits::admit(const ZipEntry& entry)
{
    if (entry.isFolder && entry.size > 0)
        return QStringLiteral("it is a folder, and has content");
    if (isTooLarge(entry.size, entry.compressedSize))
        return QStringLiteral("it is ") + tooLarge();
    if (entry.size > m_settings.mostBytes - m_claimed)
        return tooMuch();
    m_claimed += entry.size;
    m_compressed += entry.compressedSize;
    // Many entries that are small, each for itself.
    return isTooLarge(m_claimed, m_compressed)
               ? QStringLiteral("with the entries before, it is ") + tooLarge()
               : QString();
}

QString ReadLimits::take(const ZipEntry& entry, qint64 bytes)
{
    m_takenOfEntry = (entry.at == m_entryAt ? m_takenOfEntry : 0) + bytes;
    m_entryAt = entry.at;
    m_taken += bytes;
    if (isTooLarge(m_takenOfEntry, entry.compressedSize))
        return QStringLiteral("it is ") + tooLarge();
    if (m_taken > m_settings.mostBytes)
        return tooMuch();
    if (m_settings.progress && !m_settings.progress(entry.name, m_taken, m_claimed))
        return QStringLiteral("cancelled");
    return QString();
}

QString ReadLimits::tooMuch() const
{
    return QStringLiteral("there are more than %1 bytes, the most that may be taken out")
        .arg(m_settings.mostBytes);
}

bool ReadLimits::isTooLarge(qint64 size, qint64 compressedSize) const
{
    constexpr qint64 kAlwaysFine = 1 << 20;
    return size > kAlwaysFine && size / m_settings.mostRatio > compressedSize;
}

QString ReadLimits::tooLarge() const
{
    return QStringLiteral("more than %1 times as large as in the archive, which honest data hardly "
                          "are")
        .arg(m_settings.mostRatio);
}

}  // namespace velm::detail
