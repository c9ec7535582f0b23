#include "VelmDocumentCheck.h"

#include "config/documents/DocumentNames.h"
#include "config/documents/FieldConversion.h"
#include "config/documents/GenusLayout.h"
#include "config/parameters/GlobalParamBinding.h"

using namespace velm::detail;

namespace {

void readGlobalParam(const QString& text, const ProblemSink& tell, UnknownKeys* unknown)
{
    VelmGlobalParam param;
    if (const auto document = parseConfigObject(text, tell))
        readConfigObject(*document, param, tell, unknown);
}

}  // namespace

VelmDocumentCheck Velm::checkDocument(const QString& key, const QString& text)
{
    VelmDocumentCheck check;
    const auto collect = [&check](const json::Error& error) {
        check.parses = check.parses && !dynamic_cast<const json::ParseError*>(&error);
        check.problems.append(error.messages());
    };
    UnknownKeys unknown;
    if (key == documents::globalParameters())
        readGlobalParam(text, collect, &unknown);
    else if (key == documents::fieldConversion())
        parseFieldConversion(text, collect, &unknown);
    else if (key == documents::genusLayout())
        parseGenusLayout(text, collect, &unknown);
    for (const json::UnknownKey& found : qAsConst(unknown))
        check.unknownKeys.append({found.key, found.known});
    return check;
}
