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

    /// A node without entries; above level 0 it is an RTreeInnerNode. The pool owns it.
    CVelmRTreeNode* make(int level);
    /// Lets make() use a node again that nothing refers to.
    void recycle(CVelmRTreeNode* node);

    /// Whether every branch holds what lies below it, and no rectangle is inverted. The trees that
    /// share the pool tell when that ends.
    bool isRegular() const { return m_isRegular; }
    void setIrregular() { m_isRegular = false; }

private:
    /// The memory for nodes of one kind, in blocks.
    class Store
    {
    public:
        explicit Store(size_t nodeSize);
        ~Store();
        Store(const Store&) = delete;
        Store& operator=(const Store&) = delete;

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

        void addBlock();

        const size_t m_nodeSize;
        const size_t m_greatestBlock;  // nodes
        std::vector<Block> m_blocks;
        Unused* m_unused = nullptr;  // to be used again first
    };

    Store m_leaves;
    Store m_innerNodes;
    bool m_isRegular = true;
};

}  // namespace velm::detail
