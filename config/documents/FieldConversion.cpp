#include "config/documents/FieldConversion.h"

#include <algorithm>

using namespace velm::detail;

VELM_JSON_RECORD(TableSettings, VELM_JSON(gisTable, "GisTable"), VELM_JSON(tableText, "TableText"),
                 VELM_JSON(tableName, "TableName"), VELM_JSON(_tableType, "TableType"))

VELM_JSON_RECORD(FieldSettings, VELM_JSON(m_fieldMust, "FieldMust"),
                 VELM_JSON(m_fieldEdit, "FieldEdit"), VELM_JSON(m_fieldName, "FieldName"),
                 VELM_JSON(m_fieldText, "FieldText"), VELM_JSON(m_fieldType, "FieldType"),
                 VELM_JSON(m_fieldDecimal, "FieldDecimal"), VELM_JSON(m_fieldLength, "FieldLength"),
                 VELM_JSON(m_fieldShow, "FieldShow"), VELM_JSON(m_tableName, "TableName"),
                 VELM_JSON(m_defaultValue, "DefaultValue"), VELM_JSON(m_fieldDict, "FieldDict"))

VELM_JSON_RECORD(FieldConversion, VELM_JSON(tableInfo, "TableInfo"),
                 VELM_JSON(m_newFieldMap, "FieldMap"))

namespace velm::detail {

namespace {

template<class Value>
void replace(Value& value, const std::optional<Value>& setting)
{
    if (setting)
        value = *setting;
}

/// Turns an array of fields into an object by their names; one that holds anything else stays.
void keyFieldsByName(json::Document& document)
{
    const auto fields = document.FindMember(u"FieldMap");
    if (fields == document.MemberEnd() || !fields->value.IsArray())
        return;
    const auto isNamed = [](const json::Value& field) {
        if (!field.IsObject())
            return false;
        const auto name = field.FindMember(u"FieldName");
        return name != field.MemberEnd() && name->value.IsString();
    };
    if (!std::all_of(fields->value.Begin(), fields->value.End(), isNamed))
        return;
    json::Value byName(rapidjson::kObjectType);
    for (json::Value& field : fields->value.GetArray()) {
        json::Value key =
            json::copyOf(field.FindMember(u"FieldName")->value, document.GetAllocator());
        byName.AddMember(key, field, document.GetAllocator());
    }
    fields->value = byName;
}

}  // namespace

void FieldConversion::applyTo(VelmTableInfo& table) const
{
    replace(table.tableName, tableInfo.tableName);
    replace(table.tableText, tableInfo.tableText);
    replace(table.gisTable, tableInfo.gisTable);
}

void FieldConversion::applyTo(VelmFieldItem& field) const
{
    const auto it = m_newFieldMap.constFind(field.m_fieldName.toUpper());
    if (it == m_newFieldMap.cend())
        return;
    replace(field.m_fieldMust, it->m_fieldMust);
    replace(field.m_fieldEdit, it->m_fieldEdit);
    replace(field.m_fieldName, it->m_fieldName);
    replace(field.m_fieldText, it->m_fieldText);
    replace(field.m_fieldType, it->m_fieldType);
    replace(field.m_fieldDecimal, it->m_fieldDecimal);
    replace(field.m_fieldLength, it->m_fieldLength);
    replace(field.m_fieldShow, it->m_fieldShow);
    replace(field.m_tableName, it->m_tableName);
    replace(field.m_defaultValue, it->m_defaultValue);
    replace(field.m_fieldDict, it->m_fieldDict);
}

QString FieldConversion::nameOf(const VelmFieldItem& field) const
{
    const auto it = m_newFieldMap.constFind(field.m_fieldName.toUpper());
    return it == m_newFieldMap.cend() ? field.m_fieldName
                                      : it->m_fieldName.value_or(field.m_fieldName);
}

std::optional<FieldConversion> parseFieldConversion(const QString& text, const ProblemSink& tell)
{
    std::optional<json::Document> document = parseConfigObject(text, tell);
    if (!document)
        return std::nullopt;
    keyFieldsByName(*document);
    FieldConversion read;
    if (!readConfigObject(*document, read, tell))
        return std::nullopt;
    FieldConversion conversion{read.tableInfo, {}};
    for (auto it = read.m_newFieldMap.cbegin(); it != read.m_newFieldMap.cend(); ++it)
        conversion.m_newFieldMap.insert(it.key().toUpper(), it.value());
    return conversion;
}

}  // namespace velm::detail
