#pragma once

namespace velm::detail {

// The greatest number of each choice of an annotation; the least is 0.
constexpr int kLastInputType = 2;
constexpr int kLastAnnotationType = 5;

}  // namespace velm::detail
