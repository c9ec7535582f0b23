#pragma once

#include <QHash>
#include <QPair>
#include <QString>

#include <vector>

namespace velm::detail {

/// The names that an extraction will give, as a tree: each part of a path is held once, however
/// deep it lies. Refuses names that would be one on some system, and places that are taken.
class ChosenNames
{
public:
    /// @p folder is the path of that to extract into.
    ChosenNames(const QString& folder, bool overwrites);

    /// Takes the name of an entry, whose parts were looked at; that of a folder ends with "/".
    /// @return why it cannot be given; empty if it can
    QString add(const QString& name);

private:
    struct Node
    {
        QString spelling;
        bool isFile = false;
        bool isThere = false;  // a folder in which something may be
    };

    QString addFolders(const QString& path, int& folder);
    QString addFolder(const QString& path, int begin, int end, int& folder);
    QString addFile(const QString& name, int begin, int folder);
    int node(int folder, const QString& own) const;
    int addNode(int folder, const Node& made);

    QString m_folder;
    bool m_overwrites;
    std::vector<Node> m_nodes;                // the first one is the folder to extract into
    QHash<QPair<int, QString>, int> m_known;  // by the node of the folder, and the name as a key
    QString m_lastPath;                       // of the folder that was added last
    int m_last = 0;
};

}  // namespace velm::detail
