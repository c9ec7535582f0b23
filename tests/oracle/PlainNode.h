#pragma once

#include "CVelmRTreeNode.h"

#include <algorithm>
#include <cmath>

struct PlainNode;

struct PlainBranch
{
    PlainBranch() = default;
    PlainBranch(const CVelmRTreeMBR& bounds, void* content) : rect(bounds), child(content) {}
    PlainNode* node() const { return static_cast<PlainNode*>(child); }

    CVelmRTreeMBR rect;
    void* child = nullptr;  // an identifier in a leaf, else a node; null in an empty slot
};

struct PlainNode
{
    explicit PlainNode(int height) : level(height) {}

    int level;
    int count = 0;  // of slots in use, which may have empty ones between them
    PlainBranch branch[9];
};

/// What the parts of the plain tree have in common.
namespace plain {

constexpr int kMaxBranches = 9;
constexpr int kMinFill = 4;

inline CVelmRTreeMBR combined(const CVelmRTreeMBR& a, const CVelmRTreeMBR& b)
{
    return CVelmRTreeMBR(std::min(a.xmin, b.xmin), std::min(a.ymin, b.ymin),
                         std::max(a.xmax, b.xmax), std::max(a.ymax, b.ymax));
}

inline bool overlaps(const CVelmRTreeMBR& a, const CVelmRTreeMBR& b)
{
    return !(a.xmin > b.xmax || b.xmin > a.xmax || a.ymin > b.ymax || b.ymin > a.ymax);
}

/// Whether @p b lies within @p a.
inline bool includes(const CVelmRTreeMBR& a, const CVelmRTreeMBR& b)
{
    return !(a.xmin > b.xmin || b.xmax > a.xmax || a.ymin > b.ymin || b.ymax > a.ymax);
}

/// The area of the circle around @p rect.
inline double volume(const CVelmRTreeMBR& rect)
{
    const double halfWidth = (rect.xmax - rect.xmin) * 0.5;
    const double halfHeight = (rect.ymax - rect.ymin) * 0.5;
    const double radius = std::sqrt(halfWidth * halfWidth + halfHeight * halfHeight);
    return radius * radius * 3.141593;
}

/// @p node is not empty.
inline CVelmRTreeMBR cover(const PlainNode* node)
{
    CVelmRTreeMBR rect;
    bool first = true;
    for (const PlainBranch& branch : node->branch) {
        if (branch.child) {
            rect = first ? branch.rect : combined(rect, branch.rect);
            first = false;
        }
    }
    return rect;
}

inline PlainBranch branchOf(PlainNode* node)
{
    return PlainBranch(cover(node), node);
}

/// Puts a branch into the first empty slot. @return the new sibling if @p node had to be split,
/// else null
PlainNode* addBranch(PlainNode* node, const PlainBranch& branch);

}  // namespace plain
