#pragma once

#include "CVelmRTreeNode.h"

#include <cstddef>
#include <vector>

namespace velm::detail {

/// Makes the nodes of a tree side by side in memory, and frees them all at its end.
class RTreeNodePool
{
public:
    RTreeNodePool();
    ~RTreeNodePool();
    RTreeNodePool(const RTreeNodePool&) = delete;
    RTreeNodePool& operator=(const RTreeNodePool&) = delete;

    /// Makes sure that make() needs no memory for so many nodes. Throws std::bad_alloc.
    void reserve(int leaves, int innerNodes)
    {
        m_leaves.reserve(static_cast<size_t>(leaves));
        m_innerNodes.reserve(static_cast<size_t>(innerNodes));
    }
    /// A node without entries; above level 0 it is an RTreeInnerNode. The pool owns it. Throws
    /// std::bad_alloc.
    CVelmRTreeNode* make(int level);
    /// Lets make() use a node again that its tree no longer needs.
    void recycle(CVelmRTreeNode* node);

    // The cells of the list of one deletion, which the pool owns.

    /// Makes sure that cell() needs no memory for so many. Throws std::bad_alloc.
    void reserveCells(int count) { m_cells.reserve(static_cast<size_t>(count)); }
    /// A cell in front of the list @p next.
    CVelmRTreeListNode* cell(CVelmRTreeNode* node, CVelmRTreeListNode* next)
    {
        return &m_cells.emplace_back(node, next);
    }
    void clearCells() { m_cells.clear(); }

    /// Whether every branch holds what lies below it, and no rectangle is inverted. The trees that
    /// share the pool tell when that ends.
    bool isRegular() const { return m_isRegular; }
    void setIrregular() { m_isRegular = false; }
    /// To be called when one of several trees changes: any node may be in another one too, and with
    /// another cover, so none is used again.
    void setEntangled();
    bool isEntangled() const { return m_isEntangled; }

private:
    /// The memory for nodes of one kind, in blocks.
    class Store
    {
    public:
        explicit Store(size_t nodeSize);
        ~Store();
        Store(const Store&) = delete;
        Store& operator=(const Store&) = delete;

        void reserve(size_t nodes)
        {
            if (m_available < nodes)
                addBlock(nodes);
        }
        void* take();
        void giveBack(void* memory);

    private:
        struct Block
        {
            char* memory;
            size_t size;  // nodes
            size_t used;
        };
        struct Unused
        {
            Unused* next;
        };

        void addBlock(size_t least);

        const size_t m_nodeSize;
        const size_t m_greatestBlock;  // nodes
        std::vector<Block> m_blocks;
        Unused* m_unused = nullptr;  // to be used again first
        size_t m_available = 0;      // unused ones, and those that the last block still has
    };

    Store m_leaves;
    Store m_innerNodes;
    std::vector<CVelmRTreeListNode> m_cells;
    bool m_isRegular = true;
    bool m_isEntangled = false;
};

}  // namespace velm::detail
