#include "config/documents/GenusLayout.h"

VELM_JSON_RECORD(VelmRecordGenusDatabase, VELM_JSON_PLACES(headerList, "HeaderList"),
                 VELM_JSON(keyField, "KeyField"), VELM_JSON_PLACES(fieldType, "FieldType"),
                 VELM_JSON_PLACES(fieldDecimal, "FieldDecimal"), VELM_JSON(matchRule, "MatchRule"),
                 VELM_JSON(showPoint, "ShowPoint"))

namespace velm::detail {

std::optional<VelmRecordGenusDatabase>
parseGenusLayout(const QString& text, const ProblemSink& tell, UnknownKeys* unknown)
{
    const std::optional<json::Document> document = parseConfigObject(text, tell);
    if (!document)
        return std::nullopt;
    VelmRecordGenusDatabase layout;
    readConfigObject(*document, layout, tell, unknown);
    return layout;
}

}  // namespace velm::detail
