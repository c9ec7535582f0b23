#include "archive/ChosenNames.h"

#include "archive/EntryName.h"
#include "common/platform/FolderContent.h"
#include "common/platform/SystemError.h"

namespace velm::detail {

using platform::EntryKind;

ChosenNames::ChosenNames(const QString& folder, bool overwrites)
    : m_folder(folder), m_overwrites(overwrites)
{
    Node top;
    top.isThere = platform::lookAt(folder).kind != EntryKind::Missing;
    m_nodes.push_back(top);
}

int ChosenNames::node(int folder, const QString& own) const
{
    return m_known.value({folder, entryNameKey(own)}, -1);
}

int ChosenNames::addNode(int folder, const Node& made)
{
    const auto node = static_cast<int>(m_nodes.size());
    m_nodes.push_back(made);
    m_known.insert({folder, entryNameKey(made.spelling)}, node);
    return node;
}

QString ChosenNames::add(const QString& name)
{
    const int begin = name.lastIndexOf(QLatin1Char('/')) + 1;
    int folder = 0;
    QString problem = addFolders(name.left(begin), folder);
    return problem.isEmpty() && begin < name.size() ? addFile(name, begin, folder) : problem;
}

/// Of a path that is empty or ends with "/".
QString ChosenNames::addFolders(const QString& path, int& folder)
{
    if (path == m_lastPath) {
        folder = m_last;
        return QString();
    }
    int begin = 0;
    for (int end = path.indexOf(QLatin1Char('/')); end >= 0;
         begin = end + 1, end = path.indexOf(QLatin1Char('/'), begin)) {
        QString problem = addFolder(path, begin, end, folder);
        if (!problem.isEmpty())
            return problem;
    }
    m_lastPath = path;
    m_last = folder;
    return QString();
}

/// Goes from a folder into the one whose name stands from @p begin to @p end.
QString ChosenNames::addFolder(const QString& path, int begin, int end, int& folder)
{
    Node made;
    made.spelling = path.mid(begin, end - begin);
    const int known = node(folder, made.spelling);
    if (known >= 0) {
        const Node& other = m_nodes[static_cast<size_t>(known)];
        folder = known;
        if (other.isFile)
            return QStringLiteral("a file of the archive has the name of its folder");
        return other.spelling == made.spelling
                   ? QString()
                   : QStringLiteral("another entry spells its folder \"%1\"").arg(other.spelling);
    }
    if (m_nodes[static_cast<size_t>(folder)].isThere) {
        const QString name = path.left(end);
        const platform::EntryState place = platform::lookAt(m_folder + QLatin1Char('/') + name);
        if (place.kind == EntryKind::Unknown)
            return QStringLiteral("its folder \"%1\" cannot be looked at: ").arg(name)
                   + platform::errorText(place.error);
        made.isThere = place.kind == EntryKind::Folder;
        if (!made.isThere && place.kind != EntryKind::Missing)
            return QStringLiteral("a link or a file is in the place of its folder \"%1\"")
                .arg(name);
    }
    folder = addNode(folder, made);
    return QString();
}

QString ChosenNames::addFile(const QString& name, int begin, int folder)
{
    Node made;
    made.spelling = name.mid(begin);
    made.isFile = true;
    if (node(folder, made.spelling) >= 0)
        return QStringLiteral("another entry has this name, at least on Windows");
    addNode(folder, made);
    if (!m_nodes[static_cast<size_t>(folder)].isThere)
        return QString();
    const platform::EntryState place = platform::lookAt(m_folder + QLatin1Char('/') + name);
    if (place.kind == EntryKind::Folder)
        return QStringLiteral("a folder is in its place");
    if (place.kind == EntryKind::Unknown)
        return QStringLiteral("its place cannot be looked at: ") + platform::errorText(place.error);
    return place.kind == EntryKind::Missing || m_overwrites ? QString()
                                                            : QStringLiteral("is there already");
}

}  // namespace velm::detail
