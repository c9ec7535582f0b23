#pragma once

#include "CVelmRTreeNode.h"

#include <QVector>

struct PlainNode;

/// The tree of CVelmRTree once more, written to be read rather than to be fast: branches in arrays
/// of structures, every size computed anew, every node from the heap. The tests compare the library
/// with it and the benchmarks measure against it, so its answers never differ from the library's.
/// One thread at a time.
class PlainRTree
{
public:
    using Callback = int (*)(void* id, void* ctx);
    using RectCallback = int (*)(void* id, void* entryRect, void* ctx);

    PlainRTree();
    ~PlainRTree();
    Q_DISABLE_COPY(PlainRTree)

    // What they do, CVelmRTree tells.

    void Init();
    void Destroy();

    int GetCount() const { return m_count; }
    void GetMinMax(double* bounds) const;

    bool InsertRect(CVelmRTreeMBR* rect, void* id, int level);

    bool DeleteRect(CVelmRTreeMBR* rect, void* id);
    bool DeleteID(void* id);
    bool DeleteRectOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx);
    bool DeleteRectInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx);

    int GetOverlap(CVelmRTreeMBR* rect, QVector<void*>& ids) const;
    int GetInclude(CVelmRTreeMBR* rect, QVector<void*>& ids) const;

    int SearchOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx);
    int SearchInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx);
    int SearchOverlapRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx);
    int SearchIncludeRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx);

    void Traversal(Callback cb, void* ctx);
    void TraversalRect(RectCallback cb, void* ctx);

private:
    PlainNode* insertBelow(PlainNode* node, const CVelmRTreeMBR& rect, void* id, int level);
    template<class Enters, class Wanted>
    bool remove(Enters enters, Wanted wanted, Callback cb, void* ctx);

    PlainNode* m_root;
    int m_count = 0;
};
