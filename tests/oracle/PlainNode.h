#pragma once

#include "CVelmRTreeNode.h"

struct PlainNode;

struct PlainBranch
{
    CVelmRTreeMBR rect;
    void* child = nullptr;  // an identifier in a leaf, else a node; null in an empty slot

    PlainNode* node() const { return static_cast<PlainNode*>(child); }
};

struct PlainNode
{
    int level;
    int count = 0;  // of slots in use, which may have empty ones between them
    PlainBranch branch[9] = {};

    /// Puts a branch into the first empty slot. @return the new sibling if the node had to be
    /// split, else null
    PlainNode* add(const PlainBranch& added);
    /// Of all its branches; it is not empty.
    CVelmRTreeMBR cover() const;
};

/// What is asked of branches.
namespace plain {

inline bool any(const PlainBranch&)
{
    return true;
}

inline auto overlapping(const CVelmRTreeMBR* r)
{
    return [r](const PlainBranch& b) {
        return !(b.rect.xmin > r->xmax || r->xmin > b.rect.xmax || b.rect.ymin > r->ymax
                 || r->ymin > b.rect.ymax);
    };
}

inline auto within(const CVelmRTreeMBR* r)
{
    return [r](const PlainBranch& b) {
        return !(r->xmin > b.rect.xmin || b.rect.xmax > r->xmax || r->ymin > b.rect.ymin
                 || b.rect.ymax > r->ymax);
    };
}

inline auto is(void* id)
{
    return [id](const PlainBranch& b) { return b.child == id; };
}

CVelmRTreeMBR combined(const CVelmRTreeMBR& a, const CVelmRTreeMBR& b);

/// The area of the circle around @p rect.
double volume(const CVelmRTreeMBR& rect);

}  // namespace plain
