#include "config/ConfigJson.h"

#include <QDebug>

namespace velm::detail {

std::optional<json::Document> parseConfigObject(const QString& text, const QString& what)
{
    if (text.isEmpty())
        return std::nullopt;
    try {
        json::Document document = json::parse(text);
        if (document.IsObject())
            return document;
        throw json::Error({QStringLiteral("not object. (path:")});
    } catch (const json::Error& error) {
        logProblems(error, what);
    }
    return std::nullopt;
}

void logProblems(const json::Error& error, const QString& what)
{
    for (const QString& problem : error.messages())
        qWarning().noquote() << what + QLatin1Char(':') << problem;
}

}  // namespace velm::detail
