#pragma once

#include "common/platform/Builtins.h"
#include "CVelmRTreeNode.h"
#include "spatial/RectGeometry.h"
#include "spatial/RTreeQuery.h"

#include <cstddef>

namespace velm::detail {

/// Asks for the line of the cache that holds an address, which may be any.
inline void prefetchLine(const void* address)
{
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
}

/// Reads and changes the slots of nodes in both of their forms. Sets of slots are bits.
class RTreeSlots
{
public:
    using Node = CVelmRTreeNode;

    /// Makes every slot empty. The level stays.
    static void clear(Node& node);
    /// Fills an empty slot.
    static void fill(Node& node, int slot, const WideRect& rect, void* child);
    static void setRect(Node& node, int slot, const WideRect& rect);
    /// Makes room for one more rectangle.
    static void widen(Node& node, int slot, const WideRect& rect);
    static void erase(Node& node, int slot);

    static unsigned used(const Node& node) { return node.m_used; }
    /// The first empty slot; kMaxBranches if there is none.
    static int firstEmpty(const Node& node) { return lowestBit(~node.m_used); }
    static void* child(const Node& node, int slot) { return node.m_child[slot]; }
    static Node* childNode(const Node& node, int slot)
    {
        return static_cast<Node*>(node.m_child[slot]);
    }
    static __m128 box(const Node& node, int slot) { return _mm_load_ps(node.m_box[slot]); }

    /// The rectangle around all slots that are used. There is one.
    static WideRect cover(const Node& node);

    /// The used slots that may overlap the query; overlaps() tells.
    static unsigned candidates(const Node& node, const RTreeQuery& query);
    /// Whether a candidate overlaps the query.
    static bool overlaps(const Node& node, int slot, const RTreeQuery& query)
    {
        return query.surelyOverlaps(box(node, slot))
               || overlap(query.rect(), load(node.branch[slot].rect));
    }
    /// Whether a used slot lies inside the query.
    static bool liesInside(const Node& node, int slot, const RTreeQuery& query)
    {
        return query.surelyIncludes(box(node, slot))
               || includes(query.rect(), load(node.branch[slot].rect));
    }

    // Fetch what a search reads of a node, which may be null; all, or the children.
    static void prefetch(const Node* node)
    {
        prefetchChildren(node);
        prefetchLine(node, offsetOfChildren() + 128);
        prefetchLine(node, offsetOfChildren() + 192);
    }
    /// Fetches a node that will be changed.
    static void prefetchToFill(Node* node)
    {
        for (size_t offset = 0; offset < sizeof(Node); offset += 64)
            prefetchLine(node, offset);
    }
    static void prefetchChildren(const Node* node)
    {
        prefetchLine(node, offsetOfChildren());
        prefetchLine(node, offsetOfChildren() + 64);
    }

private:
    static void empty(Node& node, int slot);
    static constexpr size_t offsetOfChildren()
    {
        return (sizeof(Node::branch) + 2 * sizeof(int) + 63) / 64 * 64;
    }
    static void prefetchLine(const Node* node, size_t offset)
    {
        detail::prefetchLine(reinterpret_cast<const char*>(node) + offset);
    }
};

}  // namespace velm::detail
