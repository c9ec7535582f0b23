#pragma once

#include "VelmCommonGlobal.h"

#include <QString>
#include <QStringList>

namespace velm::detail {

/// Where the system's files lie: its root, the configuration below it, and the folders in which
/// files are looked for. Paths have "/" throughout. What changes it belongs to the host's main
/// thread.
class SearchPaths
{
public:
    static SearchPaths& instance();

    /// The folder that setRoot() or, without it, the environment variable VELM_ROOT names, if it
    /// exists, else the folder of this library. Read anew on every call.
    QString root() const;
    /// An empty folder leaves the root to VELM_ROOT. False, and nothing changes, if another one is
    /// no folder.
    bool setRoot(const QString& folder);

    QString configFolder() const;
    /// The configuration databases, whether or not they exist.
    QString systemDatabase() const;
    QString pipeDatabase() const;

    /// The folders of the host in the order of adding, then the configuration folder, then the
    /// root; each once.
    QStringList folders() const;
    /// Adds a folder behind those added before. False if it is none.
    bool add(const QString& folder);
    /// Adds the folder of a module, given by the path of its file, or the one @p level steps above
    /// it. False if the path is empty or the folder has not that many parents.
    bool addModuleFolder(const QString& modulePath, unsigned short level);

private:
    SearchPaths() = default;
    Q_DISABLE_COPY(SearchPaths)

    QString m_root;           // absolute; empty while VELM_ROOT has the say
    QStringList m_hostPaths;  // canonical, in the order of adding
};

}  // namespace velm::detail
