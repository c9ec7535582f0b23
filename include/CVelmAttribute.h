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
    QString tableName;
    QString tableText;  ///< display text
    QString gisTable;   ///< name of the table in GIS databases
    Velm::TableType _tableType = Velm::TablePoint;
};

/// A GIS table with its fields, in the order of their definition.
struct VelmTableItem : VelmTableInfo
{
    QList<VelmFieldItem> fields;
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
    CVelmAttribute(const CVelmAttribute& other);
    CVelmAttribute& operator=(const CVelmAttribute& other);
    virtual ~CVelmAttribute();

    /// All tables, without the conversion, by upper-case name.
    QMap<QString, VelmTableItem> getGisTableMap();
    bool existTable(const QString& name) const;

    // @return VelmOk; VelmNotFound for an unknown table, or field

    Velm::ErrorStatus getGisTableItem(const QString& name, VelmTableItem& item,
                                      const VelmAttParam& param) const;
    Velm::ErrorStatus getGisTableInfo(const QString& name, VelmTableInfo& info,
                                      const VelmAttParam& param) const;
    Velm::ErrorStatus getGisTableFieldArray(const QString& name, QList<VelmFieldItem>& fields,
                                            const VelmAttParam& param) const;
    /// The first field of that name.
    Velm::ErrorStatus getGisTableFieldItem(const QString& table, const QString& field,
                                           VelmFieldItem& item, const VelmAttParam& param) const;
    /// The number of the field's Velm::FieldType.
    Velm::ErrorStatus getGisFieldType(const QString& table, const QString& field, int& type,
                                      const VelmAttParam& param) const;
    Velm::ErrorStatus getGisFieldPrecision(const QString& table, const QString& field,
                                           int& decimals, const VelmAttParam& param) const;

    // Empty for an unknown table.

    /// The names of all tables in the order of their upper-case stored names.
    QStringList getGisTableNameArray(const VelmAttParam& param) const;
    QStringList getGisTableNameByTableType(Velm::TableType type, const VelmAttParam& param) const;
    QStringList getGisFieldNameArray(const QString& table, const VelmAttParam& param) const;
    QStringList getGisFieldNameArrayByFieldType(const QString& table, Velm::FieldType type,
                                                const VelmAttParam& param) const;

protected:
    using Conversion = std::shared_ptr<const velm::detail::FieldConversion>;

    QMap<QString, VelmTableItem> m_gisTables;  // by upper-case name
    QMap<QString, Conversion> m_overlay;       // by upper-case name

private:
    const velm::detail::FieldConversion* conversionOf(const QString& name,
                                                      const VelmAttParam& param) const;
};
