#include "oracle/PlainRTree.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

using plain::combined;
using plain::volume;

namespace {

constexpr int kMinFill = 4;

void repair(CVelmRTreeMBR& rect)
{
    rect.xmin = std::isnan(rect.xmin) ? 0.0 : rect.xmin;
    rect.ymin = std::isnan(rect.ymin) ? 0.0 : rect.ymin;
    rect.xmax = std::isnan(rect.xmax) ? rect.xmin + 1.0 : rect.xmax;
    rect.ymax = std::isnan(rect.ymax) ? rect.ymin + 1.0 : rect.ymax;
}

/// The branch that grows least, and of equal ones the smallest. @p node is not empty.
PlainBranch& pickBranch(PlainNode* node, const CVelmRTreeMBR& rect)
{
    PlainBranch* best = nullptr;
    double bestIncrease = 0.0;
    double bestArea = 0.0;
    for (PlainBranch& branch : node->branch) {
        if (!branch.child)
            continue;
        const double area = volume(branch.rect);
        const double increase = volume(combined(rect, branch.rect)) - area;
        if (!best || increase < bestIncrease || (increase == bestIncrease && area < bestArea)) {
            best = &branch;
            bestIncrease = increase;
            bestArea = area;
        }
    }
    return *best;
}

}  // namespace

void PlainRTree::destroy(PlainNode* node)
{
    for (const PlainBranch& branch : node->branch) {
        if (branch.child && node->level > 0)
            destroy(branch.node());
    }
    delete node;
}

void PlainRTree::Init()
{
    destroy(std::exchange(m_root, new PlainNode{0}));
    m_count = 0;
}

void PlainRTree::GetMinMax(double* bounds) const
{
    if (m_root->count == 0)
        return;
    const CVelmRTreeMBR rect = m_root->cover();
    bounds[0] = rect.xmin;
    bounds[1] = rect.ymin;
    bounds[2] = rect.xmax;
    bounds[3] = rect.ymax;
}

bool PlainRTree::InsertRect(CVelmRTreeMBR* rect, void* id, int level)
{
    repair(*rect);
    PlainNode* const sibling = id ? insertBelow(m_root, {*rect, id}, level) : nullptr;
    if (sibling) {
        auto* const root = new PlainNode{m_root->level + 1};
        root->add({m_root->cover(), m_root});
        root->add({sibling->cover(), sibling});
        m_root = root;
    }
    return true;
}

/// @return the new sibling if @p node had to be split, else null
PlainNode* PlainRTree::insertBelow(PlainNode* node, const PlainBranch& added, int level)
{
    if (node->level < level)
        return nullptr;
    if (node->level == level) {
        ++m_count;
        return node->add(added);
    }
    PlainBranch& branch = pickBranch(node, added.rect);
    PlainNode* const sibling = insertBelow(branch.node(), added, level);
    branch.rect = sibling ? branch.node()->cover() : combined(added.rect, branch.rect);
    return sibling ? node->add({sibling->cover(), sibling}) : nullptr;
}

/// Takes out the first leaf entry that is @p wanted below branches that @p enters.
/// @return its identifier, or null if there is none
void* PlainRTree::removeBelow(PlainNode* node, const Test& enters, const Test& wanted,
                              Nodes& dissolved)
{
    for (PlainBranch& branch : node->branch) {
        PlainNode* const child = node->level > 0 ? branch.node() : nullptr;
        void* id = nullptr;
        if (branch.child && (child ? enters(branch) : wanted(branch)))
            id = child ? removeBelow(child, enters, wanted, dissolved) : branch.child;
        if (!id)
            continue;
        if (child && child->count >= kMinFill) {
            branch.rect = child->cover();
            return id;
        }
        if (child)
            dissolved.push_back(child);
        branch = PlainBranch();
        --node->count;
        return id;
    }
    return nullptr;
}

/// Removes one entry, puts the entries of nodes that became too small elsewhere, the last one
/// first, and shortens the tree by at most one level.
bool PlainRTree::remove(const Test& enters, const Test& wanted, Callback cb, void* ctx)
{
    Nodes dissolved;
    void* const id = removeBelow(m_root, enters, wanted, dissolved);
    if (!id)
        return false;
    --m_count;
    if (cb)
        cb(id, ctx);
    for (auto it = dissolved.rbegin(); it != dissolved.rend(); ++it) {
        for (PlainBranch& branch : (*it)->branch)
            InsertRect(&branch.rect, branch.child, (*it)->level);
        delete *it;
    }
    if (m_root->count == 1 && m_root->level > 0) {
        const auto* const only = std::find_if_not(std::begin(m_root->branch),
                                                  std::end(m_root->branch), plain::is(nullptr));
        delete std::exchange(m_root, only->node());
    }
    return true;
}

int PlainRTree::append(void* id, void* ids)
{
    static_cast<QVector<void*>*>(ids)->append(id);
    return 1;
}
