#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A set of files that appears in a folder as a whole or not at all: each is made in a staging
/// folder first, and commit() then moves them. Whatever was not committed is gone with the object,
/// and so are folders made for it.
class FileSet
{
public:
    /// @p folder is where the files go; it need not exist.
    explicit FileSet(const QString& folder);
    ~FileSet();
    FileSet(const FileSet&) = delete;
    FileSet& operator=(const FileSet&) = delete;

    /// Makes the folder and the staging folder in it. False if that cannot be done; then
    /// @p problem says why.
    bool prepare(QString& problem);

    /// Where to make the file that shall become @p relative.
    QString stage(const QString& relative);

    /// Lets the file @p relative, if there is one, go when the others come.
    void drop(const QString& relative);

    /// Those of the files named so far that exist in the folder.
    QStringList existing() const;

    /// Moves all staged files to their places, over those that exist; folders, links and
    /// devices are not replaced. If one cannot be moved, all is put back as it was and @p failed is
    /// that file's name.
    bool commit(QString& failed);

private:
    /// Makes @p folder and what leads to it, and remembers what it made.
    bool makeFolders(const QString& folder);
    QString target(const QString& relative) const;
    bool move(const QString& relative);
    void putBack(const QStringList& moved);

    QString m_folder;
    bool m_committed = false;
    QStringList m_madeFolders;  // in the order of making
    std::unique_ptr<QTemporaryDir> m_staging;
    QStringList m_files;  // relative names
};
