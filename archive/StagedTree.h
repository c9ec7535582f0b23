#pragma once

#include "common/platform/FolderHandle.h"
#include "common/platform/NewFile.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <vector>

namespace velm::detail {

/// The files and folders that are made apart, and their way into their places. Every step is taken
/// in a folder that is held, so that it stays where it is meant to be whatever others do with the
/// names meanwhile. What is moved is what was made here: what is missing then is a failure.
class StagedTree
{
public:
    // What went wrong is answered; nothing if nothing did. Names are relative, with "/" between
    // folders; the spelling of a folder is always the same.

    /// Begins in a folder, which is empty.
    QString open(const QString& folder);
    /// Lets go of the folders.
    void close() { m_open.clear(); }
    /// Makes a folder, with those that lead there. Its time is set when it is finished.
    QString addFolder(const QString& name, const QDateTime& modified);
    /// Makes a file, with the folders that lead there, and opens it.
    QString addFile(const QString& name, platform::NewFile& file);
    /// Moves all into another folder, which may hold folders of the same names. Files that are
    /// there are replaced if that is told. A failure leaves a part moved.
    QString moveInto(const platform::FolderHandle& folder, bool replaces);

private:
    struct Node
    {
        QString name;
        bool isFolder = false;
        QDateTime modified;
        QVector<int> children;
    };
    struct Level
    {
        QString path;  // with "/" at its end, but for the first one
        int node = 0;
        platform::FolderHandle handle;
    };

    QString enter(const QString& path);
    QString enterChild(const QString& path, const QString& name);
    int addNode(const QString& name, bool isFolder);
    QString setTimes(int node, const platform::FolderHandle& folder) const;
    QString moveChildren(int node, const platform::FolderHandle& from,
                         const platform::FolderHandle& to) const;
    QString moveFolder(int node, const platform::FolderHandle& from,
                       const platform::FolderHandle& to) const;

    std::vector<Node> m_nodes;      // the first one is the folder where it begins
    QHash<QString, int> m_folders;  // their nodes, by path
    std::vector<Level> m_open;      // the folder that was entered last, and those around it
    bool m_replaces = false;
};

}  // namespace velm::detail
