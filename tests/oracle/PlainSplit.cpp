#include "oracle/PlainNode.h"

#include <iterator>
#include <utility>

namespace plain {

namespace {

constexpr int kCandidates = kMaxBranches + 1;
constexpr int kGreatestGroup = kCandidates - kMinFill;

/// Divides the branches of a full node and one more into two groups.
class Partition
{
public:
    Partition(const PlainNode* full, const PlainBranch& extra)
    {
        std::copy(std::begin(full->branch), std::end(full->branch), candidates);
        candidates[kCandidates - 1] = extra;
        pickSeeds();
        while (count[0] + count[1] < kCandidates && count[0] < kGreatestGroup
               && count[1] < kGreatestGroup)
            classifyNext();
        const int rest = count[0] >= kGreatestGroup ? 1 : 0;
        for (int i = 0; i < kCandidates; ++i) {
            if (!taken[i])
                classify(i, rest);
        }
    }

    PlainBranch candidates[kCandidates];
    int group[kCandidates] = {};

private:
    void pickSeeds();
    void classifyNext();
    void classify(int i, int to);

    bool taken[kCandidates] = {};
    int count[2] = {};
    CVelmRTreeMBR cover[2];
    double area[2] = {};
};

/// Takes the two that would waste most space together. If no pair compares, as with infinite sizes,
/// they are the first two.
void Partition::pickSeeds()
{
    CVelmRTreeMBR all = candidates[0].rect;
    double areas[kCandidates];
    for (int i = 0; i < kCandidates; ++i) {
        all = combined(all, candidates[i].rect);
        areas[i] = volume(candidates[i].rect);
    }
    double worst = -volume(all) - 1.0;
    int seeds[2] = {0, 1};
    for (int i = 0; i < kCandidates; ++i) {
        for (int j = i + 1; j < kCandidates; ++j) {
            const double waste =
                volume(combined(candidates[i].rect, candidates[j].rect)) - areas[i] - areas[j];
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
        if (taken[i])
            continue;
        const double growth0 = volume(combined(candidates[i].rect, cover[0])) - area[0];
        const double growth1 = volume(combined(candidates[i].rect, cover[1])) - area[1];
        double diff = growth1 - growth0;
        const int better = diff >= 0 ? 0 : 1;
        if (better == 1)
            diff = -diff;
        if (diff > biggestDiff) {
            chosen = i;
            betterGroup = better;
            biggestDiff = diff;
        } else if (std::fabs(diff - biggestDiff) < 1e-6 && count[better] < count[betterGroup]) {
            chosen = i;  // the difference to beat stays, which is wanted so
            betterGroup = better;
        }
    }
    classify(chosen, betterGroup);
}

void Partition::classify(int i, int to)
{
    group[i] = to;
    taken[i] = true;
    cover[to] = count[to] == 0 ? candidates[i].rect : combined(candidates[i].rect, cover[to]);
    area[to] = volume(cover[to]);
    ++count[to];
}

}  // namespace

PlainNode* addBranch(PlainNode* node, const PlainBranch& branch)
{
    if (node->count >= kMaxBranches) {
        const Partition partition(node, branch);
        *node = PlainNode(node->level);
        PlainNode* const sibling = new PlainNode(node->level);
        for (int i = 0; i < kCandidates; ++i)
            addBranch(partition.group[i] == 0 ? node : sibling, partition.candidates[i]);
        return sibling;
    }
    for (PlainBranch& slot : node->branch) {
        if (!slot.child) {
            slot = branch;
            ++node->count;
            break;
        }
    }
    return nullptr;
}

}  // namespace plain
