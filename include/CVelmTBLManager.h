#pragma once

#include "VelmCommonGlobal.h"

#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstddef>

class CVelmDatabase;

namespace velm::detail {
class ConfigSources;
}

/// The dictionaries of the configuration: code lists with the value of each code.
///
/// Every table of the system configuration database whose name begins with "TBL_" or "TB_" (in any
/// letter case) is a dictionary of that name. So is every row of "SYS_DICTIONARY" in the pipe
/// configuration database, with the positions of its values, from "0", as codes; it replaces a
/// table of its name. Names count exactly. Filled by the constructor and read-only from then on;
/// two must not be constructed at the same time.
class VELMCOMMON_EXPORT CVelmTBLManager
{
public:
    /// Loads all dictionaries. There are none if the system configuration database is missing or
    /// unreadable; a table that cannot be read, for its name or for a missing column, is left out.
    CVelmTBLManager();
    CVelmTBLManager(const CVelmTBLManager& other);             ///< has dictionaries of its own
    CVelmTBLManager& operator=(const CVelmTBLManager& other);  ///< likewise
    virtual ~CVelmTBLManager();

    /// A dictionary by code; of a code that comes twice the last value. False if there is none of
    /// that name.
    bool GetDictByTable(const QString& name, QMap<QString, QString>& dict) const;
    /// A dictionary as pairs of code and value, in stored order.
    bool GetDictByTable(const QString& name, QVector<QPair<QString, QString>>& dict) const;
    /// "code, separator, value" of each entry in stored order; empty for an unknown name.
    QStringList getCodeValue(const QString& name, const QString& separator) const;

private:
    friend class CVelmConfigManager;

    explicit CVelmTBLManager(std::nullptr_t);  // empty

    void load(velm::detail::ConfigSources& sources);
    void loadTables(const CVelmDatabase& database);
    void loadPipeDictionaries(const CVelmDatabase& pipe);

    QMap<QString, QVector<QPair<QString, QString>>> m_dictionaries;  // by name
};
