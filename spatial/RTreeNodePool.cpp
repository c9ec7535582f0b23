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

void RTreeNodePool::Store::reserve(size_t nodes)
{
    if (m_unusedCount + unbegun() < nodes)
        addBlock(nodes);
}

void* RTreeNodePool::Store::take()
{
    if (m_unused) {
        Unused* unused = m_unused;
        m_unused = unused->next;
        --m_unusedCount;
        return unused;
    }
    if (unbegun() == 0)
        addBlock(1);
    Block& block = m_blocks.back();
    return block.memory + m_nodeSize * block.used++;
}

void RTreeNodePool::Store::giveBack(void* memory)
{
    m_unused = new (memory) Unused{m_unused};
    ++m_unusedCount;
}

/// The nodes of the last block that have not been used yet.
size_t RTreeNodePool::Store::unbegun() const
{
    return m_blocks.empty() ? 0 : m_blocks.back().size - m_blocks.back().used;
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
    for (size_t rest = unbegun(); rest > 0; --rest) {
        Block& block = m_blocks.back();
        giveBack(block.memory + m_nodeSize * block.used++);
    }
    m_blocks.push_back({static_cast<char*>(memory), size, 0});
}

RTreeNodePool::RTreeNodePool() : m_leaves(sizeof(Node)), m_innerNodes(sizeof(RTreeInnerNode)) {}

RTreeNodePool::~RTreeNodePool() = default;

void RTreeNodePool::reserve(int leaves, int innerNodes)
{
    m_leaves.reserve(static_cast<size_t>(leaves));
    m_innerNodes.reserve(static_cast<size_t>(innerNodes));
}

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
