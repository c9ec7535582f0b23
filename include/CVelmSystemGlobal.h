#pragma once

#include "VelmCommonGlobal.h"
#include "VelmProcessParam.h"
#include "VelmTypes.h"

#include <QString>
#include <QStringList>

#include <memory>

class CVelmConfigManager;
struct VelmDataFormat;

namespace velm::detail {
class GlobalParamStore;
void saveParametersAtEnd();
}  // namespace velm::detail

/// The library's place in the system: where the configuration lives, the global parameters, and the
/// start and end of the library itself.
/// Instance() and installMessageHandler() may be called from any thread; the rest belongs to the
/// host's main thread.
class VELMCOMMON_EXPORT CVelmSystemGlobal
{
public:
    static CVelmSystemGlobal* Instance();  ///< made by the first call, never null
    virtual ~CVelmSystemGlobal();

    /// The version of the library, "major.minor.patch".
    static QString libraryVersion();

    /// Starts the library in this process, which otherwise happens by itself: on Windows when the
    /// library is loaded, elsewhere with the QCoreApplication. Finds "VelmResource.rcc" and
    /// "adapter_qtinit.dll", installs Qt's Chinese translation and the message handler; what is
    /// missing is shown in a message box. A host that wants none of this under the loader's lock
    /// sets the environment variable VELM_START to "host" before it loads the library. To be called
    /// again when the QCoreApplication is younger than the library, for the translation; what is
    /// done already is not done again.
    /// @return false if "adapter_qtinit.dll" is missing: no translation, no message handler
    static bool startModule();
    /// Ends it: saves what was changed of the global parameters and lets go of both files. A host
    /// that calls this before it unloads the library leaves nothing to be done under the loader's
    /// lock. Without a start before, it saves only.
    static void stopModule();
    /// The file that startModule() takes for that name: on the search paths, else beside the
    /// library; empty if there is none.
    static QString findModuleFile(const QString& name);

    /// Loads g_VelmGlobalParam from the user's copy or, if there is none, from the shipped default
    /// in the table "globaldefines". A member that the text lacks or has with a wrong type gets its
    /// default; the latter are logged.
    /// @return false, and g_VelmGlobalParam stays, if there is no text or it is no JSON object
    bool initGlobalParam() const;
    /// Saves the whole of g_VelmGlobalParam to the user's copy and, with @p flag, what the copy
    /// then holds to the shipped default too. Where the stored text has members that were not
    /// changed here, they stay, since another program may have set them; so do keys that are not
    /// known.
    /// @return false if a text could not be stored, or one on which it depends could not be read;
    ///         it is the older one then
    bool saveGlobalParam(bool flag) const;
    /// The data format of exactly that name in g_VelmGlobalParam; false if there is none.
    bool getDataFormat(const QString& name, VelmDataFormat& format);

    /// Sets what gets the lines of Qt's log, in place of an earlier one; null drops them. It gets
    /// one line at a time from whichever thread logs; what it logs itself through Qt is dropped.
    void installMessageHandler(void (*handler)(const QString&));

    /// Starts another program, found on PATH unless @p program is a path. It goes on when the wait
    /// or this process ends.
    /// @return its process identifier; 0 if it cannot start
    unsigned long createProcess(const QString& program, const VelmProcessParam& param);

    /// @{
    /// "peltaconfig.db" and "PipeConfig.db" in the folder "config" of the root. Answered whether or
    /// not they exist.
    QString getSystemConfigDb();
    QString getPipeConfigDb();
    /// @}

    /// The folder that setSystemRootRoute() or, without it, the environment variable VELM_ROOT
    /// names, if it exists, else the folder of this library. Read anew on every call. With "/"
    /// throughout and none at the end.
    QString getSystemRootRoute();
    /// Makes a folder the root of this process, whatever VELM_ROOT names. An empty one leaves it to
    /// VELM_ROOT again.
    /// @return false, and nothing changes, if @p folder is not empty and no folder
    bool setSystemRootRoute(const QString& folder);
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
    friend void velm::detail::saveParametersAtEnd();

    CVelmSystemGlobal();
    Q_DISABLE_COPY(CVelmSystemGlobal)

    /// Saves what was set since the load.
    void saveAtEnd() const;

    std::unique_ptr<velm::detail::GlobalParamStore> m_globalParam;
    Velm::Version m_version = Velm::VersionDatabase;
};
