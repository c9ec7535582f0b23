#include "VelmDocumentCheck.h"

#include "config/documents/FieldConversion.h"
#include "config/documents/GenusLayout.h"
#include "config/parameters/GlobalParamBinding.h"

using namespace velm::detail;

namespace {

void readGlobalParam(const QString& text, const ProblemSink& tell)
{
    VelmGlobalParam param;
    if (const auto document = parseConfigObject(text, tell))
        readConfigObject(*document, param, tell);
}

}  // namespace

VelmDocumentCheck Velm::checkDocument(const QString& key, const QString& text)
{
    VelmDocumentCheck check;
    const auto collect = [&check](const json::Error& error) {
        check.parses = check.parses && !dynamic_cast<const json::ParseError*>(&error);
        check.problems.append(error.messages());
    };
    if (key == QLatin1String("GlobalParam"))
        readGlobalParam(text, collect);
    else if (key == QStringLiteral("字段转换"))
        parseFieldConversion(text, collect);
    else if (key == QStringLiteral("图属库"))
        parseGenusLayout(text, collect);
    return check;
}
