#include "config/documents/FieldConversion.h"

#include <algorithm>

using namespace velm::detail;

VELM_JSON_RECORD(FieldConversion, VELM_JSON(tableInfo, "TableInfo"),
                 VELM_JSON(m_newFieldMap, "FieldMap"))

namespace velm::detail {

namespace {

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
    const Velm::TableType type = table._tableType;
    tableInfo.applyTo(table);
    table._tableType = type;
}

void FieldConversion::applyTo(VelmFieldItem& field) const
{
    const auto it = m_newFieldMap.constFind(field.m_fieldName.toUpper());
    if (it != m_newFieldMap.cend())
        it->applyTo(field);
}

QString FieldConversion::nameOf(const VelmFieldItem& field) const
{
    VelmFieldItem named;
    named.m_fieldName = field.m_fieldName;
    applyTo(named);
    return named.m_fieldName;
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
