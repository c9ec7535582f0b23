#include "common/files/FolderWalk.h"

#include <QDir>
#include <QDirIterator>

#include <algorithm>
#include <utility>
#include <vector>

namespace velm::detail {

bool isFolder(const QFileInfo& entry)
{
    return entry.isDir() && !entry.isShortcut();
}

bool isFile(const QFileInfo& entry)
{
    return entry.isFile() || entry.isShortcut();
}

FolderWalk::FolderWalk(bool recursive, int mostEntries)
    : m_recursive(recursive), m_entriesLeft(mostEntries)
{}

bool FolderWalk::walk(const QString& folder, const Visit& visit)
{
    m_levels.clear();
    if (!folder.isEmpty())
        enter(QFileInfo(folder));
    while (!m_levels.isEmpty()) {
        Level& level = m_levels.last();
        if (level.next == level.entries.size()) {
            m_levels.removeLast();
            continue;
        }
        const QFileInfo entry = level.entries.at(level.next++);
        if (visit(entry))
            return true;
        if (m_recursive && isFolder(entry))
            enter(entry);
    }
    return false;
}

void FolderWalk::enter(const QFileInfo& folder)
{
    int links = 0;  // the folder where a walk begins may be one
    if (!m_levels.isEmpty())
        links = m_levels.last().links + (folder.isSymLink() || folder.isJunction() ? 1 : 0);
    const QString canonical = folder.canonicalFilePath();
    if (mayEnter(canonical, links))
        m_levels.append({canonical, links, list(folder.absoluteFilePath()), 0});
}

bool FolderWalk::mayEnter(const QString& canonical, int links)
{
    const bool inside =
        std::any_of(m_levels.cbegin(), m_levels.cend(),
                    [&canonical](const Level& level) { return level.canonical == canonical; });
    if (canonical.isEmpty() || inside || links > kMostLinks)
        return false;
    return links == 0 || ++m_linkVisits[canonical] <= kMostVisits;
}

QFileInfoList FolderWalk::list(const QString& folder)
{
    std::vector<std::pair<QString, QFileInfo>> sorted;
    QDirIterator entries(folder, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot);
    for (; m_entriesLeft > 0 && entries.hasNext(); --m_entriesLeft) {
        entries.next();
        sorted.emplace_back(entries.fileName().toLower(), entries.fileInfo());
    }
    std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second.fileName() < b.second.fileName();
    });
    QFileInfoList list;
    for (const auto& entry : sorted)
        list.append(entry.second);
    return list;
}

}  // namespace velm::detail
