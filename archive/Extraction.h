#pragma once

#include "archive/ChosenNames.h"
#include "archive/ReadLimits.h"
#include "archive/StagedTree.h"
#include "common/files/StagingFolder.h"

#include <memory>

namespace velm::detail {

/// Extracts entries into a folder: looks at all of them first, makes the files in a folder of its
/// own within it, and moves them into their places when all are there. They are not waited for
/// until they have reached the disk, as StagedFile does it: for many small files that takes many
/// times longer than to extract them, and the archive is still there.
class Extraction
{
public:
    Extraction(ZipReader& archive, const CompressSettings& settings, const QString& folder);
    /// Removes what was not moved into its place, and the folders made for it.
    ~Extraction();
    Q_DISABLE_COPY(Extraction)

    // What went wrong is answered; nothing if nothing did.

    /// Chooses entries, all if @p names is empty, and looks whether they may be extracted.
    QString choose(const QVector<ZipEntry>& entries, const QStringList& names);
    QString extract();

private:
    QString admit(const ZipEntry& entry);
    QString makeFolder();
    QString makeStaging();
    QString make(const ZipEntry& entry);
    QString makeFile(const ZipEntry& entry);

    ZipReader& m_archive;
    const CompressSettings& m_settings;
    ReadLimits m_limits;
    QString m_folder;
    QVector<ZipEntry> m_chosen;
    ChosenNames m_names;
    QStringList m_madeFolders;  // in the order of making
    bool m_isDone = false;
    platform::FolderHandle m_target;  // that folder
    std::unique_ptr<StagingFolder> m_staging;
    StagedTree m_content;  // what is made there
};

}  // namespace velm::detail
