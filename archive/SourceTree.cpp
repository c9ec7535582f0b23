#include "archive/SourceTree.h"

#include "archive/CompressSettings.h"
#include "archive/EntryName.h"
#include "archive/ZipEntry.h"
#include "common/platform/FileSystem.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace velm::detail {

SourceTree::SourceTree(const QString& except) : m_except(except) {}

QString SourceTree::add(const QString& path)
{
    const QFileInfo given(path);
    // The name of what a link leads to may be another; "." has one only as a whole path.
    const QFileInfo entry(QDir::cleanPath(given.absoluteFilePath()));
    if (!entry.exists())
        return aboutEntry(path, QStringLiteral("there is no such file"));
    if (entry.fileName().isEmpty())
        return aboutEntry(path, QStringLiteral("has no name of its own"));
    const int before = m_sources.size();
    QString problem = addEntry(QFileInfo(entry.canonicalFilePath()), entry.fileName());
    if (problem.isEmpty() && m_sources.size() == before && m_open.isEmpty())
        return aboutEntry(path, QStringLiteral("is neither a file nor a folder"));
    return problem.isEmpty() ? addFolders() : problem;
}

QString SourceTree::addFolders()
{
    while (!m_open.isEmpty()) {
        const Source folder = m_open.takeLast();
        const QDir dir(folder.path);
        if (!dir.isReadable())
            return aboutEntry(folder.path, QStringLiteral("cannot be looked into"));
        const int before = m_open.size();
        const QFileInfoList entries = dir.entryInfoList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        for (const QFileInfo& entry : entries) {
            QString problem = addEntry(entry, folder.name + entry.fileName());
            if (!problem.isEmpty())
                return problem;
        }
        std::reverse(m_open.begin() + before, m_open.end());
    }
    return QString();
}

QString SourceTree::addEntry(const QFileInfo& entry, const QString& name)
{
    const bool isFolder = entry.isDir() && !entry.isSymbolicLink();
    if (!isFolder && !entry.isFile()) {
        m_leftOut.append(entry.filePath());
        return QString();
    }
    if (entry.fileName() == m_except.fileName()
        && entry.canonicalFilePath() == m_except.canonicalFilePath())
        return QString();
    const QString problem = entryNameProblem(name);
    if (!problem.isEmpty())
        return aboutEntry(entry.filePath(), QStringLiteral("its name ") + problem);
    const QString key = entryNameKey(name);
    if (m_names.contains(key))
        return aboutEntry(entry.filePath(),
                          QStringLiteral("another file has this name, at least on Windows"));
    m_names.insert(key);
    if (m_names.size() > kMostArchiveEntries)
        return QStringLiteral("there are more than %1 files").arg(kMostArchiveEntries);
    const platform::FileStamp stamp = platform::fileStamp(entry.filePath());
    const Source source{entry.filePath(), isFolder ? name + QLatin1Char('/') : name, stamp.modified,
                        isFolder ? 0 : stamp.size, isFolder};
    m_size += source.size;
    m_sources.append(source);
    if (isFolder)
        m_open.append(source);
    return QString();
}

}  // namespace velm::detail
