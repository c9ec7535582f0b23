#include "CVelmRTree.h"

#include "spatial/OwnArithmetic.h"
#include "spatial/RTreeNodePool.h"
#include "spatial/RTreeSlots.h"

#include <new>

using namespace velm::detail;

namespace {

constexpr int kMinFill = 4;
constexpr int kNoSlot = -1;

/// The first slot that is used and that @p fits; kNoSlot if there is none.
template<class Fits>
int findSlot(const CVelmRTreeNode& node, const Fits& fits)
{
    for (unsigned slots = RTreeSlots::used(node); slots; slots &= slots - 1) {
        if (fits(node, lowestBit(slots)))
            return lowestBit(slots);
    }
    return kNoSlot;
}

bool anySlot(const CVelmRTreeNode& /*node*/, int /*slot*/)
{
    return true;
}

auto holds(void* id)
{
    return
        [id](const CVelmRTreeNode& node, int slot) { return RTreeSlots::child(node, slot) == id; };
}

/// The branches of a node that overlap the query; all without one. They are fetched.
unsigned branchesBelow(const CVelmRTreeNode& node, const RTreeQuery* query)
{
    unsigned slots = query ? RTreeSlots::candidates(node, *query) : RTreeSlots::used(node);
    for (unsigned rest = slots; rest; rest &= rest - 1) {
        const int slot = lowestBit(rest);
        if (query && !RTreeSlots::overlaps(node, slot, *query))
            slots &= ~(1U << slot);
        else if (node.level == 1)
            RTreeSlots::prefetchToFill(RTreeSlots::childNode(node, slot));
        else
            RTreeSlots::prefetch(RTreeSlots::childNode(node, slot));
    }
    return slots;
}

/// Whether a bound of the cover @p cover may be that of the rectangle @p part alone: the cover of
/// the others may be smaller then.
bool touchesBorder(const CVelmRTreeMBR& cover, const CVelmRTreeMBR& part)
{
    return part.xmin == cover.xmin || part.ymin == cover.ymin || part.xmax == cover.xmax
           || part.ymax == cover.ymax;
}

void tellNobody(void*) {}

/// Tells the caller which entry was removed.
auto tell(CVelmRTree::Callback cb, void* ctx, const OwnArithmetic& arithmetic)
{
    return [cb, ctx, &arithmetic](void* id) {
        if (cb)
            arithmetic.atHost([=] { return cb(id, ctx); });
    };
}

}  // namespace

bool CVelmRTree::DeleteRect(CVelmRTreeMBR* rect, void* id)
{
    const OwnArithmetic arithmetic;
    if (!rect->IsValideRect() || !id)
        return false;
    return remove(rect, holds(id), tellNobody) || DeleteID(id);
}

bool CVelmRTree::DeleteID(void* id)
{
    const OwnArithmetic arithmetic;
    return id && remove(nullptr, holds(id), tellNobody);
}

bool CVelmRTree::DeleteRectOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    const OwnArithmetic arithmetic;
    return rect->IsValideRect() && remove(rect, anySlot, tell(cb, ctx, arithmetic));
}

bool CVelmRTree::DeleteRectInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    const OwnArithmetic arithmetic;
    const RTreeQuery query(*rect);
    const auto liesInside = [&query](const Node& node, int slot) {
        return RTreeSlots::liesInside(node, slot, query);
    };
    return rect->IsValideRect() && remove(rect, liesInside, tell(cb, ctx, arithmetic));
}

/// Removes the first entry that @p fits below branches that overlap @p rect, or below all if it is
/// null. @p removed gets its identifier, before the tree is tidied up. @return whether there was
/// one
template<class Fits, class Removed>
bool CVelmRTree::remove(const Rect* rect, const Fits& fits, const Removed& removed)
{
    if (!m_root || !reserveForReinsertion())
        return false;
    noteChange();
    const RTreeQuery query(rect ? *rect : Rect());
    NodeList* dissolved = nullptr;
    Rect lost;
    if (!_DeleteRect(m_root, rect ? &query : nullptr, fits, removed, dissolved, lost))
        return false;
    reinsert(dissolved);
    shortenRoot();
    return true;
}

/// Removes an entry below a node. Children that keep too few are put in front of @p dissolved. @p
/// lost becomes a rectangle that the node no longer has to hold.
template<class Fits, class Removed>
bool CVelmRTree::_DeleteRect(Node* node, const RTreeQuery* query, const Fits& fits,
                             const Removed& removed, NodeList*& dissolved, Rect& lost)
{
    if (node->level < 1) {
        const int slot = findSlot(*node, fits);
        if (slot == kNoSlot)
            return false;
        void* id = RTreeSlots::child(*node, slot);
        lost = node->branch[slot].rect;
        --m_count;
        RTreeSlots::erase(*node, slot);
        removed(id);
        return true;
    }
    for (unsigned slots = branchesBelow(*node, query); slots != 0; slots &= slots - 1) {
        const int slot = lowestBit(slots);
        Node* child = RTreeSlots::childNode(*node, slot);
        if (!_DeleteRect(child, query, fits, removed, dissolved, lost))
            continue;
        const Rect before = node->branch[slot].rect;
        if (child->count < kMinFill) {
            dissolved = m_pool->cell(child, dissolved);
            RTreeSlots::erase(*node, slot);
            lost = before;
        } else if (touchesBorder(before, lost) || !m_pool->isRegular()) {
            RTreeSlots::setRect(*node, slot, RTreeSlots::cover(*child));
            lost = before;
        }
        return true;
    }
    return false;
}

/// Before a deletion, which may dissolve a node of every level up to the root: each leaves some
/// branches to be inserted. @return false if memory runs out
bool CVelmRTree::reserveForReinsertion()
{
    constexpr int kBranches = kMinFill - 1;
    const int levels = m_root->level;
    const int height = levels + 1 + levels / 2;  // new roots included
    const int perBranch = m_pool->isEntangled() ? 2 * (height + 1) : height + 1;
    if (levels == 0)
        return true;
    try {
        m_pool->reserve(kBranches * perBranch, kBranches * levels * perBranch);
        m_pool->reserveCells(levels);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

/// Inserts what the nodes of the list hold, each branch at its level, and frees the list.
void CVelmRTree::reinsert(NodeList* dissolved)
{
    while (dissolved) {
        Node* node = dissolved->node;
        for (const Branch& branch : node->branch) {
            if (branch.child)
                insert(branch.rect, branch.child, node->level);
        }
        m_pool->recycle(node);
        dissolved = dissolved->next;
    }
    m_pool->clearCells();
}

/// Makes the only child of the root the root.
void CVelmRTree::shortenRoot()
{
    if (m_root->level < 1 || m_root->count != 1)
        return;
    Node* child = RTreeSlots::childNode(*m_root, findSlot(*m_root, anySlot));
    m_pool->recycle(m_root);
    m_root = child;
}
