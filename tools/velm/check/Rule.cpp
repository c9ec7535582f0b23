#include "check/RuleTable.h"

namespace rules {

const Rule* find(const QString& id)
{
    for (const Rule& rule : kAll) {
        if (id == QLatin1String(rule.id))
            return &rule;
    }
    return nullptr;
}

QString nameOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    default:
        return QStringLiteral("note");
    }
}

}  // namespace rules
