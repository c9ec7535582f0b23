#include "CVelmRTree.h"

#include "spatial/OwnArithmetic.h"
#include "spatial/RTreeNodePool.h"
#include "spatial/RTreeSlots.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

using namespace velm::detail;

namespace {

using Node = CVelmRTreeNode;
using Branch = CVelmRTreeBranch;

/// Nodes of a level that are looked at before their children: enough for the memory to be fetched
/// side by side.
constexpr int kRun = 16;

/// A node to be looked at, and whether all below it lies inside the query.
struct Visit
{
    const Node* node;
    bool isWhole;
};

/// Looks for entries in the order of a depth-first search by slots, but level by level: the nodes
/// of a run are fetched together.
template<class LookAt>
class Search
{
public:
    /// @p lookAt gets each leaf, as a Visit. Nothing is known to be whole unless @p isRegular.
    Search(const RTreeQuery& query, bool isRegular, LookAt& lookAt)
        : m_query(query), m_isRegular(isRegular), m_lookAt(lookAt)
    {}

    /// @p visits are at most kRun nodes of one level.
    void run(const Visit* visits, int count)
    {
        if (visits[0].node->level < 1) {
            for (int i = 0; i < count; ++i)
                m_lookAt(visits[i]);
            return;
        }
        Visit children[kRun * Node::kMaxBranches + 1];  // one more is written to
        Visit* end = children;
        for (int i = 0; i < count; ++i)
            end = visits[i].isWhole ? addAll(*visits[i].node, end)
                                    : addOverlapping(*visits[i].node, end);
        for (const Visit* next = children; next < end; next += kRun)
            run(next, static_cast<int>(std::min<ptrdiff_t>(kRun, end - next)));
    }

private:
    static Visit* addAll(const Node& node, Visit* end)
    {
        for (int slot = 0; slot < Node::kMaxBranches; ++slot) {
            const Node* child = RTreeSlots::childNode(node, slot);
            RTreeSlots::prefetchChildren(child);
            *end = {child, true};
            end += child ? 1 : 0;
        }
        return end;
    }

    Visit* addOverlapping(const Node& node, Visit* end) const
    {
        for (unsigned slots = RTreeSlots::candidates(node, m_query); slots; slots &= slots - 1) {
            const int slot = lowestBit(slots);
            const Node* child = RTreeSlots::childNode(node, slot);
            RTreeSlots::prefetch(child);
            *end = {child, m_isRegular && m_query.surelyIncludes(RTreeSlots::box(node, slot))};
            end += RTreeSlots::overlaps(node, slot, m_query) ? 1 : 0;
        }
        return end;
    }

    const RTreeQuery& m_query;
    bool m_isRegular;
    LookAt& m_lookAt;
};

struct Overlap
{
    static unsigned candidates(const Node& leaf, const RTreeQuery& query, bool /*isRegular*/)
    {
        return RTreeSlots::candidates(leaf, query);
    }
    static bool matches(const Node& leaf, int slot, const RTreeQuery& query)
    {
        return RTreeSlots::overlaps(leaf, slot, query);
    }
};

struct Include
{
    /// An inverted rectangle may lie inside another without overlapping it.
    static unsigned candidates(const Node& leaf, const RTreeQuery& query, bool isRegular)
    {
        return isRegular ? RTreeSlots::candidates(leaf, query) : RTreeSlots::used(leaf);
    }
    static bool matches(const Node& leaf, int slot, const RTreeQuery& query)
    {
        return RTreeSlots::liesInside(leaf, slot, query);
    }
};

/// Calls @p use with each entry of a leaf that matches until it answers false.
template<class Test, class Use>
void forEachMatch(const Visit& leaf, const RTreeQuery& query, bool isRegular, const Use& use)
{
    const Node& node = *leaf.node;
    unsigned slots =
        leaf.isWhole ? RTreeSlots::used(node) : Test::candidates(node, query, isRegular);
    for (; slots; slots &= slots - 1) {
        const int slot = lowestBit(slots);
        if ((leaf.isWhole || Test::matches(node, slot, query)) && !use(node.branch[slot]))
            return;
    }
}

/// Appends the entries of leaves that match to the caller's identifiers, in portions. Whether an
/// entry counts is added up, not branched on: it can hardly be foretold.
template<class Test>
class Collector
{
public:
    Collector(const RTreeQuery& query, bool isRegular, QVector<void*>& ids)
        : m_query(query), m_isRegular(isRegular), m_ids(ids)
    {}

    void operator()(const Visit& leaf)
    {
        if (m_size > kPortion - Node::kMaxBranches)
            flush();
        int size = m_size;
        const Node& node = *leaf.node;
        if (leaf.isWhole) {
            for (int slot = 0; slot < Node::kMaxBranches; ++slot) {
                m_portion[size] = RTreeSlots::child(node, slot);
                size += m_portion[size] ? 1 : 0;
            }
        } else {
            for (unsigned slots = Test::candidates(node, m_query, m_isRegular); slots;
                 slots &= slots - 1) {
                const int slot = lowestBit(slots);
                m_portion[size] = RTreeSlots::child(node, slot);
                size += Test::matches(node, slot, m_query) ? 1 : 0;
            }
        }
        m_size = size;
    }

    void flush()
    {
        const int before = m_ids.size();
        m_ids.resize(before + m_size);
        std::memcpy(m_ids.data() + before, m_portion, static_cast<size_t>(m_size) * sizeof(void*));
        m_size = 0;
    }

private:
    static constexpr int kPortion = 256;

    const RTreeQuery& m_query;
    const bool m_isRegular;
    QVector<void*>& m_ids;
    int m_size = 0;
    void* m_portion[kPortion];
};

template<class LookAt>
void search(const Node* root, const RTreeQuery& query, bool isRegular, LookAt& lookAt)
{
    const Visit visit{root, false};
    if (root)
        Search<LookAt>(query, isRegular, lookAt).run(&visit, 1);
}

/// @return how many identifiers were appended; none if memory for them runs out
template<class Test>
int collect(const Node* root, const CVelmRTreeMBR& rect, bool isRegular, QVector<void*>& ids)
{
    const OwnArithmetic arithmetic;
    const int before = ids.size();
    const RTreeQuery query(rect);
    Collector<Test> collector(query, isRegular, ids);
    try {
        search(root, query, isRegular, collector);
        collector.flush();
    } catch (const std::bad_alloc&) {
        if (ids.size() > before)
            ids.resize(before);
    }
    return ids.size() - before;
}

/// @return how many entries matched, up to those for which @p use answered false
template<class Test, class Use>
int visit(const Node* root, const CVelmRTreeMBR& rect, bool isRegular, const Use& use)
{
    const OwnArithmetic arithmetic;
    const RTreeQuery query(rect);
    int hits = 0;
    const auto count = [&](const Branch& branch) {
        ++hits;
        return arithmetic.atHost([&] { return use(branch); });
    };
    const auto lookAt = [&](const Visit& leaf) {
        forEachMatch<Test>(leaf, query, isRegular, count);
    };
    search(root, query, isRegular, lookAt);
    return hits;
}

auto callWithId(CVelmRTree::Callback cb, void* ctx)
{
    return [cb, ctx](const Branch& branch) { return !cb || cb(branch.child, ctx) != 0; };
}

/// The callback gets the stored rectangle, which it may only read.
auto callWithRect(CVelmRTree::RectCallback cb, void* ctx)
{
    return [cb, ctx](const Branch& branch) {
        return !cb || cb(branch.child, const_cast<CVelmRTreeMBR*>(&branch.rect), ctx) != 0;
    };
}

bool isRegular(const std::shared_ptr<RTreeNodePool>& pool)
{
    return pool && pool->isRegular();
}

template<class Use>
void traverse(const Node& node, const Use& use)
{
    for (const Branch& branch : node.branch) {
        if (!branch.child)
            continue;
        if (node.level > 0)
            traverse(*static_cast<const Node*>(branch.child), use);
        else
            use(branch);
    }
}

}  // namespace

int CVelmRTree::GetOverlap(CVelmRTreeMBR* rect, QVector<void*>& ids) const
{
    return collect<Overlap>(m_root, *rect, isRegular(m_pool), ids);
}

int CVelmRTree::GetInclude(CVelmRTreeMBR* rect, QVector<void*>& ids) const
{
    return collect<Include>(m_root, *rect, isRegular(m_pool), ids);
}

int CVelmRTree::SearchOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    return visit<Overlap>(m_root, *rect, isRegular(m_pool), callWithId(cb, ctx));
}

int CVelmRTree::SearchInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    return visit<Include>(m_root, *rect, isRegular(m_pool), callWithId(cb, ctx));
}

int CVelmRTree::SearchOverlapRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx)
{
    return visit<Overlap>(m_root, *rect, isRegular(m_pool), callWithRect(cb, ctx));
}

int CVelmRTree::SearchIncludeRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx)
{
    return visit<Include>(m_root, *rect, isRegular(m_pool), callWithRect(cb, ctx));
}

void CVelmRTree::Traversal(Callback cb, void* ctx)
{
    if (m_root)
        traverse(*m_root, callWithId(cb, ctx));
}

void CVelmRTree::TraversalRect(RectCallback cb, void* ctx)
{
    if (m_root)
        traverse(*m_root, callWithRect(cb, ctx));
}
