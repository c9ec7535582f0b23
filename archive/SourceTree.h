#pragma once

#include <QDateTime>
#include <QFileInfo>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

namespace velm::detail {

/// What goes into an archive.
struct Source
{
    QString path;  // of the file or folder
    QString name;  // in the archive
    QDateTime modified;
    qint64 size = 0;
    bool isFolder = false;
};

/// Finds the files and folders that paths stand for. A folder comes before what is in it, and that
/// in the order of the names.
class SourceTree
{
public:
    /// Leaves out the file @p except: the archive that is made.
    explicit SourceTree(const QString& except);

    /// Adds a file, or a folder with all that is in it. @return what is wrong; empty if nothing is
    QString add(const QString& path);

    const QVector<Source>& sources() const { return m_sources; }
    /// All bytes of all files.
    qint64 size() const { return m_size; }
    /// Links to folders, and what is neither file nor folder.
    const QStringList& leftOut() const { return m_leftOut; }

private:
    QString addEntry(const QFileInfo& entry, const QString& name);
    QString addFolders();

    QFileInfo m_except;
    QVector<Source> m_sources;
    QVector<Source> m_open;  // folders that are still to be looked into, the next one last
    QSet<QString> m_names;
    QStringList m_leftOut;
    qint64 m_size = 0;
};

}  // namespace velm::detail
