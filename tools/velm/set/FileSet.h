#pragma once

#include "set/OldDatabase.h"

#include "common/files/AtomicFile.h"
#include "common/files/FileLock.h"
#include "common/files/StagingFolder.h"

#include <QStringList>

#include <memory>
#include <vector>

/// A set of files that appears in a folder as a whole or not at all: each is made in a staging
/// folder first, and commit() then gives them their places. A folder that does not exist appears
/// with all of them in one step; in one that exists each file is replaced in one step, so whenever
/// the process ends, each of them is the old one or the new one. Whatever was not committed is gone
/// with the object, and so are folders made for it. What a run that was killed left behind goes
/// with the next one.
class FileSet
{
public:
    /// @p folder is where the files go; it need not exist.
    explicit FileSet(const QString& folder);
    ~FileSet();
    FileSet(const FileSet&) = delete;
    FileSet& operator=(const FileSet&) = delete;

    /// Makes the staging folder. False if that cannot be done; then @p problem says why.
    bool prepare(QString& problem);

    /// Where to make the file that shall become @p name.
    QString stage(const QString& name);

    /// The same for a SQLite database. What lies beside an older one of that name goes with it.
    QString stageDatabase(const QString& name);

    /// Keeps other runs from writing into the folder until the object goes; called when all files
    /// are made. False after some time if another run goes on; then @p problem says so.
    bool lock(QString& problem);

    /// Those of the files named so far that exist in the folder, what lies beside databases
    /// included.
    QStringList existing() const;

    /// Gives all files their places, after lock(). Links, folders and devices are not replaced,
    /// nor is a database that another program uses. If one cannot be replaced, all is put back as
    /// it was and @p problem names that file and says why.
    bool commit(QString& problem);

private:
    bool makeFolders(const QString& folder);
    QString target(const QString& name) const;
    QString staged(const QString& name) const;
    QString spare(const QString& name) const;

    bool commitFolder(QString& problem);
    bool commitFiles(QString& problem);
    bool mayReplace(QString& problem);
    bool moveSideFiles(QString& problem);
    bool moveFiles(QString& problem);
    void putBack(QString& problem);

    QString m_folder;
    bool m_isNew = false;  // the folder does not exist; settled by lock()
    bool m_committed = false;
    QStringList m_madeFolders;  // in the order of making
    std::unique_ptr<velm::detail::StagingFolder> m_staging;
    std::unique_ptr<velm::detail::FileLock> m_lock;
    QStringList m_files;      // names of what is made
    QStringList m_databases;  // those of them that are databases
    QStringList m_sideFiles;  // names of what must not stay beside those
    std::vector<std::unique_ptr<OldDatabase>> m_oldDatabases;
    QStringList m_movedAway;  // side files
    std::vector<velm::detail::AtomicFile> m_replaced;
};
