#pragma once

#include "VelmCommonGlobal.h"
#include "VelmFieldItem.h"
#include "VelmTypes.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>

namespace velm::detail {
struct FieldConversion;
}

/// A GIS table: the attribute table of a kind of map features.
struct VelmTableInfo
{
    QString tableName;                              ///< stored name
    QString tableText;                              ///< display text
    QString gisTable;                               ///< name of the table in GIS databases
    Velm::TableType _tableType = Velm::TablePoint;  ///< geometry of the features
};

/// A GIS table with its fields, in the order of their definition.
struct VelmTableItem : VelmTableInfo
{
    QList<VelmFieldItem> fields;  ///< the conversion does not change their order
};

/// How definitions are asked for.
struct VelmAttParam
{
    /// Apply the field conversion of the configuration, which changes a table's texts and fields.
    bool m_useConversion = false;
};

/// The GIS tables and their fields.
/// Names of tables and fields are found in any letter case: tables by their stored name, fields by
/// the name that the conversion gives them. Outputs are written on success only. Not guarded: one
/// thread at a time.
class VELMCOMMON_EXPORT CVelmAttribute
{
public:
    CVelmAttribute();
    CVelmAttribute(const CVelmAttribute& other);             ///< has tables of its own
    CVelmAttribute& operator=(const CVelmAttribute& other);  ///< likewise
    virtual ~CVelmAttribute();

    /// All tables, without the conversion, by upper-case name.
    QMap<QString, VelmTableItem> getGisTableMap();
    /// Whether a table has that stored name.
    bool existTable(const QString& name) const;

    /// @name One table or field
    /// @return VelmOk; VelmNotFound for an unknown table, or field
    /// @{

    /// The table with its fields.
    Velm::ErrorStatus getGisTableItem(const QString& name, VelmTableItem& item,
                                      const VelmAttParam& param) const;
    /// The table without its fields.
    Velm::ErrorStatus getGisTableInfo(const QString& name, VelmTableInfo& info,
                                      const VelmAttParam& param) const;
    /// The fields in the order of their definition.
    Velm::ErrorStatus getGisTableFieldArray(const QString& name, QList<VelmFieldItem>& fields,
                                            const VelmAttParam& param) const;
    /// The first field of that name.
    Velm::ErrorStatus getGisTableFieldItem(const QString& table, const QString& field,
                                           VelmFieldItem& item, const VelmAttParam& param) const;
    /// The number of the field's Velm::FieldType.
    Velm::ErrorStatus getGisFieldType(const QString& table, const QString& field, int& type,
                                      const VelmAttParam& param) const;
    /// Digits behind the point of that field.
    Velm::ErrorStatus getGisFieldPrecision(const QString& table, const QString& field,
                                           int& decimals, const VelmAttParam& param) const;

    /// @}

    /// @name Names
    /// Lists of names, empty for an unknown table.
    /// @{

    /// The names of all tables in the order of their upper-case stored names.
    QStringList getGisTableNameArray(const VelmAttParam& param) const;
    /// Likewise the tables whose stored type is @p type; the conversion does not change it.
    QStringList getGisTableNameByTableType(Velm::TableType type, const VelmAttParam& param) const;
    /// The fields in the order of their definition.
    QStringList getGisFieldNameArray(const QString& table, const VelmAttParam& param) const;
    /// Likewise the fields of type @p type, after the conversion.
    QStringList getGisFieldNameArrayByFieldType(const QString& table, Velm::FieldType type,
                                                const VelmAttParam& param) const;
    /// @}

protected:
    using Conversion = std::shared_ptr<const velm::detail::FieldConversion>;  ///< shared by copies

    QMap<QString, VelmTableItem> m_gisTables;  ///< by upper-case name, as stored
    QMap<QString, Conversion> m_overlay;       ///< by upper-case name of the table

private:
    const velm::detail::FieldConversion* conversionOf(const QString& name,
                                                      const VelmAttParam& param) const;
};
