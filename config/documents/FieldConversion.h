#pragma once

#include "config/documents/ConfigJson.h"
#include "CVelmAttribute.h"

#include <QMap>
#include <QString>

#include <optional>

/// The field conversion of the configuration: a JSON document that changes the texts of a GIS
/// table, and names and settings of its fields.
namespace velm::detail {

/// What the document tells about the table; what it does not tell has no value.
struct TableSettings
{
    std::optional<QString> gisTable;
    std::optional<QString> tableText;
    std::optional<QString> tableName;
    std::optional<int> _tableType;  // told, and without effect
};

/// What the document tells about a field.
struct FieldSettings
{
    std::optional<bool> m_fieldMust;
    std::optional<bool> m_fieldEdit;
    std::optional<QString> m_fieldName;
    std::optional<QString> m_fieldText;
    std::optional<Velm::FieldType> m_fieldType;
    std::optional<int> m_fieldDecimal;
    std::optional<int> m_fieldLength;
    std::optional<bool> m_fieldShow;
    std::optional<QString> m_tableName;
    std::optional<QString> m_defaultValue;
    std::optional<QString> m_fieldDict;
};

struct FieldConversion
{
    TableSettings tableInfo;
    QMap<QString, FieldSettings> m_newFieldMap;  // by upper-case name of the stored field

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
