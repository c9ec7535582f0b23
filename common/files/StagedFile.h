#pragma once

#include "common/files/AtomicFile.h"
#include "common/files/StagingFolder.h"

#include <QFile>
#include <QString>

#include <memory>

namespace velm::detail {

/// Content on its way into a file. It is written under another name and takes its place whole with
/// commit(): until then, and if the process is killed, the file holds what it held; what is left
/// then goes with the next one in that folder. A link is followed and stays a link.
/// In a folder that takes no new file, and for what is no ordinary file, the content is gathered in
/// the folder of temporary files and copied into its place, and a failure while it is copied is one
/// that leaves half.
/// Not guarded: one thread at a time.
class StagedFile
{
public:
    explicit StagedFile(const QString& target);
    /// Removes what was not committed.
    ~StagedFile();
    Q_DISABLE_COPY(StagedFile)

    /// Makes the file to write into. @return why it cannot be made; empty if nothing is wrong
    QString open();
    /// Appends bytes. @return what went wrong; empty if nothing did
    QString write(const char* bytes, qint64 size);
    /// Puts the content into its place. With Replace::No, whatever has come there until the last
    /// moment stays, and isTaken(). @return what went wrong; empty if nothing did
    QString commit(Replace replace = Replace::Yes);

    /// Whether commit() with Replace::No found something there.
    bool isTaken() const { return m_isTaken; }

    /// Where the content is written; open between open() and commit().
    QFile& file() { return m_file; }

private:
    bool makeIn(const QString& folder);
    QString copyIntoPlace();

    QString m_target;
    std::unique_ptr<StagingFolder> m_staging;
    QFile m_file;
    bool m_isBeside = false;
    bool m_isTaken = false;
};

}  // namespace velm::detail
