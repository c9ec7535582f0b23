#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QStringList>

class CVelmAnnotate;
class CVelmAreaLine;
class CVelmAttribute;
class CVelmAttributeDB;
class CVelmAttributeDef;
class CVelmCmdSetting;
class CVelmFrame;
class CVelmIndex;
class CVelmIndexDB;
class CVelmIndexIni;
class CVelmRecordManager;
class CVelmTBLManager;
class CVelmWork;
class CVelmWorkDB;
class CVelmWorkDef;

namespace velm::detail {
class ConfigSources;
}

/// The owner of all symbol-configuration tables: it loads them, rebuilds them on request and hands
/// them out. The tables live until the process ends; flushVelmConfig() replaces them, and pointers
/// taken before become invalid. Instance() may be called from any thread; the rest belongs to the
/// host's main thread.
class VELMCOMMON_EXPORT CVelmConfigManager
{
public:
    /// Created and loaded on the first call.
    static CVelmConfigManager* Instance();
    /// Frees no table: hosts hold pointers to them until the process ends.
    virtual ~CVelmConfigManager();

    /// Rebuilds the tables from disk, but for frames, annotations and command settings, which stay
    /// as they are. The old database index is abandoned, not freed, for hosts that still read it.
    /// Waits at most 5 s for databases that other programs lock. A table that is missing or cannot
    /// be read to its end is empty.
    /// @return false if the system configuration database cannot be opened, is locked or no
    /// database, or if memory runs out; the tables are empty then
    bool flushVelmConfig();
    /// What the last load could not read, a line each: no such file, not a database, locked, a
    /// missing table, a view in its place, a reading that broke off. Empty when all is well: then a
    /// code that is not found is not defined. The lines are in the log, too.
    QStringList loadProblems() const;

    /// Selects the configuration set. A version below VersionDatabase loads the text files that are
    /// not loaded yet.
    void switchVersion(Velm::Version version);

    /// @{
    /// The two forms differ as part of the interface: the non-const index and attributes and the
    /// const work definitions follow the version (null if its files were never loaded), their twins
    /// are always those of the database. Owned by this object, until the next flushVelmConfig().
    CVelmIndex* GetVelmIndex();
    const CVelmIndex* GetVelmIndex() const;
    CVelmWork* GetVelmWork();
    const CVelmWork* GetVelmWork() const;
    CVelmAttribute* GetVelmAttribute();
    const CVelmAttribute* GetVelmAttribute() const;
    /// @}

    /// @{
    /// Never null, and the same for every version. Owned by this object; all but frames,
    /// annotations and command settings until the next flushVelmConfig().
    CVelmFrame* GetVelmFrame() { return m_frame; }
    const CVelmFrame* GetVelmFrame() const { return m_frame; }
    CVelmAreaLine* GetVelmAreaLine() { return m_areaLine; }
    const CVelmAreaLine* GetVelmAreaLine() const { return m_areaLine; }
    CVelmAnnotate* GetVelmAnnotate() { return m_annotate; }
    const CVelmAnnotate* GetVelmAnnotate() const { return m_annotate; }
    CVelmCmdSetting* GetVelmCmdSetting() { return m_cmdSetting; }
    const CVelmCmdSetting* GetVelmCmdSetting() const { return m_cmdSetting; }
    const CVelmTBLManager* GetVelmTBLManager() const { return m_tblManager; }
    const CVelmRecordManager* GetVelmRecordManager() const { return m_recordManager; }
    /// @}

private:
    CVelmConfigManager();
    Q_DISABLE_COPY(CVelmConfigManager)

    void loadFirst();
    void makeEmptyTables();
    bool load(velm::detail::ConfigSources& sources);
    bool loadTables(velm::detail::ConfigSources& sources);
    bool usesDatabase() const { return m_version >= Velm::VersionDatabase; }

    Velm::Version m_version = Velm::VersionDatabase;
    CVelmWorkDB* m_workDB = nullptr;
    CVelmWorkDef* m_workDef = nullptr;
    CVelmFrame* m_frame = nullptr;
    CVelmIndexDB* m_indexDB = nullptr;
    CVelmIndexIni* m_indexIni = nullptr;
    CVelmAreaLine* m_areaLine = nullptr;
    CVelmAnnotate* m_annotate = nullptr;
    CVelmAttributeDB* m_attributeDB = nullptr;
    CVelmAttributeDef* m_attributeDef = nullptr;
    CVelmTBLManager* m_tblManager = nullptr;
    CVelmCmdSetting* m_cmdSetting = nullptr;
    CVelmRecordManager* m_recordManager = nullptr;
    QStringList m_loadProblems;
};
