#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

class CVelmIndex;
class CVelmIndexDB;
class CVelmIndexIni;
class CVelmWork;
class CVelmWorkDB;
class CVelmWorkDef;

/// The owner of all symbol-configuration tables: it loads them, rebuilds them on request and hands
/// them out. The tables live until the process ends; flushVelmConfig() replaces them, and pointers
/// taken before become invalid. Instance() may be called from any thread; the rest belongs to the
/// host's main thread.
class VELMCOMMON_EXPORT CVelmConfigManager
{
public:
    /// Created and loaded on the first call.
    static CVelmConfigManager* Instance();
    /// Frees no table: they live until the process ends, which is wanted so.
    virtual ~CVelmConfigManager();

    /// Rebuilds the tables from disk. The old database index is abandoned, not freed, which is
    /// wanted so.
    /// @return false if the system configuration database cannot be opened; the tables are empty
    /// then
    bool flushVelmConfig();

    /// Selects the configuration set. A version below VersionDatabase loads the text files that are
    /// not loaded yet.
    void switchVersion(Velm::Version version);

    // The two forms differ as part of the interface: the non-const index and the const work
    // definitions follow the version (null if its files were never loaded), their twins are always
    // those of the database.
    CVelmIndex* GetVelmIndex();
    const CVelmIndex* GetVelmIndex() const;
    CVelmWork* GetVelmWork();
    const CVelmWork* GetVelmWork() const;

private:
    CVelmConfigManager();
    Q_DISABLE_COPY(CVelmConfigManager)

    bool usesDatabase() const { return m_version >= Velm::VersionDatabase; }

    Velm::Version m_version = Velm::VersionDatabase;
    CVelmWorkDB* m_workDB = nullptr;
    CVelmWorkDef* m_workDef = nullptr;
    CVelmIndexDB* m_indexDB = nullptr;
    CVelmIndexIni* m_indexIni = nullptr;
};
