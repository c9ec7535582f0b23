#include "smarttable/xml/XmlText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace SmartTable::detail {

namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;

bool isOfXml(char32_t ch)
{
    const bool isControl = ch < 0x20 && ch != '\t' && ch != '\n' && ch != '\r';
    const bool isHalf = ch >= 0xD800 && ch <= 0xDFFF;
    return !isControl && !isHalf && ch != 0xFFFE && ch != 0xFFFF && ch <= kLastCharacter;
}

/// The character of a reference, without "&" and ";"; 0 if it is none.
char32_t referred(std::string_view name)
{
    if (name == "lt")
        return '<';
    if (name == "gt")
        return '>';
    if (name == "amp")
        return '&';
    if (name == "quot")
        return '"';
    if (name == "apos")
        return '\'';
    if (name.size() < 2 || name[0] != '#')
        return 0;
    const bool isHex = name[1] == 'x';
    const std::string_view digits = name.substr(isHex ? 2 : 1);
    unsigned long code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, isHex ? 16 : 10);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole && code <= kLastCharacter ? static_cast<char32_t>(code) : 0;
}

/// Appends the reference at the beginning of @p written. @return its length
size_t appendReference(std::string& text, std::string_view written)
{
    constexpr size_t kLongest = 12;  // "&#x0010FFFF;"
    const size_t end = written.substr(0, kLongest).find(';');
    const char32_t ch = end == std::string_view::npos ? 0 : referred(written.substr(1, end - 1));
    if (ch == 0) {
        text += '&';
        return 1;
    }
    if (isOfXml(ch))
        appendUtf8(text, ch);
    return end + 1;
}

/// The UTF-16 unit of "_xHHHH_" at the beginning of a text; -1 if there is none.
int escapedUnit(std::string_view text)
{
    constexpr size_t kLength = 7;
    if (text.size() < kLength || text[1] != 'x' || text[kLength - 1] != '_')
        return -1;
    unsigned unit = 0;
    const char* const digits = text.data() + 2;
    const auto [end, error] = std::from_chars(digits, digits + 4, unit, 16);
    return error == std::errc() && end == digits + 4 ? static_cast<int>(unit) : -1;
}

void appendUnit(std::string& written, unsigned unit)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    written += "_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        written += kDigits[unit >> shift & 0xF];
    written += '_';
}

/// How a character stands between tags; empty if as itself.
std::string_view escapeOf(char ch)
{
    switch (ch) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return std::string_view();
    }
}

bool isPlain(char ch)
{
    static const std::array<bool, 256> plain = [] {
        std::array<bool, 256> table{};
        for (size_t at = 0x20; at < table.size(); ++at)
            table[at] = escapeOf(static_cast<char>(at)).empty() && at != 0xEF && at != '_';
        return table;
    }();
    return plain[static_cast<unsigned char>(ch)];
}

/// Whether UTF-8 of U+FFFE or U+FFFF begins there.
bool isNoCharacter(std::string_view text)
{
    return text.substr(0, 3) == "\xEF\xBF\xBE" || text.substr(0, 3) == "\xEF\xBF\xBF";
}

/// Runs of characters that stand as themselves are appended at once; @p appendOther appends what
/// stands at the beginning of the rest otherwise, and answers its length.
template<class Other>
void appendRuns(std::string& written, std::string_view text, const Other& appendOther)
{
    for (size_t at = 0; at < text.size();) {
        const size_t from = at;
        while (at < text.size() && isPlain(text[at]))
            ++at;
        written.append(text, from, at - from);
        if (at < text.size())
            at += appendOther(text.substr(at));
    }
}

}  // namespace

void appendUtf8(std::string& text, char32_t ch)
{
    const auto tail = [ch](int shift) { return static_cast<char>(0x80 | (ch >> shift & 0x3F)); };
    if (ch < 0x80) {
        text += static_cast<char>(ch);
    } else if (ch < 0x800) {
        text += static_cast<char>(0xC0 | ch >> 6);
        text += tail(0);
    } else if (ch < 0x10000) {
        text += static_cast<char>(0xE0 | ch >> 12);
        text += tail(6);
        text += tail(0);
    } else {
        text += static_cast<char>(0xF0 | ch >> 18);
        text += tail(12);
        text += tail(6);
        text += tail(0);
    }
}

void appendUnescaped(std::string& text, std::string_view written)
{
    for (size_t at = 0; at < written.size();) {
        const size_t special = std::min(written.find_first_of("&\r", at), written.size());
        text.append(written, at, special - at);
        at = special;
        if (at == written.size())
            return;
        if (written[at] == '&') {
            at += appendReference(text, written.substr(at));
            continue;
        }
        text += '\n';
        at += written.substr(at, 2) == "\r\n" ? 2 : 1;
    }
}

void appendEscaped(std::string& written, std::string_view text)
{
    appendRuns(written, text, [&written](std::string_view rest) -> size_t {
        const std::string_view escape = escapeOf(rest[0]);
        if (!escape.empty())
            written += escape;
        else if (isNoCharacter(rest))
            return 3;
        else if (isOfXml(static_cast<unsigned char>(rest[0])))
            written += rest[0];
        return 1;
    });
}

void appendCellText(std::string& text, std::string_view written)
{
    const size_t from = text.size();
    appendUnescaped(text, written);
    size_t at = text.find("_x", from);
    if (at == std::string::npos)
        return;
    const std::string whole = text.substr(from);
    text.resize(from);
    char32_t high = 0;
    for (at = 0; at < whole.size();) {
        const std::string_view rest = std::string_view(whole).substr(at);
        const int unit = rest[0] == '_' ? escapedUnit(rest) : -1;
        const bool isPair = unit >= 0xDC00 && unit <= 0xDFFF && high != 0;
        at += unit < 0 ? 1 : 7;
        if (unit < 0)
            text += rest[0];
        else if (isPair)
            appendUtf8(text,
                       0x10000 + ((high - 0xD800) << 10) + (static_cast<char32_t>(unit) - 0xDC00));
        else if (unit < 0xD800 || unit > 0xDFFF)
            appendUtf8(text, static_cast<char32_t>(unit));
        high = unit >= 0xD800 && unit <= 0xDBFF ? static_cast<char32_t>(unit) : 0;
    }
}

void appendEscapedCellText(std::string& written, std::string_view text)
{
    appendRuns(written, text, [&written](std::string_view rest) -> size_t {
        const char ch = rest[0];
        const std::string_view escape = ch == '\n' || ch == '\t' ? "" : escapeOf(ch);
        if (isNoCharacter(rest)) {
            appendUnit(written, rest[2] == '\xBE' ? 0xFFFE : 0xFFFF);
            return 3;
        }
        if (ch == '\r' || !isOfXml(static_cast<unsigned char>(ch)))
            appendUnit(written, static_cast<unsigned char>(ch));
        else if (!escape.empty())
            written += escape;
        else if (ch == '_' && escapedUnit(rest) >= 0)
            written += "_x005F_";
        else
            written += ch;
        return 1;
    });
}

}  // namespace SmartTable::detail
