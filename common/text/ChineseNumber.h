#pragma once

#include <QString>

#include <optional>

/// Chinese numerals: "十", "百", "千" inside sections of four digits, "万", "亿" and their products
/// between sections.
namespace velm::detail {

QString chineseNumber(qint64 n);

/// Nothing if @p text is no Chinese numeral or does not fit.
std::optional<qint64> parseChineseNumber(const QString& text);

}  // namespace velm::detail
