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

/// Reads the document of that name.
void readDocument(const QString& key, const QString& text, const ProblemSink& tell,
                  UnknownKeys* unknown)
{
    if (key == documents::globalParameters())
        readGlobalParam(text, tell, unknown);
    else if (key == documents::fieldConversion())
        parseFieldConversion(text, tell, unknown);
    else if (key == documents::genusLayout())
        parseGenusLayout(text, tell, unknown);
}

}  // namespace

VelmDocumentCheck Velm::checkDocument(const QString& key, const QString& text)
{
    VelmDocumentCheck check;
    const auto collect = [&check](const json::Error& error) {
        check.parses = check.parses && !dynamic_cast<const json::ParseError*>(&error);
        check.problems.append(error.messages());
    };
    readDocument(key, text, collect, nullptr);
    return check;
}

QVector<VelmMistypedMember> Velm::mistypedDocumentMembers(const QString& key, const QString& text)
{
    QVector<VelmMistypedMember> members;
    const auto collect = [&members](const json::Error& error) {
        for (const json::Mistyped& mistyped : error.mistyped())
            members.append({mistyped.path, mistyped.wanted});
    };
    readDocument(key, text, collect, nullptr);
    return members;
}

QVector<VelmUnknownKey> Velm::unknownDocumentKeys(const QString& key, const QString& text)
{
    UnknownKeys unknown;
    readDocument(
        key, text, [](const json::Error&) {}, &unknown);
    QVector<VelmUnknownKey> keys;
    for (const json::UnknownKey& found : qAsConst(unknown))
        keys.append({found.key, found.known, found.path});
    return keys;
}

int Velm::jsonFailureAt(const QString& text)
{
    try {
        json::parse(text);
    } catch (const json::ParseError& error) {
        return error.offset();
    } catch (const json::Error&) {
        return 0;  // memory has run out
    }
    return -1;
}
