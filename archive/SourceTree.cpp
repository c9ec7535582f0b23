#include "archive/SourceTree.h"

#include "archive/EntryName.h"
#include "archive/ZipEntry.h"
#include "common/files/StagingFolder.h"
#include "common/platform/FileSystem.h"
#include "common/platform/SystemError.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace velm::detail {

using platform::EntryKind;

namespace {

bool isLink(EntryKind kind)
{
    return kind == EntryKind::FileLink || kind == EntryKind::FolderLink;
}

/// Why what was named cannot go into an archive.
QString unfit(const platform::EntryState& found)
{
    if (found.kind == EntryKind::Missing)
        return QStringLiteral("there is no such file");
    if (found.kind == EntryKind::DeadLink)
        return QStringLiteral("is a link that leads nowhere");
    if (found.kind == EntryKind::Other)
        return QStringLiteral("is neither a file nor a folder");
    return found.kind == EntryKind::Unknown ? platform::errorText(found.error) : QString();
}

}  // namespace

SourceTree::SourceTree(const QString& except, const CompressSettings& settings)
    : m_settings(settings),
      m_exceptName(QFileInfo(QFileInfo(except).canonicalFilePath()).fileName()),
      m_except(platform::fileIdentity(except))
{}

QString SourceTree::add(const QString& path)
{
    if (path.isEmpty())
        return QStringLiteral("an empty name is given to be compressed");
    // The name of what a link leads to may be another; "." has one only as a whole path.
    const QFileInfo entry(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    platform::EntryState found = platform::lookAt(entry.filePath());
    const QString problem = unfit(found);
    if (!problem.isEmpty())
        return aboutEntry(path, problem);
    if (entry.fileName().isEmpty())
        return aboutEntry(path, QStringLiteral("has no name of its own"));
    if (isExcept(entry.filePath(), found.kind))
        return aboutEntry(path, QStringLiteral("is the archive that is to be made"));
    if (found.kind == EntryKind::FolderLink)
        found.kind = EntryKind::Folder;
    QString unfound = addFound(entry.filePath(), entry.fileName(), found);
    return unfound.isEmpty() ? addFolders() : unfound;
}

QString SourceTree::addFolders()
{
    while (!m_open.isEmpty()) {
        const Source folder = m_open.takeLast();
        const int before = m_open.size();
        QStringList names;
        QString problem = listFolder(folder, names);
        for (int i = 0; i < names.size() && problem.isEmpty(); ++i)
            problem =
                addEntry(folder.path + QLatin1Char('/') + names.at(i), folder.name + names.at(i));
        if (!problem.isEmpty())
            return problem;
        std::reverse(m_open.begin() + before, m_open.end());
    }
    return QString();
}

/// The names in a folder, in their order.
QString SourceTree::listFolder(const Source& folder, QStringList& names) const
{
    platform::FolderNames content;
    const int error = platform::listFolder(folder.path, content);
    if (error != 0)
        return aboutEntry(folder.path,
                          QStringLiteral("cannot be listed: ") + platform::errorText(error));
    if (!content.unreadable.isEmpty())
        return aboutEntry(folder.path + QLatin1Char('/') + content.unreadable.first(),
                          QStringLiteral("its name is no text in the encoding of this system"));
    names = content.names;
    names.erase(std::remove_if(names.begin(), names.end(), &StagingFolder::isStagingName),
                names.end());
    names.sort();
    return QString();
}

QString SourceTree::addEntry(const QString& path, const QString& name)
{
    const platform::EntryState found = platform::lookAt(path);
    if (found.kind == EntryKind::Missing)  // removed since the folder was listed
        return QString();
    if (found.kind == EntryKind::Unknown)
        return aboutEntry(path, unfit(found));
    if (isExcept(path, found.kind))
        return QString();
    if (found.kind == EntryKind::File || found.kind == EntryKind::Folder
        || found.kind == EntryKind::FileLink)
        return addFound(path, name, found);
    m_leftOut.append(path);
    return QString();
}

QString SourceTree::addFound(const QString& path, const QString& name,
                             const platform::EntryState& found)
{
    if (m_settings.progress && !m_settings.progress(name, 0, m_size))
        return QStringLiteral("cancelled");
    QString problem = nameProblem(path, name);
    if (!problem.isEmpty())
        return problem;
    const bool isFolder = found.kind == EntryKind::Folder;
    const Source source{path, isFolder ? name + QLatin1Char('/') : name, found.modified,
                        isFolder ? 0 : found.size, isFolder};
    m_size += source.size;
    m_sources.append(source);
    if (isFolder)
        m_open.append(source);
    return QString();
}

/// Looks whether a name can be that of an entry, and takes it.
QString SourceTree::nameProblem(const QString& path, const QString& name)
{
    const QString problem = entryNameProblem(name);
    if (!problem.isEmpty())
        return aboutEntry(path, QStringLiteral("its name ") + problem);
    const QString key = entryNameKey(name);
    if (m_names.contains(key))
        return aboutEntry(path, QStringLiteral("another file has this name, at least on Windows"));
    m_names.insert(key);
    return m_names.size() > kMostArchiveEntries
               ? QStringLiteral("there are more than %1 files").arg(kMostArchiveEntries)
               : QString();
}

bool SourceTree::isExcept(const QString& path, EntryKind kind) const
{
    if (m_except.isEmpty() || kind == EntryKind::Folder)
        return false;
    const QString name = QFileInfo(path).fileName();
    const bool mayBe = isLink(kind) || name.compare(m_exceptName, Qt::CaseInsensitive) == 0;
    return mayBe && platform::fileIdentity(path) == m_except;
}

}  // namespace velm::detail
