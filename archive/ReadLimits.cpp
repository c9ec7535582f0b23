#include "archive/ReadLimits.h"

namespace velm::detail {

QString ReadLimits::admit(const ZipEntry& entry)
{
    QString problem = ratioProblem(entry, entry.size);
    if (!problem.isEmpty())
        return problem;
    if (entry.size > m_settings.mostBytes - m_claimed)
        return tooMuch();
    m_claimed += entry.size;
    return QString();
}

QString ReadLimits::take(const ZipEntry& entry, qint64 bytes)
{
    const bool isSame = entry.place.num_of_file == m_entry.num_of_file
                        && entry.place.pos_in_zip_directory == m_entry.pos_in_zip_directory;
    m_entry = entry.place;
    m_takenOfEntry = (isSame ? m_takenOfEntry : 0) + bytes;
    m_taken += bytes;
    QString problem = ratioProblem(entry, m_takenOfEntry);
    if (!problem.isEmpty())
        return problem;
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

QString ReadLimits::ratioProblem(const ZipEntry& entry, qint64 size) const
{
    constexpr qint64 kAlwaysFine = 1 << 20;
    if (size <= kAlwaysFine || size / m_settings.mostRatio <= entry.compressedSize)
        return QString();
    return QStringLiteral("it is more than %1 times as large as in the archive, which honest data "
                          "hardly are")
        .arg(m_settings.mostRatio);
}

}  // namespace velm::detail
