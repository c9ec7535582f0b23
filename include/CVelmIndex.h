#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QStringList>

/// One feature code of the mapping standard.
struct VelmIndexItem
{
    double width = 0.0;    ///< line width; negative marks a special line
    QString code;          ///< feature code, the key
    QString name;          ///< feature name
    QString ltype;         ///< line type
    QString table;         ///< GIS table of the feature's attributes
    QString usecode;       ///< user code, the alternative that users type
    QStringList exttable;  ///< extension tables
};

/// The master list of feature codes: what each code is called and what it produces.
/// Codes are compared exactly, table names and user codes without regard to letter case. Lookups
/// write their output on success only. Not guarded: one thread at a time.
class VELMCOMMON_EXPORT CVelmIndex
{
public:
    CVelmIndex();
    CVelmIndex(const CVelmIndex& other);             ///< has items of its own
    CVelmIndex& operator=(const CVelmIndex& other);  ///< likewise
    virtual ~CVelmIndex();

    /// @{
    /// One field of the item.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus getName(const QString& code, QString& name) const;
    Velm::ErrorStatus getWidth(const QString& code, double& width) const;
    Velm::ErrorStatus getLType(const QString& code, QString& ltype) const;
    Velm::ErrorStatus getUseCode(const QString& code, QString& usecode) const;
    Velm::ErrorStatus getGisTableName(const QString& code, QString& table) const;
    /// @}
    /// The extension tables; @p tables is replaced.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus getExtendTables(const QString& code, QStringList& tables) const;
    /// @{
    /// The whole item, or all of it but the extension tables.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus getItem(const QString& code, VelmIndexItem& item) const;
    Velm::ErrorStatus getPars(const QString& code, QString& ltype, double& width, QString& name,
                              QString& usecode, QString& table) const;
    /// @}
    /// EntitySpecialLine for a line type that begins "gc" or a negative width, else EntityText for
    /// the line type "text", else EntityGeneral. Letter case does not count.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus getEntType(const QString& code, Velm::EntityType& type) const;

    /// Appends the codes of a GIS table in ascending order.
    /// @return VelmNotFound if @p codes is empty afterwards: a list that held entries before always
    /// gives VelmOk
    Velm::ErrorStatus getCodes(const QString& table, QStringList& codes) const;
    /// The smallest code with that user code. @return VelmOk; VelmNotFound, also for an empty user
    /// code
    Velm::ErrorStatus getCodeByUsercode(const QString& usecode, QString& code) const;
    /// All items by code.
    QMap<QString, VelmIndexItem> getIndexMap() const;

    /// Inserts or replaces an item in memory and in the table "indexini" of the system
    /// configuration database. The extension tables are kept in memory only.
    /// @return VelmOk; VelmDatabaseOpenFailed or VelmSqlExecFailed, with the item in memory all the
    /// same
    Velm::ErrorStatus addItem(const VelmIndexItem& item);
    /// Removes an item from memory and from "indexini"; its rows of "IndexiniExtend" stay.
    /// @return VelmOk; VelmNotFound; VelmDatabaseOpenFailed or VelmSqlExecFailed, with the item
    /// gone from memory
    Velm::ErrorStatus removeItem(const QString& code);

protected:
    QMap<QString, VelmIndexItem> m_items;  ///< by code
};
