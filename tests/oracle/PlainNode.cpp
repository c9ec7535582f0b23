#include "oracle/PlainNode.h"

#include <algorithm>
#include <cmath>
#include <iterator>

using plain::combined;
using plain::volume;

namespace {

constexpr int kMaxBranches = 9;
constexpr int kCandidates = kMaxBranches + 1;
constexpr int kGreatestGroup = 6;  // the other has four

/// Divides the branches of a full node and one more into two groups.
struct Partition
{
    Partition(const PlainNode& full, const PlainBranch& extra);
    void pickSeeds();
    void classifyNext();
    void classify(int i, int to);
    double growth(int i, int of) const;

    PlainBranch candidates[kCandidates];
    int group[kCandidates];
    int count[2] = {};
    CVelmRTreeMBR cover[2];
};

Partition::Partition(const PlainNode& full, const PlainBranch& extra)
{
    std::copy(std::begin(full.branch), std::end(full.branch), candidates);
    candidates[kMaxBranches] = extra;
    std::fill(std::begin(group), std::end(group), -1);
    pickSeeds();
    while (count[0] + count[1] < kCandidates && std::max(count[0], count[1]) < kGreatestGroup)
        classifyNext();
    std::replace(std::begin(group), std::end(group), -1, count[0] >= kGreatestGroup ? 1 : 0);
}

/// Takes the two that would waste most space together. If no pair compares, as with infinite sizes,
/// they are the first two.
void Partition::pickSeeds()
{
    CVelmRTreeMBR all = candidates[0].rect;
    for (const PlainBranch& candidate : candidates)
        all = combined(all, candidate.rect);
    double worst = -volume(all) - 1.0;
    int seeds[2] = {0, 1};
    for (int i = 0; i < kCandidates; ++i) {
        for (int j = i + 1; j < kCandidates; ++j) {
            const CVelmRTreeMBR &a = candidates[i].rect, &b = candidates[j].rect;
            const double waste = volume(combined(a, b)) - volume(a) - volume(b);
            if (waste > worst) {
                worst = waste;
                seeds[0] = i;
                seeds[1] = j;
            }
        }
    }
    classify(seeds[0], 0);
    classify(seeds[1], 1);
}

/// Classifies the candidate to which the group matters most. If none compares, as with infinite
/// sizes, candidate 0 is counted into group 0, even once more; this is wanted so.
void Partition::classifyNext()
{
    double biggestDiff = -1.0;
    int chosen = 0;
    int betterGroup = 0;
    for (int i = 0; i < kCandidates; ++i) {
        if (group[i] >= 0)
            continue;
        double diff = growth(i, 1) - growth(i, 0);
        const int better = diff >= 0 ? 0 : 1;
        if (better == 1)
            diff = -diff;
        // Of those as good as the best, one for the smaller group; the difference to beat stays,
        // which is wanted so.
        const bool bigger = diff > biggestDiff;
        if (bigger
            || (std::fabs(diff - biggestDiff) < 1e-6 && count[better] < count[betterGroup])) {
            chosen = i;
            betterGroup = better;
            biggestDiff = bigger ? diff : biggestDiff;
        }
    }
    classify(chosen, betterGroup);
}

void Partition::classify(int i, int to)
{
    group[i] = to;
    cover[to] = count[to] == 0 ? candidates[i].rect : combined(candidates[i].rect, cover[to]);
    ++count[to];
}

double Partition::growth(int i, int of) const
{
    return volume(combined(candidates[i].rect, cover[of])) - volume(cover[of]);
}

}  // namespace

CVelmRTreeMBR plain::combined(const CVelmRTreeMBR& a, const CVelmRTreeMBR& b)
{
    return {std::min(a.xmin, b.xmin), std::min(a.ymin, b.ymin), std::max(a.xmax, b.xmax),
            std::max(a.ymax, b.ymax)};
}

double plain::volume(const CVelmRTreeMBR& rect)
{
    const double halfWidth = (rect.xmax - rect.xmin) * 0.5;
    const double halfHeight = (rect.ymax - rect.ymin) * 0.5;
    const double radius = std::sqrt(halfWidth * halfWidth + halfHeight * halfHeight);
    return radius * radius * 3.141593;
}

PlainNode* PlainNode::add(const PlainBranch& added)
{
    if (count >= kMaxBranches) {
        const Partition partition(*this, added);
        *this = PlainNode{level};
        auto* const sibling = new PlainNode{level};
        for (int i = 0; i < kCandidates; ++i)
            (partition.group[i] == 0 ? this : sibling)->add(partition.candidates[i]);
        return sibling;
    }
    *std::find_if(std::begin(branch), std::end(branch), plain::is(nullptr)) = added;
    ++count;
    return nullptr;
}

CVelmRTreeMBR PlainNode::cover() const
{
    const CVelmRTreeMBR* first = nullptr;
    CVelmRTreeMBR rect;
    for (const PlainBranch& part : branch) {
        if (!part.child)
            continue;
        rect = first ? combined(rect, part.rect) : part.rect;
        first = &part.rect;
    }
    return rect;
}
