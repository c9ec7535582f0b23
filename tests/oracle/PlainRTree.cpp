#include "oracle/PlainRTree.h"

#include "oracle/PlainNode.h"

#include <cmath>
#include <vector>

using namespace plain;

namespace {

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

void clear(PlainNode* node, PlainBranch& branch)
{
    branch = PlainBranch();
    --node->count;
}

void destroy(PlainNode* node)
{
    if (node->level > 0) {
        for (const PlainBranch& branch : node->branch) {
            if (branch.child)
                destroy(branch.node());
        }
    }
    delete node;
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

/// Nodes that were taken out of the tree, the last one first to go back.
using Dissolved = std::vector<PlainNode*>;

/// Looks for a leaf entry that is @p wanted below branches that @p enters, and gives it to
/// @p takeOut together with its leaf.
template<class Enters, class Wanted, class TakeOut>
bool removeBelow(PlainNode* node, Enters enters, Wanted wanted, TakeOut takeOut,
                 Dissolved& dissolved)
{
    for (PlainBranch& branch : node->branch) {
        if (!branch.child)
            continue;
        if (node->level < 1) {
            if (wanted(branch)) {
                takeOut(node, branch);
                return true;
            }
        } else if (enters(branch.rect)
                   && removeBelow(branch.node(), enters, wanted, takeOut, dissolved)) {
            if (branch.node()->count < kMinFill) {
                dissolved.push_back(branch.node());
                clear(node, branch);
            } else {
                branch.rect = cover(branch.node());
            }
            return true;
        }
    }
    return false;
}

/// Visits each entry that @p matches. A visit that answers false ends its leaf only.
/// @return how many visits there were
template<bool (*matches)(const CVelmRTreeMBR&, const CVelmRTreeMBR&), class Visit>
int search(PlainNode* node, const CVelmRTreeMBR& rect, Visit visit)
{
    int hits = 0;
    for (PlainBranch& branch : node->branch) {
        if (!branch.child)
            continue;
        if (node->level > 0) {
            if (overlaps(branch.rect, rect))
                hits += search<matches>(branch.node(), rect, visit);
        } else if (matches(rect, branch.rect)) {
            ++hits;
            if (!visit(branch))
                break;
        }
    }
    return hits;
}

template<class Visit>
void traverse(PlainNode* node, Visit visit)
{
    for (PlainBranch& branch : node->branch) {
        if (!branch.child)
            continue;
        if (node->level > 0)
            traverse(branch.node(), visit);
        else
            visit(branch);
    }
}

auto appendTo(QVector<void*>& ids)
{
    return [&ids](const PlainBranch& entry) {
        ids.append(entry.child);
        return true;
    };
}

auto answerOf(PlainRTree::Callback cb, void* ctx)
{
    return [=](const PlainBranch& entry) { return !cb || cb(entry.child, ctx) != 0; };
}

auto answerOf(PlainRTree::RectCallback cb, void* ctx)
{
    return [=](PlainBranch& entry) { return !cb || cb(entry.child, &entry.rect, ctx) != 0; };
}

}  // namespace

PlainRTree::PlainRTree() : m_root(new PlainNode(0)) {}

PlainRTree::~PlainRTree()
{
    destroy(m_root);
}

void PlainRTree::Init()
{
    destroy(m_root);
    m_root = new PlainNode(0);
    m_count = 0;
}

void PlainRTree::Destroy()
{
    Init();
}

void PlainRTree::GetMinMax(double* bounds) const
{
    if (m_root->count == 0)
        return;
    const CVelmRTreeMBR rect = cover(m_root);
    bounds[0] = rect.xmin;
    bounds[1] = rect.ymin;
    bounds[2] = rect.xmax;
    bounds[3] = rect.ymax;
}

bool PlainRTree::InsertRect(CVelmRTreeMBR* rect, void* id, int level)
{
    repair(*rect);
    if (!id)
        return true;
    if (PlainNode* const sibling = insertBelow(m_root, *rect, id, level)) {
        PlainNode* const root = new PlainNode(m_root->level + 1);
        addBranch(root, branchOf(m_root));
        addBranch(root, branchOf(sibling));
        m_root = root;
    }
    return true;
}

/// @return the new sibling if @p node had to be split, else null
PlainNode* PlainRTree::insertBelow(PlainNode* node, const CVelmRTreeMBR& rect, void* id, int level)
{
    if (node->level < level)
        return nullptr;
    if (node->level == level) {
        ++m_count;
        return addBranch(node, PlainBranch(rect, id));
    }
    PlainBranch& branch = pickBranch(node, rect);
    if (PlainNode* const newChild = insertBelow(branch.node(), rect, id, level)) {
        branch.rect = cover(branch.node());
        return addBranch(node, branchOf(newChild));
    }
    branch.rect = combined(rect, branch.rect);
    return nullptr;
}

/// Removes one entry, puts the entries of nodes that became too small elsewhere, and shortens the
/// tree by at most one level.
template<class Enters, class Wanted>
bool PlainRTree::remove(Enters enters, Wanted wanted, Callback cb, void* ctx)
{
    const auto takeOut = [&](PlainNode* leaf, PlainBranch& entry) {
        void* const id = entry.child;
        --m_count;
        clear(leaf, entry);
        if (cb)
            cb(id, ctx);
    };
    Dissolved dissolved;
    if (!removeBelow(m_root, enters, wanted, takeOut, dissolved))
        return false;
    for (auto it = dissolved.rbegin(); it != dissolved.rend(); ++it) {
        for (PlainBranch& branch : (*it)->branch) {
            if (branch.child)
                InsertRect(&branch.rect, branch.child, (*it)->level);
        }
        delete *it;
    }
    if (m_root->count == 1 && m_root->level > 0) {
        const auto only = std::find_if(std::begin(m_root->branch), std::end(m_root->branch),
                                       [](const PlainBranch& branch) { return branch.child; });
        delete std::exchange(m_root, only->node());
    }
    return true;
}

bool PlainRTree::DeleteRect(CVelmRTreeMBR* rect, void* id)
{
    if (!rect->IsValideRect() || !id)
        return false;
    const auto enters = [rect](const CVelmRTreeMBR& other) { return overlaps(other, *rect); };
    const auto wanted = [id](const PlainBranch& entry) { return entry.child == id; };
    return remove(enters, wanted, nullptr, nullptr) || DeleteID(id);
}

bool PlainRTree::DeleteID(void* id)
{
    const auto enters = [](const CVelmRTreeMBR&) { return true; };
    const auto wanted = [id](const PlainBranch& entry) { return entry.child == id; };
    return id && remove(enters, wanted, nullptr, nullptr);
}

bool PlainRTree::DeleteRectOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    const auto enters = [rect](const CVelmRTreeMBR& other) { return overlaps(other, *rect); };
    const auto wanted = [](const PlainBranch&) { return true; };
    return rect->IsValideRect() && remove(enters, wanted, cb, ctx);
}

bool PlainRTree::DeleteRectInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    const auto enters = [rect](const CVelmRTreeMBR& other) { return overlaps(other, *rect); };
    const auto wanted = [rect](const PlainBranch& entry) { return includes(*rect, entry.rect); };
    return rect->IsValideRect() && remove(enters, wanted, cb, ctx);
}

int PlainRTree::GetOverlap(CVelmRTreeMBR* rect, QVector<void*>& ids) const
{
    return search<overlaps>(m_root, *rect, appendTo(ids));
}

int PlainRTree::GetInclude(CVelmRTreeMBR* rect, QVector<void*>& ids) const
{
    return search<includes>(m_root, *rect, appendTo(ids));
}

int PlainRTree::SearchOverlap(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    return search<overlaps>(m_root, *rect, answerOf(cb, ctx));
}

int PlainRTree::SearchInclude(CVelmRTreeMBR* rect, Callback cb, void* ctx)
{
    return search<includes>(m_root, *rect, answerOf(cb, ctx));
}

int PlainRTree::SearchOverlapRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx)
{
    return search<overlaps>(m_root, *rect, answerOf(cb, ctx));
}

int PlainRTree::SearchIncludeRect(CVelmRTreeMBR* rect, RectCallback cb, void* ctx)
{
    return search<includes>(m_root, *rect, answerOf(cb, ctx));
}

void PlainRTree::Traversal(Callback cb, void* ctx)
{
    traverse(m_root, answerOf(cb, ctx));
}

void PlainRTree::TraversalRect(RectCallback cb, void* ctx)
{
    traverse(m_root, answerOf(cb, ctx));
}
