#pragma once

#include "CVelmRTreeNode.h"

namespace velm::detail {

/// A node above the leaves, with the sizes of its branches: to choose among them takes no others.
class RTreeInnerNode : public CVelmRTreeNode
{
public:
    /// Minus infinity for an empty slot. There is one more, so that they can be read in pairs.
    double size[kMaxBranches + 1];
};

}  // namespace velm::detail
