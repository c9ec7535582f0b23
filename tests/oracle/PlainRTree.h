#pragma once

#include "oracle/PlainNode.h"

#include <QVector>

#include <functional>
#include <vector>

/// The tree of CVelmRTree once more, written to be read rather than to be fast: branches in arrays
/// of structures, every size computed anew, every node from the heap. The tests compare the library
/// with it and the benchmarks measure against it, so its answers never differ from the library's.
/// One thread at a time.
class PlainRTree
{
public:
    using Rect = CVelmRTreeMBR;
    using Callback = int (*)(void* id, void* ctx);
    using RectCallback = int (*)(void* id, void* entryRect, void* ctx);

    PlainRTree() = default;
    ~PlainRTree() { destroy(m_root); }
    Q_DISABLE_COPY(PlainRTree)

    // What they do, CVelmRTree tells.

    void Init();
    void Destroy() { Init(); }
    int GetCount() const { return m_count; }
    void GetMinMax(double* bounds) const;

    bool InsertRect(Rect* rect, void* id, int level);

    bool DeleteRect(Rect* r, void* id)
    {
        const bool valid = r->IsValideRect() && id;
        return valid && (remove(plain::overlapping(r), plain::is(id)) || DeleteID(id));
    }
    bool DeleteID(void* id) { return id && remove(plain::any, plain::is(id)); }
    bool DeleteRectOverlap(Rect* r, Callback cb, void* ctx)
    {
        return r->IsValideRect() && remove(plain::overlapping(r), plain::any, cb, ctx);
    }
    bool DeleteRectInclude(Rect* r, Callback cb, void* ctx)
    {
        return r->IsValideRect() && remove(plain::overlapping(r), plain::within(r), cb, ctx);
    }

    int GetOverlap(Rect* r, QVector<void*>& ids) const { return SearchOverlap(r, &append, &ids); }
    int GetInclude(Rect* r, QVector<void*>& ids) const { return SearchInclude(r, &append, &ids); }
    template<class AnyCallback>
    int SearchOverlap(Rect* r, AnyCallback cb, void* ctx) const
    {
        return search(m_root, plain::overlapping(r), plain::overlapping(r), cb, ctx);
    }
    template<class AnyCallback>
    int SearchInclude(Rect* r, AnyCallback cb, void* ctx) const
    {
        return search(m_root, plain::overlapping(r), plain::within(r), cb, ctx);
    }
    int SearchOverlapRect(Rect* r, RectCallback cb, void* c) const
    {
        return SearchOverlap(r, cb, c);
    }
    int SearchIncludeRect(Rect* r, RectCallback cb, void* c) const
    {
        return SearchInclude(r, cb, c);
    }
    void Traversal(Callback cb, void* ctx) const { traverse(m_root, cb, ctx); }
    void TraversalRect(RectCallback cb, void* ctx) const { traverse(m_root, cb, ctx); }

private:
    using Test = std::function<bool(const PlainBranch& branch)>;
    using Nodes = std::vector<PlainNode*>;

    static int append(void* id, void* ids);
    static bool ask(Callback cb, void* ctx, PlainBranch& b) { return !cb || cb(b.child, ctx); }
    static bool ask(RectCallback cb, void* ctx, PlainBranch& b)
    {
        return !cb || cb(b.child, &b.rect, ctx);
    }

    /// Visits each entry that @p matches. A callback that answers 0 ends its leaf only.
    /// @return how many visits there were
    template<class Enters, class Matches, class AnyCallback>
    static int search(PlainNode* node, Enters enters, Matches matches, AnyCallback cb, void* ctx)
    {
        int hits = 0;
        for (PlainBranch& branch : node->branch) {
            if (!branch.child)
                continue;
            if (node->level > 0) {
                hits += enters(branch) ? search(branch.node(), enters, matches, cb, ctx) : 0;
            } else if (matches(branch)) {
                ++hits;
                if (!ask(cb, ctx, branch))
                    break;
            }
        }
        return hits;
    }

    template<class AnyCallback>
    static void traverse(PlainNode* node, AnyCallback cb, void* ctx)
    {
        for (PlainBranch& branch : node->branch) {
            if (branch.child && node->level > 0)
                traverse(branch.node(), cb, ctx);
            else if (branch.child)
                ask(cb, ctx, branch);
        }
    }

    static void destroy(PlainNode* node);
    PlainNode* insertBelow(PlainNode* node, const PlainBranch& added, int level);
    void* removeBelow(PlainNode* node, const Test& enters, const Test& wanted, Nodes& dissolved);
    bool remove(const Test& enters, const Test& wanted, Callback cb = nullptr, void* ctx = nullptr);

    PlainNode* m_root = new PlainNode{0};
    int m_count = 0;
};
