#include "spatial/RTreeNodePool.h"

#include "common/platform/Platform.h"
#include "spatial/RTreeInnerNode.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <type_traits>

namespace velm::detail {

namespace {

using Node = CVelmRTreeNode;

// Blocks grow with the tree up to some large pages of memory.
constexpr size_t kLargePage = 2 * 1024 * 1024;
constexpr size_t kGreatestBlock = 4 * kLargePage;
constexpr size_t kFirstBlock = 4;  // nodes

static_assert(std::is_trivially_destructible_v<RTreeInnerNode>,
              "blocks are freed without their nodes");

}  // namespace

RTreeNodePool::Store::Store(size_t nodeSize)
    : m_nodeSize(nodeSize), m_greatestBlock(kGreatestBlock / nodeSize)
{}

RTreeNodePool::Store::~Store()
{
    for (const Block& block : m_blocks)
        ::operator delete (block.memory, std::align_val_t{alignof(Node)});
}

void* RTreeNodePool::Store::take()
{
    reserve(1);
    --m_available;
    if (m_unused) {
        Unused* unused = m_unused;
        m_unused = unused->next;
        return unused;
    }
    Block& block = m_blocks.back();
    return block.memory + m_nodeSize * block.used++;
}

void RTreeNodePool::Store::giveBack(void* memory)
{
    m_unused = new (memory) Unused{m_unused};
    ++m_available;
}

void RTreeNodePool::Store::addBlock(size_t least)
{
    const size_t grown =
        m_blocks.empty() ? kFirstBlock : std::min(2 * m_blocks.back().size, m_greatestBlock);
    const size_t size = std::max(grown, least);
    m_blocks.reserve(m_blocks.size() + 1);
    void* memory = ::operator new (size* m_nodeSize, std::align_val_t{alignof(Node)});
    if (size * m_nodeSize >= kLargePage)
        platform::useLargePages(memory, size * m_nodeSize);
    // What the last block still has is used first.
    for (Block* last = m_blocks.empty() ? nullptr : &m_blocks.back();
         last && last->used < last->size; ++last->used)
        m_unused = new (last->memory + m_nodeSize * last->used) Unused{m_unused};
    m_blocks.push_back({static_cast<char*>(memory), size, 0});
    m_available += size;
}

RTreeNodePool::RTreeNodePool() : m_leaves(sizeof(Node)), m_innerNodes(sizeof(RTreeInnerNode)) {}

RTreeNodePool::~RTreeNodePool() = default;

Node* RTreeNodePool::make(int level)
{
    if (level == 0) {
        Node* leaf = new (m_leaves.take()) Node;
        leaf->level = 0;
        return leaf;
    }
    auto* node = new (m_innerNodes.take()) RTreeInnerNode;
    node->level = level;
    std::fill(std::begin(node->size), std::end(node->size),
              -std::numeric_limits<double>::infinity());
    return node;
}

void RTreeNodePool::setEntangled()
{
    m_isEntangled = true;
    m_isRegular = false;
}

void RTreeNodePool::recycle(Node* node)
{
    if (m_isEntangled)
        return;
    if (node->level == 0)
        m_leaves.giveBack(node);
    else
        m_innerNodes.giveBack(node);
}

}  // namespace velm::detail
