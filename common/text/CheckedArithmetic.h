#pragma once

#include <limits>

namespace velm::detail {

// Neither takes negative numbers. False, with @p result as it was, where it would not fit.

template<class Number>
bool multiply(Number a, Number b, Number& result)
{
    if (b != 0 && a > std::numeric_limits<Number>::max() / b)
        return false;
    result = a * b;
    return true;
}

template<class Number>
bool add(Number a, Number b, Number& result)
{
    if (a > std::numeric_limits<Number>::max() - b)
        return false;
    result = a + b;
    return true;
}

}  // namespace velm::detail
