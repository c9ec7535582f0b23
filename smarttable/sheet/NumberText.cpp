#include "smarttable/sheet/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace SmartTable::detail {

namespace {

template<class Number>
void append(std::string& text, Number number)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), static_cast<size_t>(end - digits.data()));
}

template<class Number>
bool read(std::string_view text, Number& number)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return false;
    number = value;
    return true;
}

}  // namespace

void appendNumber(std::string& text, qint64 number)
{
    append(text, number);
}

void appendNumber(std::string& text, double number)
{
    constexpr double kExact = 1e15;  // whole numbers below are those of qint64
    if (!std::isfinite(number))
        text += '0';
    else if (std::abs(number) < kExact && std::trunc(number) == number)
        append(text, static_cast<qint64>(number));
    else
        append(text, number);
}

bool readNumber(std::string_view text, quint32& number)
{
    return read(text, number);
}

bool readNumber(std::string_view text, double& number)
{
    double value = 0;
    if (!text.empty() && text[0] == '+')
        text.remove_prefix(1);
    if (!read(text, value) || !std::isfinite(value))
        return false;
    number = value;
    return true;
}

}  // namespace SmartTable::detail
