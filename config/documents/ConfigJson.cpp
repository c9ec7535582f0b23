#include "config/documents/ConfigJson.h"

#include "common/host/HostCalls.h"

namespace velm::detail {

ProblemSink logAs(const QString& what)
{
    return [what](const json::Error& error) {
        for (const QString& problem : error.messages())
            VELM_WARN(what + QStringLiteral(": ") + problem);
    };
}

std::optional<json::Document> parseConfigObject(const QString& text, const ProblemSink& tell)
{
    if (text.isEmpty())
        return std::nullopt;
    try {
        json::Document document = json::parse(text);
        if (document.IsObject())
            return document;
        throw json::Error({QStringLiteral("not object. (path:")},
                          {{QString(), QStringLiteral("an object")}});
    } catch (const json::Error& error) {
        tell(error);
    }
    return std::nullopt;
}

}  // namespace velm::detail
