#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QString>
#include <QStringList>

class CVelmConfigManager;

/// Where the configuration lives: root, databases, search paths, version.
/// Instance() may be called from any thread; the rest belongs to the host's main thread.
class VELMCOMMON_EXPORT CVelmSystemGlobal
{
public:
    static CVelmSystemGlobal* Instance();
    virtual ~CVelmSystemGlobal();

    /// "peltaconfig.db" and "PipeConfig.db" in the folder "config" of the root. Answered whether or
    /// not they exist.
    QString getSystemConfigDb();
    QString getPipeConfigDb();

    /// The folder that the environment variable VELM_ROOT names, if it exists, else the folder of
    /// this library. Read anew on every call. With "/" throughout and none at the end.
    QString getSystemRootRoute();
    /// The name of the profile in use: the name of the root folder.
    QString getProfileName();

    /// The folders in which configuration files are looked for, the first one leading: those that
    /// the host added, in the order of adding, then the configuration folder, then the root.
    QStringList getSearchPaths();
    /// Adds a folder behind those added before; one that is there already keeps its place.
    /// @return false if @p path is no folder
    bool addSearchPath(const QString& path);
    /// Adds the folder of a loaded module (by file name, with or without its folder), or the folder
    /// @p level steps above it. False if no such module is loaded or the folder has not that many
    /// parents.
    bool addSearchPathByDllName(const QString& dllName, unsigned short level);
    /// The same for a module handle (natively one of dlopen()); null is the running program.
    bool addSearchPathByHandle(HINSTANCE module, unsigned short level);

    /// Whether the running program is the CAD host "cad.exe".
    bool isCadSystem() const;
    /// VersionDatabase, unless the host switched the configuration manager to another one.
    Velm::Version getVersion();

private:
    friend class CVelmConfigManager;

    CVelmSystemGlobal();
    Q_DISABLE_COPY(CVelmSystemGlobal)

    bool addModuleFolder(const QString& modulePath, unsigned short level);

    QStringList m_hostPaths;  // canonical, in the order of adding
    Velm::Version m_version = Velm::VersionDatabase;
};
