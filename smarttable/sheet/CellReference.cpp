#include "smarttable/sheet/CellReference.h"

#include "smarttable/sheet/Cell.h"
#include "smarttable/sheet/NumberText.h"

#include <algorithm>
#include <array>

namespace SmartTable::detail {

namespace {

constexpr int kLetters = 26;

bool isLetter(char ch)
{
    return ch >= 'A' && ch <= 'Z';
}

}  // namespace

bool isPlace(int row, int column)
{
    return row >= 1 && row <= kMostRows && column >= 1 && column <= kMostColumns;
}

bool readPlace(std::string_view text, CellPlace& place)
{
    constexpr size_t kMostLetters = 3;
    constexpr size_t kMostDigits = 7;
    CellPlace read;
    size_t at = 0;
    for (; at < text.size() && isLetter(text[at]) && at < kMostLetters; ++at)
        read.column = read.column * kLetters + (text[at] - 'A' + 1);
    if (at == 0 || text.size() - at > kMostDigits)
        return false;
    for (; at < text.size(); ++at) {
        if (text[at] < '0' || text[at] > '9')
            return false;
        read.row = read.row * 10 + (text[at] - '0');
    }
    if (!isPlace(read.row, read.column))
        return false;
    place = read;
    return true;
}

bool readRange(std::string_view text, CellRange& range)
{
    const size_t colon = text.find(':');
    CellPlace one;
    CellPlace other;
    if (!readPlace(text.substr(0, colon), one))
        return false;
    if (colon == std::string_view::npos)
        other = one;
    else if (!readPlace(text.substr(colon + 1), other))
        return false;
    range.first = {std::min(one.row, other.row), std::min(one.column, other.column)};
    range.last = {std::max(one.row, other.row), std::max(one.column, other.column)};
    return true;
}

void appendColumn(std::string& text, int column)
{
    std::array<char, 3> letters{};
    size_t at = letters.size();
    for (; column > 0 && at > 0; column = (column - 1) / kLetters)
        letters[--at] = static_cast<char>('A' + (column - 1) % kLetters);
    text.append(letters.data() + at, letters.size() - at);
}

void appendPlace(std::string& text, const CellPlace& place)
{
    appendColumn(text, place.column);
    appendNumber(text, place.row);
}

std::string rangeText(const CellRange& range)
{
    std::string text;
    appendPlace(text, range.first);
    if (range.first.row != range.last.row || range.first.column != range.last.column) {
        text += ':';
        appendPlace(text, range.last);
    }
    return text;
}

}  // namespace SmartTable::detail
