#pragma once

#include <QVariant>

#include <cmath>
#include <limits>
#include <optional>

/// The whole number that a value of the configuration is, of which an empty one is 0; none if it is
/// something else, or too large.
inline std::optional<int> wholeNumber(const QVariant& value)
{
    if (value.toString().isEmpty())
        return 0;
    bool converts = false;
    const double number = value.toDouble(&converts);
    const bool fits = converts && number == std::floor(number)
                      && std::abs(number) <= std::numeric_limits<int>::max();
    const int whole = fits ? value.toInt(&converts) : 0;  // a text takes no exponent
    return fits && converts ? std::optional<int>(whole) : std::nullopt;
}
