#pragma once

#include <QFileInfo>
#include <QHash>
#include <QString>
#include <QVector>

#include <functional>
#include <limits>

namespace velm::detail {

/// A folder that can be entered: a Windows shortcut to one is a file.
bool isFolder(const QFileInfo& entry);
/// A file, or a Windows shortcut, whatever it leads to.
bool isFile(const QFileInfo& entry);

/// Walks folders in name order whatever the letter case, entering a folder where it is met. Hidden
/// entries are left out.
///
/// A folder that a link leads to is walked like any other, unless the walk is inside it already.
/// So that links cannot make a walk endless, they lead at most kMostLinks deep into each other and
/// at most kMostVisits times into any one folder. Its own place in the tree does not count:
/// whatever links do, every folder is walked there.
class FolderWalk
{
public:
    static constexpr int kMostLinks = 8;
    static constexpr int kMostVisits = 16;

    /// Gets one entry; true ends the walk.
    using Visit = std::function<bool(const QFileInfo& entry)>;

    /// @p mostEntries is how many entries are looked at in all walks of this object. A folder with
    /// more than are left is walked over as many of them as are left, in no certain choice.
    explicit FolderWalk(bool recursive, int mostEntries = std::numeric_limits<int>::max());

    /// True if a visit ended the walk. A missing folder has no entries.
    bool walk(const QString& folder, const Visit& visit);

private:
    struct Level
    {
        QString canonical;
        int links;  // that led here, one behind the other
        QFileInfoList entries;
        int next;
    };

    void enter(const QFileInfo& folder);
    bool mayEnter(const QString& canonical, int links);
    QFileInfoList list(const QString& folder);

    bool m_recursive;
    int m_entriesLeft;
    QVector<Level> m_levels;           // the folders the walk is inside of, the outermost first
    QHash<QString, int> m_linkVisits;  // by canonical path
};

}  // namespace velm::detail
