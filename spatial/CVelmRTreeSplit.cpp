#include "CVelmRTree.h"

#include "spatial/RTreeNodePool.h"
#include "spatial/RTreeSlots.h"

#include <algorithm>
#include <iterator>
#include <limits>

using namespace velm::detail;

namespace {

constexpr int kMinFill = 4;
constexpr int kCandidates = CVelmRTreePartition::kMaxCandidates;
constexpr int kPairs = kCandidates / 2;

struct Choice
{
    int candidate = 0;
    int group = 0;
};

/// The greater number of a pair, twice.
__m128d greaterOf(__m128d pair)
{
    return _mm_max_pd(pair, _mm_shuffle_pd(pair, pair, 1));
}

/// How much the cover of each group would grow by each candidate. What a candidate adds to a group
/// changes only with that group's cover.
class Growth
{
public:
    Growth(const CVelmRTreeBranch* candidates, const CVelmRTreePartition& partition)
        : m_partition(partition)
    {
        for (int i = 0; i < kCandidates; ++i)
            m_rects[i] = load(candidates[i].rect);
        for (int i = 0; i < kCandidates; ++i)
            m_taken[i] = _mm_castsi128_pd(_mm_set1_epi64x(partition.taken[i] ? -1 : 0));
        update(0);
        update(1);
    }

    /// To be called when a candidate has gone into a group.
    void take(const Choice& choice)
    {
        m_taken[choice.candidate] = _mm_castsi128_pd(_mm_set1_epi64x(-1));
        update(choice.group);
    }

    Choice choose() const;

private:
    void update(int group)
    {
        const WideRect cover = load(m_partition.cover[group]);
        const __m128d area = _mm_set1_pd(m_partition.area[group]);
        for (int i = 0; i < kPairs; ++i) {
            const __m128d enlarged =
                sizes(combined(m_rects[2 * i], cover), combined(m_rects[2 * i + 1], cover));
            m_growth[group][i] = _mm_sub_pd(enlarged, area);
        }
    }

    const CVelmRTreePartition& m_partition;
    WideRect m_rects[kCandidates];
    __m128d m_taken[kCandidates];  // all bits set, which is NaN, for a candidate that has a group
    __m128d m_growth[2][kPairs];
};

/// The candidate for which it matters most to which group it goes, and that group; of nearly equal
/// ones a later one that goes to the group with fewer entries. Candidates whose growth is not
/// defined are passed over; if all are, the first goes to the first group.
Choice Growth::choose() const
{
    const __m128d sign = _mm_set1_pd(-0.0);
    __m128d difference[kPairs];
    __m128d most = _mm_set1_pd(-1.0);
    unsigned toFirst = 0;
    for (int i = 0; i < kPairs; ++i) {
        const __m128d taken = _mm_unpacklo_pd(m_taken[2 * i], m_taken[2 * i + 1]);
        const __m128d signedOne = _mm_or_pd(_mm_sub_pd(m_growth[1][i], m_growth[0][i]), taken);
        toFirst |= bitsOf(2 * i, _mm_cmpge_pd(signedOne, _mm_setzero_pd()));
        difference[i] = _mm_andnot_pd(sign, signedOne);
        most = _mm_max_pd(difference[i], most);  // keeps the second one if the first is NaN
    }
    most = greaterOf(most);
    unsigned greatest = 0;
    unsigned nearest = 0;
    for (int i = 0; i < kPairs; ++i) {
        const __m128d rest = _mm_andnot_pd(sign, _mm_sub_pd(difference[i], most));
        greatest |= bitsOf(2 * i, _mm_cmpeq_pd(difference[i], most));
        nearest |= bitsOf(2 * i, _mm_cmplt_pd(rest, _mm_set1_pd(1e-6)));
    }
    if (greatest == 0)
        return Choice();
    const auto groupOf = [toFirst](int candidate) { return toFirst >> candidate & 1U ? 0 : 1; };
    Choice choice{lowestBit(greatest), groupOf(lowestBit(greatest))};
    for (nearest &= ~1U << choice.candidate; nearest; nearest &= nearest - 1) {
        const int candidate = lowestBit(nearest);
        if (m_partition.count[groupOf(candidate)] < m_partition.count[choice.group])
            choice = {candidate, groupOf(candidate)};
    }
    return choice;
}

/// Finds the first pair that wastes @p worst.
void findPair(const __m128d* waste, __m128d worst, int& first, int& second)
{
    for (first = 0; first < kCandidates - 1; ++first) {
        for (second = first + 1; second < kCandidates; second += 2, ++waste) {
            const auto found = static_cast<unsigned>(_mm_movemask_pd(_mm_cmpeq_pd(*waste, worst)));
            if (found != 0) {
                second += lowestBit(found);
                return;
            }
        }
    }
}

}  // namespace

/// Distributes the branches of a full node and one more over the node and a new one, whose covers
/// are those of the groups then.
void CVelmRTree::_SplitNode(Node* node, const Branch& extra, Node*& newNode)
{
    _GetBranches(node, extra);
    _MethodZero(m_partition, kMinFill);
    newNode = m_pool->make(node->level);
    _LoadNodes(node, newNode, m_partition);
    if (m_partition.count[0] + m_partition.count[1] != m_partition.total) {
        // A candidate has changed its group, which happens where growth is not defined.
        store(RTreeSlots::cover(*node), m_partition.cover[0]);
        store(RTreeSlots::cover(*newNode), m_partition.cover[1]);
    }
}

/// Moves the branches of the node and one more to the scratch.
void CVelmRTree::_GetBranches(Node* node, const Branch& extra)
{
    std::copy(std::begin(node->branch), std::end(node->branch), m_branchBuf);
    m_branchBuf[Node::kMaxBranches] = extra;
    m_branchCount = kCandidates;
    WideRect cover = load(m_branchBuf[0].rect);
    for (int i = 1; i < m_branchCount; ++i)
        cover = combined(cover, load(m_branchBuf[i].rect));
    store(cover, m_coverSplit);
    m_coverSplitArea = size(cover);
    RTreeSlots::clear(*node);
}

/// Guttman's quadratic method.
void CVelmRTree::_MethodZero(CVelmRTreePartition& partition, int minFill) const
{
    _InitPart(partition, m_branchCount, minFill);
    _PickSeeds(partition);
    Growth growth(m_branchBuf, partition);
    const int most = partition.total - minFill;
    while (partition.count[0] + partition.count[1] < partition.total && partition.count[0] < most
           && partition.count[1] < most) {
        const Choice choice = growth.choose();
        _Classify(choice.candidate, choice.group, partition);
        growth.take(choice);
    }
    const int rest = partition.count[0] >= most ? 1 : 0;
    for (int i = 0; i < partition.total; ++i) {
        if (!partition.taken[i])
            _Classify(i, rest, partition);
    }
}

void CVelmRTree::_InitPart(CVelmRTreePartition& partition, int total, int minFill) const
{
    partition.Init();
    for (CVelmRTreeMBR& cover : partition.cover)
        cover.SetInvalidRect();
    std::fill(std::begin(partition.partition), std::end(partition.partition), -1);
    partition.total = total;
    partition.minFill = minFill;
}

/// Begins the groups with the pair that wastes most in one rectangle; with the first two where none
/// wastes more than nothing, as with huge coordinates.
void CVelmRTree::_PickSeeds(CVelmRTreePartition& partition) const
{
    WideRect rects[kCandidates + 1];
    double areas[kCandidates + 1];
    for (int i = 0; i < kCandidates; ++i)
        rects[i] = load(m_branchBuf[i].rect);
    rects[kCandidates] = rects[0];  // a neighbour for the last one, which counts as no pair
    for (int i = 0; i < kCandidates; i += 2)
        _mm_storeu_pd(areas + i, sizes(rects[i], rects[i + 1]));
    areas[kCandidates] = std::numeric_limits<double>::infinity();

    // The waste of candidates i and j, j and j + 1 in one register, in the order of i and j.
    __m128d waste[kCandidates * kPairs];
    __m128d* end = waste;
    __m128d worst = _mm_set1_pd(-m_coverSplitArea - 1.0);
    const __m128d leastWorst = worst;
    for (int i = 0; i < kCandidates - 1; ++i) {
        for (int j = i + 1; j < kCandidates; j += 2) {
            const __m128d both =
                sizes(combined(rects[i], rects[j]), combined(rects[i], rects[j + 1]));
            *end = _mm_sub_pd(_mm_sub_pd(both, _mm_set1_pd(areas[i])), _mm_loadu_pd(areas + j));
            worst = _mm_max_pd(*end, worst);  // keeps the second one if the first is NaN
            ++end;
        }
    }
    worst = greaterOf(worst);
    int first = 0;
    int second = 1;
    if (_mm_movemask_pd(_mm_cmpgt_pd(worst, leastWorst)) != 0)
        findPair(waste, worst, first, second);
    _Classify(first, 0, partition);
    _Classify(second, 1, partition);
}

/// Puts a candidate into a group.
void CVelmRTree::_Classify(int index, int group, CVelmRTreePartition& partition) const
{
    const WideRect rect = load(m_branchBuf[index].rect);
    const WideRect cover =
        partition.count[group] == 0 ? rect : combined(rect, load(partition.cover[group]));
    store(cover, partition.cover[group]);
    partition.area[group] = size(cover);
    partition.partition[index] = group;
    partition.taken[index] = true;
    ++partition.count[group];
}

/// Fills the two nodes with the branches of group 0 and 1.
void CVelmRTree::_LoadNodes(Node* node, Node* other, const CVelmRTreePartition& partition) const
{
    for (int i = 0; i < partition.total; ++i) {
        Node* target = partition.partition[i] == 0 ? node : other;
        RTreeSlots::fill(*target, target->count, load(m_branchBuf[i].rect), m_branchBuf[i].child);
    }
}
