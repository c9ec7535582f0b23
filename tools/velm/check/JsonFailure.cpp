#include "check/JsonFailure.h"

#include "common/json/Json.h"
#include "VelmDocumentCheck.h"

namespace {

/// How many objects and lists are open behind a beginning of JSON.
int depthOf(const QString& beginning)
{
    int depth = 0;
    bool isText = false;
    for (int i = 0; i < beginning.size(); ++i) {
        const QChar ch = beginning.at(i);
        if (isText && ch == QLatin1Char('\\'))
            ++i;
        else if (ch == QLatin1Char('"'))
            isText = !isText;
        else if (!isText && (ch == QLatin1Char('{') || ch == QLatin1Char('[')))
            ++depth;
        else if (!isText && (ch == QLatin1Char('}') || ch == QLatin1Char(']')))
            --depth;
    }
    return depth;
}

}  // namespace

QString jsonFailure(const QString& text)
{
    constexpr int kShown = 20;  // characters in front of it
    if (text.trimmed().isEmpty())
        return QStringLiteral("is empty");
    const int at = Velm::jsonFailureAt(text);
    if (at < 0)  // what is read is more than one value
        return QStringLiteral("is neither a JSON object nor a list");
    constexpr int kDeepest = velm::detail::json::kDeepestNesting;
    if (depthOf(text.left(at)) > kDeepest)
        return QStringLiteral("is nested deeper than %1 levels, the most that are read, at "
                              "character %2")
            .arg(kDeepest)
            .arg(at);
    const QString before = text.left(at).simplified().right(kShown);
    const QString behind =
        before.isEmpty() ? QString() : QStringLiteral(", behind \"%1\"").arg(before);
    return (at >= text.size() ? QStringLiteral("is JSON without its end")
                              : QStringLiteral("is no JSON at character %1").arg(at + 1))
           + behind;
}
