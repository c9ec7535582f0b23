#pragma once

#include "CVelmCompress.h"

namespace velm::detail {

/// What a user of CVelmCompress may set.
struct CompressSettings
{
    CVelmCompress::Progress progress;
    int level = 6;
    bool overwrites = false;
    qint64 mostBytes = 4LL << 30;
    int mostRatio = 100;
};

/// "NAME": and what is wrong with it.
inline QString aboutEntry(const QString& name, const QString& problem)
{
    return QLatin1Char('"') + name + QStringLiteral("\": ") + problem;
}

}  // namespace velm::detail
