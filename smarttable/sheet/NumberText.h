#pragma once

#include <QtGlobal>

#include <string>
#include <string_view>

namespace SmartTable::detail {

// Numbers as files write them, whatever the locale.

void appendNumber(std::string& text, qint64 number);
/// The shortest text that reads as the same number. Infinite, or no number: "0".
void appendNumber(std::string& text, double number);

/// False if the text is not a whole number of this range, or not a finite number, as a whole.
bool readNumber(std::string_view text, quint32& number);
bool readNumber(std::string_view text, double& number);

inline void appendNumber(std::string& text, int number)
{
    appendNumber(text, static_cast<qint64>(number));
}

}  // namespace SmartTable::detail
