#pragma once

#include <string>
#include <string_view>

namespace SmartTable::detail {

// Text as XML writes it (UTF-8).

/// Appends what @p written stands for: references become characters, line ends "\n". A reference
/// that is none stays as it is written; one to a character that XML has not is left out.
void appendUnescaped(std::string& text, std::string_view written);

/// Appends a text as it is written between tags, and in the quotes of an attribute. What XML
/// cannot hold (control characters, halves of characters) is left out.
void appendEscaped(std::string& written, std::string_view text);

/// The same of the texts of cells, which write each UTF-16 unit that XML cannot hold as "_xHHHH_",
/// and what looks like that as "_x005F_xHHHH_" (ECMA-376-1, 22.9.2.19, ST_Xstring).
void appendCellText(std::string& text, std::string_view written);
void appendEscapedCellText(std::string& written, std::string_view text);

/// Appends a character as UTF-8.
void appendUtf8(std::string& text, char32_t character);

}  // namespace SmartTable::detail
