#include "archive/StagedTree.h"

#include "archive/CompressSettings.h"
#include "common/platform/SystemError.h"

#include <utility>

namespace velm::detail {

namespace {

QString failed(const QString& what, int error)
{
    return what + QStringLiteral(": ") + platform::errorText(error);
}

QString notMoved(const platform::FolderHandle& to, const QString& name, int error)
{
    const QString problem = platform::isTaken(error)
                                ? QStringLiteral("is there already")
                                : failed(QStringLiteral("cannot be put into its place"), error);
    return aboutEntry(to.path(name), problem);
}

}  // namespace

QString StagedTree::open(const QString& folder)
{
    Level top;
    const int error = top.handle.open(folder);
    if (error != 0)
        return aboutEntry(folder, failed(QStringLiteral("cannot be opened"), error));
    m_nodes.assign(1, Node());
    m_open.clear();
    m_open.push_back(std::move(top));
    return QString();
}

QString StagedTree::addFolder(const QString& name, const QDateTime& modified)
{
    QString problem = enter(name.endsWith(QLatin1Char('/')) ? name : name + QLatin1Char('/'));
    if (problem.isEmpty())
        m_nodes[static_cast<size_t>(m_open.back().node)].modified = modified;
    return problem;
}

QString StagedTree::addFile(const QString& name, platform::NewFile& file)
{
    const int end = name.lastIndexOf(QLatin1Char('/')) + 1;
    QString problem = enter(name.left(end));
    if (!problem.isEmpty())
        return problem;
    const QString own = name.mid(end);
    const int error = file.make(m_open.back().handle, own);
    if (error != 0)
        return failed(QStringLiteral("it cannot be made"), error);
    addNode(own, false);
    return QString();
}

/// Goes into the folder of a path, which is empty or ends with "/".
QString StagedTree::enter(const QString& path)
{
    while (!path.startsWith(m_open.back().path))
        m_open.pop_back();
    for (int at = m_open.back().path.size(); at < path.size();) {
        const int end = path.indexOf(QLatin1Char('/'), at) + 1;
        QString problem = enterChild(path.left(end), path.mid(at, end - at - 1));
        if (!problem.isEmpty())
            return problem;
        at = end;
    }
    return QString();
}

QString StagedTree::enterChild(const QString& path, const QString& name)
{
    const platform::FolderHandle& parent = m_open.back().handle;
    Level level;
    level.path = path;
    level.node = m_folders.value(path, -1);
    int error = level.node < 0 ? parent.makeFolder(name) : 0;
    if (error == 0)
        error = level.handle.open(parent, name);
    if (error != 0)
        return failed(QStringLiteral("its folder cannot be made"), error);
    if (level.node < 0)
        level.node = m_folders[path] = addNode(name, true);
    m_open.push_back(std::move(level));
    return QString();
}

/// Adds something to the folder that was entered last.
int StagedTree::addNode(const QString& name, bool isFolder)
{
    const auto node = static_cast<int>(m_nodes.size());
    m_nodes.push_back({name, isFolder, QDateTime(), {}});
    m_nodes[static_cast<size_t>(m_open.back().node)].children.append(node);
    return node;
}

QString StagedTree::moveInto(const platform::FolderHandle& folder, bool replaces)
{
    m_replaces = replaces;
    m_open.erase(m_open.begin() + 1,
                 m_open.end());  // on Windows a folder that is held cannot be moved
    const platform::FolderHandle& from = m_open.front().handle;
    QString problem = setTimes(0, from);
    return problem.isEmpty() ? moveChildren(0, from, folder) : problem;
}

/// Gives the folders within one their times, when nothing more is made in them.
QString StagedTree::setTimes(int node, const platform::FolderHandle& folder) const
{
    for (const int child : m_nodes[static_cast<size_t>(node)].children) {
        const Node& entry = m_nodes[static_cast<size_t>(child)];
        if (!entry.isFolder)
            continue;
        platform::FolderHandle inside;
        const int error = inside.open(folder, entry.name);
        if (error != 0)
            return aboutEntry(inside.path(), failed(QStringLiteral("cannot be opened"), error));
        QString problem = setTimes(child, inside);
        if (!problem.isEmpty())
            return problem;
        inside.close();
        if (entry.modified.isValid())
            folder.setFolderTime(entry.name, entry.modified);
    }
    return QString();
}

QString StagedTree::moveChildren(int node, const platform::FolderHandle& from,
                                 const platform::FolderHandle& to) const
{
    for (const int child : m_nodes[static_cast<size_t>(node)].children) {
        const Node& entry = m_nodes[static_cast<size_t>(child)];
        if (entry.isFolder) {
            QString problem = moveFolder(child, from, to);
            if (!problem.isEmpty())
                return problem;
            continue;
        }
        const int error = from.moveFile(entry.name, to, m_replaces);
        if (error != 0)
            return notMoved(to, entry.name, error);
    }
    return QString();
}

/// Moves a folder, or what is in it, if the other place has one of its name.
QString StagedTree::moveFolder(int node, const platform::FolderHandle& from,
                               const platform::FolderHandle& to) const
{
    const QString& name = m_nodes[static_cast<size_t>(node)].name;
    int error = from.moveFolder(name, to);
    if (error == 0)
        return QString();
    if (!platform::isTaken(error))
        return notMoved(to, name, error);
    platform::FolderHandle source;
    platform::FolderHandle target;
    error = target.open(to, name);
    if (platform::isNoFolder(error))
        return aboutEntry(to.path(name),
                          QStringLiteral("a file or a link is in the place of this folder"));
    if (error == 0)
        error = source.open(from, name);
    return error == 0 ? moveChildren(node, source, target) : notMoved(to, name, error);
}

}  // namespace velm::detail
