#pragma once

#include "VelmCommonGlobal.h"

namespace velm::detail {
class RTreeSlots;
}

/// An axis-aligned rectangle.
class VELMCOMMON_EXPORT CVelmRTreeMBR
{
public:
    CVelmRTreeMBR() = default;
    /// The bounds are kept as given, whichever is the greater.
    CVelmRTreeMBR(double left, double bottom, double right, double top)
        : xmin(left), ymin(bottom), xmax(right), ymax(top)
    {}

    /// Sets all bounds to 0.
    void InitRect() { *this = CVelmRTreeMBR(); }
    /// Makes it the empty rectangle, which is not valid.
    void SetInvalidRect() { *this = CVelmRTreeMBR(1.0, 0.0, -1.0, 0.0); }
    /// Whether each low bound is at most the high one.
    bool IsValideRect() const { return xmin <= xmax && ymin <= ymax; }

    double xmin = 0.0;  ///< low bound of x
    double ymin = 0.0;  ///< low bound of y
    double xmax = 0.0;  ///< high bound of x, itself inside
    double ymax = 0.0;  ///< high bound of y, itself inside
};

/// A slot of a node: a rectangle and what lies in it. The slot is empty while the child is null.
class VELMCOMMON_EXPORT CVelmRTreeBranch
{
public:
    CVelmRTreeMBR rect;     ///< covers all that lies in the child
    void* child = nullptr;  ///< in a leaf the caller's identifier, else a CVelmRTreeNode
};

/// A node of the tree. Slots that hold something need not be adjacent. The branches of a caller's
/// own node may be set; those of a tree change through the tree only, which keeps a compact form of
/// them too.
class VELMCOMMON_EXPORT CVelmRTreeNode
{
public:
    static constexpr int kMaxBranches = 9;  ///< slots of a node

    CVelmRTreeNode();

    /// Empties the node and takes its level away, as it is when it is new.
    void InitNode();

    CVelmRTreeBranch branch[kMaxBranches];  ///< in use or empty, in any order
    int count;                              ///< slots that are not empty
    int level;  ///< 0 for a leaf, else one more than that of its children; -1 for none

private:
    friend class velm::detail::RTreeSlots;

    // What searches read instead of the branches, in a few lines of the cache: the children; which
    // slots are used, as bits; and the rectangles as -xmin, -ymin, xmax, ymax in single precision,
    // made larger to be safe.
    alignas(64) void* m_child[kMaxBranches];
    unsigned m_used;
    alignas(16) float m_box[kMaxBranches][4];
};

/// A cell of a list of nodes.
class VELMCOMMON_EXPORT CVelmRTreeListNode
{
public:
    /// Puts @p first in front of the list @p rest.
    CVelmRTreeListNode(CVelmRTreeNode* first, CVelmRTreeListNode* rest) : node(first), next(rest) {}
    virtual ~CVelmRTreeListNode();
    CVelmRTreeListNode(const CVelmRTreeListNode&) = default;             ///< the same node and rest
    CVelmRTreeListNode& operator=(const CVelmRTreeListNode&) = default;  ///< the same node and rest

    CVelmRTreeNode* node;      ///< not owned
    CVelmRTreeListNode* next;  ///< the rest, not owned; null at the end
};
