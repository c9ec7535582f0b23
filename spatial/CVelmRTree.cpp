#include "CVelmRTree.h"

#include "spatial/OwnArithmetic.h"
#include "spatial/RTreeChoice.h"
#include "spatial/RTreeInnerNode.h"
#include "spatial/RTreeNodePool.h"
#include "spatial/RTreeSlots.h"

#include <cmath>
#include <new>
#include <utility>

using namespace velm::detail;

namespace {

/// Replaces NaN bounds.
void repair(CVelmRTreeMBR& rect)
{
    if (std::isnan(rect.xmin))
        rect.xmin = 0.0;
    if (std::isnan(rect.ymin))
        rect.ymin = 0.0;
    if (std::isnan(rect.xmax))
        rect.xmax = rect.xmin + 1.0;
    if (std::isnan(rect.ymax))
        rect.ymax = rect.ymin + 1.0;
}

/// Whether a caller's node can become part of a tree: every branch leads to a node of the level
/// below, and none of these is empty.
bool isSound(const CVelmRTreeNode& node, int level)
{
    int used = 0;
    for (const CVelmRTreeBranch& branch : node.branch) {
        if (!branch.child)
            continue;
        ++used;
        if (level > 0 && !isSound(*static_cast<const CVelmRTreeNode*>(branch.child), level - 1))
            return false;
    }
    return used > 0 && node.level == level;
}

/// Nodes of a caller's tree.
struct NodeCount
{
    int leaves = 0;
    int innerNodes = 0;
};

void count(const CVelmRTreeNode& node, NodeCount& nodes)
{
    ++(node.level == 0 ? nodes.leaves : nodes.innerNodes);
    for (const CVelmRTreeBranch& branch : node.branch) {
        if (branch.child && node.level > 0)
            count(*static_cast<const CVelmRTreeNode*>(branch.child), nodes);
    }
}

/// Moves a caller's node, with all that lies below it, into the pool. @return the node that it
/// became
CVelmRTreeNode* adopt(CVelmRTreeNode* node, RTreeNodePool& pool)
{
    CVelmRTreeNode* adopted = pool.make(node->level);
    for (int slot = 0; slot < CVelmRTreeNode::kMaxBranches; ++slot) {
        void* child = node->branch[slot].child;
        if (child && node->level > 0)
            child = adopt(static_cast<CVelmRTreeNode*>(child), pool);
        repair(node->branch[slot].rect);
        if (child)
            RTreeSlots::fill(*adopted, slot, load(node->branch[slot].rect), child);
    }
    delete node;
    return adopted;
}

}  // namespace

CVelmRTree::CVelmRTree()
{
    Init();
}

CVelmRTree::~CVelmRTree() = default;

CVelmRTree::CVelmRTree(const CVelmRTree& other) = default;

CVelmRTree& CVelmRTree::operator=(const CVelmRTree& other) = default;

void CVelmRTree::Init()
{
    Destroy();
    try {
        begin();
    } catch (const std::bad_alloc&) {
        // It begins when it is used.
    }
}

void CVelmRTree::begin()
{
    auto pool = std::make_shared<RTreeNodePool>();
    m_root = pool->make(0);
    m_pool = std::move(pool);
}

void CVelmRTree::Destroy()
{
    m_pool.reset();
    m_root = nullptr;
    m_count = 0;
}

void CVelmRTree::GetMinMax(double* bounds) const
{
    if (!m_root || m_root->count == 0)
        return;
    const OwnArithmetic arithmetic;
    const WideRect cover = RTreeSlots::cover(*m_root);
    _mm_storeu_pd(bounds, cover.low);
    _mm_storeu_pd(bounds + 2, cover.high);
}

bool CVelmRTree::InsertRect(CVelmRTreeMBR* rect, void* id, int level)
{
    const OwnArithmetic arithmetic;
    repair(*rect);
    try {
        if (!m_root)
            begin();
        if (!id || level < 0 || level > m_root->level)
            return true;
        if (level == 0)
            reserveForInsertion(0, 0);
        else if (isSound(*static_cast<Node*>(id), level - 1))
            id = takeOver(static_cast<Node*>(id));
        else
            return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
    if (!rect->IsValideRect())
        m_pool->setIrregular();
    noteChange();
    insert(*rect, id, level);
    return true;
}

/// Before an insertion that takes some more nodes. An insertion may split a node of every level,
/// make a new root, and make a node of every level where a copy has emptied one.
void CVelmRTree::reserveForInsertion(int leaves, int innerNodes)
{
    m_pool->reserve(leaves + 2, innerNodes + 2 * m_root->level + 1);
}

/// Moves a caller's node into the pool.
void* CVelmRTree::takeOver(Node* node)
{
    NodeCount nodes;
    count(*node, nodes);
    reserveForInsertion(nodes.leaves, nodes.innerNodes);
    m_pool->setIrregular();
    return adopt(node, *m_pool);
}

/// Before a change.
void CVelmRTree::noteChange()
{
    if (m_pool.use_count() > 1)
        m_pool->setEntangled();
}

void CVelmRTree::insert(const Rect& rect, void* child, int level)
{
    Node* newNode = nullptr;
    if (!_InsertRect(rect, child, m_root, m_root->level, newNode, level))
        return;
    Node* root = m_pool->make(m_root->level + 1);
    RTreeSlots::fill(*root, 0, load(m_partition.cover[0]), m_root);
    RTreeSlots::fill(*root, 1, load(m_partition.cover[1]), newNode);
    m_root = root;
}

/// Inserts below a node of @p nodeLevel, which is not below @p level. @return whether it was split;
/// then @p newNode is its other half
bool CVelmRTree::_InsertRect(const Rect& rect, void* id, Node* node, int nodeLevel, Node*& newNode,
                             int level)
{
    if (nodeLevel == level) {
        ++m_count;
        return _AddBranch({rect, id}, node, newNode);
    }
    int slot = leastGrown(static_cast<RTreeInnerNode&>(*node), load(rect));
    if (slot < 0) {  // a copy has emptied the node
        slot = 0;
        RTreeSlots::fill(*node, slot, load(rect), m_pool->make(nodeLevel - 1));
    }
    Node* child = static_cast<Node*>(node->branch[slot].child);
    if (nodeLevel == level + 1)
        RTreeSlots::prefetchToFill(child);
    else
        prefetchToChoose(child);
    RTreeSlots::widen(*node, slot, load(rect));
    Node* newChild = nullptr;
    if (!_InsertRect(rect, id, child, nodeLevel - 1, newChild, level))
        return false;
    // The covers of the groups are those of the two nodes.
    RTreeSlots::setRect(*node, slot, load(m_partition.cover[0]));
    return _AddBranch({m_partition.cover[1], newChild}, node, newNode);
}

/// Puts a branch into the first empty slot. @return whether there was none, so that the node was
/// split; then @p newNode is its other half
bool CVelmRTree::_AddBranch(const Branch& branch, Node* node, Node*& newNode)
{
    const int slot = RTreeSlots::firstEmpty(*node);
    if (slot == Node::kMaxBranches) {
        _SplitNode(node, branch, newNode);
        return true;
    }
    RTreeSlots::fill(*node, slot, load(branch.rect), branch.child);
    return false;
}
