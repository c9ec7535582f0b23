#include "spatial/RTreeSlots.h"

#include "spatial/RTreeInnerNode.h"

#include <limits>

namespace velm::detail {

namespace {

constexpr int kSlots = CVelmRTreeNode::kMaxBranches;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Which of four masks are 0 in all quarters.
unsigned clearOnes(__m128 first, __m128 second, __m128 third, __m128 fourth)
{
    const __m128i low = _mm_packs_epi32(_mm_castps_si128(first), _mm_castps_si128(second));
    const __m128i high = _mm_packs_epi32(_mm_castps_si128(third), _mm_castps_si128(fourth));
    const __m128i clear = _mm_cmpeq_epi32(_mm_packs_epi16(low, high), _mm_setzero_si128());
    return static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(clear)));
}

}  // namespace

void RTreeSlots::clear(Node& node)
{
    for (int slot = 0; slot < kSlots; ++slot)
        empty(node, slot);
    node.m_used = 0;
    node.count = 0;
}

void RTreeSlots::fill(Node& node, int slot, const WideRect& rect, void* child)
{
    node.branch[slot].child = child;
    node.m_child[slot] = child;
    node.m_used |= 1U << slot;
    ++node.count;
    setRect(node, slot, rect);
}

void RTreeSlots::setRect(Node& node, int slot, const WideRect& rect)
{
    store(rect, node.branch[slot].rect);
    _mm_store_ps(node.m_box[slot], boundsAbove(rect));
    if (node.level > 0)
        static_cast<RTreeInnerNode&>(node).size[slot] = size(rect);
}

void RTreeSlots::widen(Node& node, int slot, const WideRect& rect)
{
    const WideRect before = load(node.branch[slot].rect);
    if (!includes(before, rect))
        setRect(node, slot, combined(rect, before));
}

void RTreeSlots::erase(Node& node, int slot)
{
    empty(node, slot);
    node.m_used &= ~(1U << slot);
    --node.count;
}

void RTreeSlots::empty(Node& node, int slot)
{
    node.branch[slot] = CVelmRTreeBranch();
    node.m_child[slot] = nullptr;
    _mm_store_ps(node.m_box[slot], _mm_set1_ps(-std::numeric_limits<float>::infinity()));
    if (node.level > 0)
        static_cast<RTreeInnerNode&>(node).size[slot] = -kInfinity;
}

WideRect RTreeSlots::cover(const Node& node)
{
    unsigned slots = node.m_used;
    WideRect cover = load(node.branch[lowestBit(slots)].rect);
    for (slots &= slots - 1; slots; slots &= slots - 1)
        cover = combined(cover, load(node.branch[lowestBit(slots)].rect));
    return cover;
}

unsigned RTreeSlots::candidates(const Node& node, const RTreeQuery& query)
{
    const auto misses = [&](int slot) { return query.misses(box(node, slot)); };
    const unsigned first = clearOnes(misses(0), misses(1), misses(2), misses(3));
    const unsigned second = clearOnes(misses(4), misses(5), misses(6), misses(7));
    const unsigned last = _mm_movemask_ps(misses(8)) == 0 ? 1 : 0;
    return (first | second << 4 | last << 8) & node.m_used;
}

}  // namespace velm::detail
