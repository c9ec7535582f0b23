#pragma once

#include "spatial/RectGeometry.h"

#include "CVelmRTreeNode.h"

namespace velm::detail {

class RTreeInnerNode;

/// Fetches what leastGrown() reads of an inner node.
void prefetchToChoose(const CVelmRTreeNode* node);

/// The branch that @p rect lets grow least; of those the smallest, and of those the first. -1 if
/// there is no branch.
int leastGrown(const RTreeInnerNode& node, const WideRect& rect);

}  // namespace velm::detail
