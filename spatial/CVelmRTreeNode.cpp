#include "CVelmRTreeNode.h"

#include "spatial/RTreeSlots.h"

CVelmRTreeNode::CVelmRTreeNode()
{
    InitNode();
}

void CVelmRTreeNode::InitNode()
{
    level = -1;
    velm::detail::RTreeSlots::clear(*this);
}

CVelmRTreeListNode::~CVelmRTreeListNode() = default;
