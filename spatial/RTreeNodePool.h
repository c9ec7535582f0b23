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
    /// Lets make() use a node again that its tree no longer needs.
    void recycle(CVelmRTreeNode* node);

    /// Whether every branch holds what lies below it, and no rectangle is inverted. The trees that
    /// share the pool tell when that ends.
    bool isRegular() const { return m_isRegular; }
    void setIrregular() { m_isRegular = false; }
    /// To be called when one of several trees changes: any node may be in another one too, and with
    /// another cover, so none is used again.
    void setEntangled();

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
    bool m_isEntangled = false;
};

}  // namespace velm::detail
