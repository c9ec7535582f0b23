#include "check/JsonFailure.h"

#include "VelmDocumentCheck.h"

QString jsonFailure(const QString& text)
{
    constexpr int kShown = 20;  // characters in front of it
    const int at = Velm::jsonFailureAt(text);
    if (at < 0)  // what is read is more than one value
        return QStringLiteral("is neither a JSON object nor a list");
    const QString before = text.left(at).simplified().right(kShown);
    const QString behind =
        before.isEmpty() ? QString() : QStringLiteral(", behind \"%1\"").arg(before);
    return (at >= text.size() ? QStringLiteral("is JSON without its end")
                              : QStringLiteral("is no JSON at character %1").arg(at + 1))
           + behind;
}
