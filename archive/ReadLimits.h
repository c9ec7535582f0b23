#pragma once

#include "archive/CompressSettings.h"
#include "archive/ZipReader.h"

namespace velm::detail {

/// Keeps what is taken out of an archive within the bounds: what it claims, and what there is.
class ReadLimits
{
public:
    explicit ReadLimits(const CompressSettings& settings) : m_settings(settings) {}

    // What is wrong is answered; nothing if nothing is.

    /// By what the archive claims of an entry.
    QString admit(const ZipEntry& entry);
    /// By @p bytes more of the content of an entry, told to the progress, too.
    QString take(const ZipEntry& entry, qint64 bytes);

private:
    QString tooMuch() const;
    QString tooLarge() const;
    bool isTooLarge(qint64 size, qint64 compressedSize) const;

    const CompressSettings& m_settings;
    qint64 m_claimed = 0;
    qint64 m_compressed = 0;  // of what is claimed
    qint64 m_taken = 0;
    qint64 m_takenOfEntry = 0;
    qint64 m_entryAt = -1;
};

}  // namespace velm::detail
