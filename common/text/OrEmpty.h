#pragma once

#include <new>

namespace velm::detail {

/// What @p make returns; an empty value where memory runs out.
template<class Make>
auto orEmpty(const Make& make) -> decltype(make())
{
    try {
        return make();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace velm::detail
