#pragma once

#include "common/files/AtomicFile.h"
#include "common/files/StagingFolder.h"
#include "common/files/SystemFile.h"

#include <QString>

#include <memory>

namespace velm::detail {

/// Content on its way into a file. It is written under another name, where nobody else may read it,
/// and takes its place whole with commit(): until then, and if the process is killed, the file
/// holds what it held; what is left then goes with the next one in that folder. A link is followed
/// and stays a link. A file whose folder lets no new one be made, and what is no ordinary file, is
/// written itself: the content is gathered in the folder of temporary files and copied into its
/// place. An ordinary file gets its room on the disk first; what fails afterwards leaves it written
/// in part, as is told then. Not guarded: one thread at a time.
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
    /// Lets a new file be read and written by nobody who may not do so with @p file. Without that
    /// it has the usual permissions; one that replaces another takes over those.
    void limitAccessTo(const QString& file) { m_accessOf = file; }
    /// Puts the content into its place. With Replace::No, whatever has come there until the last
    /// moment stays, and isTaken(). @return what went wrong; empty if nothing did
    QString commit(Replace replace = Replace::Yes);

    /// Whether commit() with Replace::No found something there.
    bool isTaken() const { return m_isTaken; }

    /// Where the content is written; open between open() and commit(). Its errorString() is fit to
    /// be told.
    QFile& file() { return m_file; }

private:
    int makeIn(const QString& folder);
    QString moveIntoPlace(Replace replace);
    QString copyIntoPlace();
    QString told(const QString& problem) const;

    QString m_target;
    QString m_accessOf;
    std::unique_ptr<StagingFolder> m_staging;
    SystemFile m_file;
    bool m_isBeside = false;
    bool m_isTaken = false;
};

}  // namespace velm::detail
