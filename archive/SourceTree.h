#pragma once

#include "archive/CompressSettings.h"
#include "common/platform/FolderContent.h"

#include <QDateTime>
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
/// in the order of the names. A folder that cannot be listed to its end is a failure, and so is a
/// name that is none everywhere. Staging folders are none of the user's files.
class SourceTree
{
public:
    /// Leaves out the file @p except: the archive that is made, under whatever name it is found.
    SourceTree(const QString& except, const CompressSettings& settings);

    /// Adds a file, or a folder with all that is in it. @return what is wrong; empty if nothing is
    QString add(const QString& path);

    const QVector<Source>& sources() const { return m_sources; }
    /// All bytes of all files.
    qint64 size() const { return m_size; }
    /// Links to folders, links that lead nowhere, and what is neither file nor folder.
    const QStringList& leftOut() const { return m_leftOut; }

private:
    QString addEntry(const QString& path, const QString& name);
    QString addFound(const QString& path, const QString& name, const platform::EntryState& found);
    QString addFolders();
    QString listFolder(const Source& folder, QStringList& names) const;
    QString nameProblem(const QString& path, const QString& name);
    bool isExcept(const QString& path, platform::EntryKind kind) const;

    const CompressSettings& m_settings;
    QString m_exceptName;
    QByteArray m_except;  // its identity; empty if it is not there
    QVector<Source> m_sources;
    QVector<Source> m_open;  // folders that are still to be looked into, the next one last
    QSet<QString> m_names;
    QStringList m_leftOut;
    qint64 m_size = 0;
};

}  // namespace velm::detail
