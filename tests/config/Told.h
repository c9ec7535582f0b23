#pragma once

#include "support/Values.h"

/// What a record holds, value by value, as "a|1|2.5": a failing comparison shows which one differs.
inline QString told(const QList<QVariant>& values)
{
    QStringList texts;
    for (const QVariant& value : values)
        texts.append(value.toString());
    return texts.join(QLatin1Char('|'));
}
