#pragma once

#include <QString>

/// A name as it stands in a statement, whatever characters it has.
inline QString quoted(const QString& name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\""))
           + QLatin1Char('"');
}
