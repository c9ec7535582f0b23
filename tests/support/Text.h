#pragma once

#include <QString>

/// u"列"_s is QStringLiteral("列"), for tests whose lines are mostly texts.
inline QString operator""_s(const char16_t* text, size_t length)
{
    return QString::fromUtf16(text, static_cast<int>(length));
}
