#pragma once

#include "CVelmRTreeNode.h"
#include "CVelmRTreePartition.h"
#include "VelmCommonGlobal.h"

#include <QVector>

#include <memory>

namespace velm::detail {
class RTreeNodePool;
class RTreeQuery;
}  // namespace velm::detail

/// A two-dimensional R-tree in memory (Guttman 1984, quadratic split): it maps rectangles to
/// identifiers, pointers that it never owns or follows. The size of a rectangle, by which every
/// choice is made, is the area of the circle around it.
///
/// Touching rectangles overlap; equal bounds count as inside. Results come depth-first in the order
/// of slots. An identifier inserted twice is stored twice, and a deletion removes one of them.
/// Rectangles are passed by pointer, which must not be null.
///
/// One thread at a time in one tree and its copies, also for searches; trees that share no nodes
/// are independent. Callbacks must not change the tree, nor the rectangles that they get. Results
/// do not depend on how the host has set rounding and exceptions of its floating-point arithmetic;
/// callbacks run as it has.
class VELMCOMMON_EXPORT CVelmRTree
{
public:
    /// Answers 0 to end the search of the current leaf.
    using Callback = int (*)(void* id, void* ctx);
    /// The same, with the entry's rectangle, a CVelmRTreeMBR*.
    using RectCallback = int (*)(void* id, void* entryRect, void* ctx);

    CVelmRTree();
    virtual ~CVelmRTree();
    /// The copy shares the nodes, which the last tree frees; what one tree changes, the other sees
    /// in part: callers hand trees on by value and count on it that no node is copied. Once both
    /// have changed, entries may be found twice or not at all.
    CVelmRTree(const CVelmRTree& other);
    CVelmRTree& operator=(const CVelmRTree& other);  ///< shares likewise

    /// Throws all entries away; the counter is 0 then.
    void Init();
    /// Frees all nodes. A tree that is used afterwards begins anew.
    void Destroy();

    /// The number of insertions less that of deletions. Entries that a deletion moves count again:
    /// callers get an approximate size.
    int GetCount() const { return m_count; }
    /// The rectangle around all entries, as xmin, ymin, xmax, ymax; nothing is written if there are
    /// none.
    void GetMinMax(double* bounds) const;

    /// Inserts @p id. NaN bounds are repaired in the caller's rectangle first: low ones become 0,
    /// high ones the low one plus 1. @p level is 0 for entries. For a higher one, @p id is a
    /// CVelmRTreeNode of the level below it, made with new, its branches, count and level set,
    /// which the tree takes over; every node below it stands in one place. A null id and a level
    /// above the root's store nothing, nor does an empty node or one of another level, which stays
    /// the caller's. @return true; false if memory runs out, and the tree stays as it was
    bool InsertRect(CVelmRTreeMBR* rect, void* id, int level);

    /// @name Deletions
    /// @return whether an entry was removed. If memory for moving others runs out, none is, and the
    /// tree stays as it was.
    /// @{

    /// Deletes an entry by looking below rectangles that overlap @p rect, then everywhere.
    /// A rectangle that is not valid, or a null id, is ignored.
    bool DeleteRect(CVelmRTreeMBR* rect, void* id);
    /// Deletes an entry by looking everywhere.
    bool DeleteID(void* id);
    /// Removes the first entry of the first leaf that is reached below rectangles that overlap @p
    /// rect, which need not itself overlap it. @p cb, which may be null, gets
    /// the identifier once its slot is empty, before entries are moved.
    bool DeleteRectOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx);
    /// Removes the first entry that lies inside @p rect. @p cb as above.
    bool DeleteRectInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx);

    /// @}

    /// @{
    /// Appends to @p ids all that overlaps @p rect (GetOverlap) or lies inside it (GetInclude).
    /// @return how many; none where memory runs out
    int GetOverlap(CVelmRTreeMBR* rect, QVector<void*>& ids) const;
    int GetInclude(CVelmRTreeMBR* rect, QVector<void*>& ids) const;
    /// @}

    /// @{
    /// Calls @p cb, if it is not null, for each entry that overlaps @p rect (the Overlap forms) or
    /// lies inside it (Include). An answer of 0 ends the current leaf only: to end the search, keep
    /// answering 0. @p ctx is handed on as it is.
    /// @return the number of entries, with those that ended their leaves and without those behind
    /// them
    int SearchOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx);
    int SearchInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx);
    int SearchOverlapRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx);
    int SearchIncludeRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx);
    /// @}

    /// @{
    /// Calls @p cb for every entry, whatever it answers; @p ctx is handed on as it is.
    void Traversal(Callback cb, void* ctx);
    void TraversalRect(RectCallback cb, void* ctx);
    /// @}

private:
    using Node = CVelmRTreeNode;
    using Branch = CVelmRTreeBranch;
    using Rect = CVelmRTreeMBR;
    using NodeList = CVelmRTreeListNode;

    // NOLINTBEGIN(bugprone-reserved-identifier): the names are given

    bool _InsertRect(const Rect& rect, void* id, Node* node, int nodeLevel, Node*& newNode,
                     int level);
    bool _AddBranch(const Branch& branch, Node* node, Node*& newNode);

    void _SplitNode(Node* node, const Branch& extra, Node*& newNode);
    void _GetBranches(Node* node, const Branch& extra);
    void _MethodZero(CVelmRTreePartition& partition, int minFill) const;
    void _InitPart(CVelmRTreePartition& partition, int total, int minFill) const;
    void _PickSeeds(CVelmRTreePartition& partition) const;
    void _Classify(int index, int group, CVelmRTreePartition& partition) const;
    void _LoadNodes(Node* node, Node* other, const CVelmRTreePartition& partition) const;

    template<class Fits, class Removed>
    bool _DeleteRect(Node* node, const velm::detail::RTreeQuery* query, const Fits& fits,
                     const Removed& removed, NodeList*& dissolved, Rect& lost);

    // NOLINTEND(bugprone-reserved-identifier)

    void begin();
    void reserveForInsertion(int leaves, int innerNodes);
    bool reserveForReinsertion();
    void* takeOver(Node* node);
    void insert(const Rect& rect, void* child, int level);
    template<class Fits, class Removed>
    bool remove(const Rect* rect, const Fits& fits, const Removed& removed);
    void reinsert(NodeList* dissolved);
    void shortenRoot();
    void noteChange();

    Node* m_root = nullptr;
    int m_count = 0;
    std::shared_ptr<velm::detail::RTreeNodePool> m_pool;  // owns the nodes; copies share it

    // scratch of a split
    Branch m_branchBuf[Node::kMaxBranches + 1];
    int m_branchCount = 0;
    Rect m_coverSplit;
    double m_coverSplitArea = 0.0;
    CVelmRTreePartition m_partition;
};
