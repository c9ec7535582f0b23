#pragma once

#include "config/documents/ConfigJson.h"
#include "CVelmAttribute.h"

#include <QMap>
#include <QString>

#include <optional>

VELM_JSON_RECORD(VelmTableInfo, VELM_JSON(gisTable, "GisTable"), VELM_JSON(tableText, "TableText"),
                 VELM_JSON(tableName, "TableName"), VELM_JSON(_tableType, "TableType"))

VELM_JSON_RECORD(VelmFieldItem, VELM_JSON(m_fieldMust, "FieldMust"),
                 VELM_JSON(m_fieldEdit, "FieldEdit"), VELM_JSON(m_fieldName, "FieldName"),
                 VELM_JSON(m_fieldText, "FieldText"), VELM_JSON(m_fieldType, "FieldType"),
                 VELM_JSON(m_fieldDecimal, "FieldDecimal"), VELM_JSON(m_fieldLength, "FieldLength"),
                 VELM_JSON(m_fieldShow, "FieldShow"), VELM_JSON(m_tableName, "TableName"),
                 VELM_JSON(m_defaultValue, "DefaultValue"), VELM_JSON(m_fieldDict, "FieldDict"))

/// The field conversion of the configuration: a JSON document that changes the texts of a GIS
/// table, and names and settings of its fields.
namespace velm::detail {

struct FieldConversion
{
    json::Partial<VelmTableInfo> tableInfo;
    QMap<QString, json::Partial<VelmFieldItem>> m_newFieldMap;  // by upper-case stored name

    /// Puts what is told about the table in place; its type stays.
    void applyTo(VelmTableInfo& table) const;
    /// Puts what is told about a field in place.
    void applyTo(VelmFieldItem& field) const;
    /// The name of a stored field after the conversion.
    QString nameOf(const VelmFieldItem& field) const;
};

/// The conversion that @p text holds. Its fields may be an object by field name or an array of
/// objects with a "FieldName". A document that cannot be read as a whole is none; what is wrong
/// with it is told.
std::optional<FieldConversion> parseFieldConversion(const QString& text, const ProblemSink& tell);

}  // namespace velm::detail
