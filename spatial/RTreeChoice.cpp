#include "spatial/RTreeChoice.h"

#include "spatial/RTreeInnerNode.h"
#include "spatial/RTreeSlots.h"

#include <limits>

namespace velm::detail {

namespace {

constexpr int kSlots = CVelmRTreeNode::kMaxBranches;
constexpr int kPairs = (kSlots + 1) / 2;

/// The slots of a pair, side by side; the last one is its own neighbour.
struct Pair
{
    explicit Pair(int number) : first(2 * number), second(first + 1 < kSlots ? first + 1 : first) {}

    int first;
    int second;
};

/// Both rectangles of a pair, each with @p rect.
template<class Measure>
__m128d measured(const RTreeInnerNode& node, const Pair& pair, const WideRect& rect,
                 const Measure& measure)
{
    return measure(combined(rect, load(node.branch[pair.first].rect)),
                   combined(rect, load(node.branch[pair.second].rect)));
}

/// The squared diagonals beyond which rectangles are larger than those of such sizes, in spite of
/// all rounding. Undefined sizes have undefined bounds.
__m128d growthBounds(__m128d sizes)
{
    constexpr double kCertain = 1.0 + 64 * std::numeric_limits<double>::epsilon();
    constexpr double kLeast = 1e-290;  // far from where numbers lose their digits
    return _mm_max_pd(_mm_set1_pd(kLeast),
                      _mm_mul_pd(sizes, _mm_set1_pd(4.0 / kUnitCircle * kCertain)));
}

/// The slots whose size may stay as it is with @p rect. That of all others grows for certain.
unsigned hardlyGrown(const RTreeInnerNode& node, const WideRect& rect)
{
    unsigned grown = 0;
    for (int i = 0; i < kPairs; ++i) {
        const Pair pair(i);
        const __m128d diagonals = measured(node, pair, rect, squaredDiagonals);
        grown |=
            bitsOf(pair.first,
                   _mm_cmpgt_pd(diagonals, growthBounds(_mm_loadu_pd(node.size + pair.first))));
    }
    return ~grown & RTreeSlots::used(node);
}

/// The smallest of some slots; of equal ones the first.
int smallest(const RTreeInnerNode& node, unsigned slots)
{
    int smallest = lowestBit(slots);
    for (slots &= slots - 1; slots; slots &= slots - 1) {
        if (node.size[lowestBit(slots)] < node.size[smallest])
            smallest = lowestBit(slots);
    }
    return smallest;
}

/// The choice in the presence of NaN, to which nothing compares, or without any branch.
int leastGrownOneByOne(const RTreeInnerNode& node, const __m128d* growthOfPairs)
{
    double growth[2 * kPairs];
    for (int i = 0; i < kPairs; ++i)
        _mm_storeu_pd(growth + 2 * i, growthOfPairs[i]);
    unsigned slots = RTreeSlots::used(node);
    if (slots == 0)
        return -1;
    int best = lowestBit(slots);
    for (slots &= slots - 1; slots; slots &= slots - 1) {
        const int slot = lowestBit(slots);
        if (growth[slot] < growth[best]
            || (growth[slot] == growth[best] && node.size[slot] < node.size[best]))
            best = slot;
    }
    return best;
}

/// Whether a branch of finite size holds the rectangle.
bool holds(const RTreeInnerNode& node, int slot, const WideRect& rect)
{
    return includes(load(node.branch[slot].rect), rect)
           && node.size[slot] < std::numeric_limits<double>::infinity();
}

int leastGrownBySize(const RTreeInnerNode& node, const WideRect& rect)
{
    // Empty slots grow infinitely, as their size is minus infinity.
    __m128d growth[kPairs];
    __m128d least = _mm_set1_pd(std::numeric_limits<double>::infinity());
    __m128d undefined = _mm_setzero_pd();
    for (int i = 0; i < kPairs; ++i) {
        const Pair pair(i);
        growth[i] =
            _mm_sub_pd(measured(node, pair, rect, sizes), _mm_loadu_pd(node.size + pair.first));
        least = _mm_min_pd(growth[i], least);
        undefined = _mm_or_pd(undefined, _mm_cmpunord_pd(growth[i], growth[i]));
    }
    least = _mm_min_pd(least, _mm_unpackhi_pd(least, least));
    least = _mm_unpacklo_pd(least, least);
    unsigned best = 0;
    for (int i = 0; i < kPairs; ++i)
        best |= bitsOf(2 * i, _mm_cmpeq_pd(growth[i], least));
    best &= RTreeSlots::used(node);
    if (_mm_movemask_pd(undefined) != 0 || best == 0)
        return leastGrownOneByOne(node, growth);
    return smallest(node, best);
}

}  // namespace

void prefetchToChoose(const CVelmRTreeNode* node)
{
    constexpr size_t kLine = 64;
    const char* bytes = reinterpret_cast<const char*>(node);
    for (size_t offset = 0; offset < sizeof node->branch; offset += kLine)
        prefetchLine(bytes + offset);
    for (size_t offset = sizeof(CVelmRTreeNode); offset < sizeof(RTreeInnerNode); offset += kLine)
        prefetchLine(bytes + offset);
}

int leastGrown(const RTreeInnerNode& node, const WideRect& rect)
{
    // A branch that holds the rectangle does not grow at all. Where all others grow for certain,
    // their growth need not be known.
    unsigned slots = hardlyGrown(node, rect);
    if (slots != 0) {
        int smallest = lowestBit(slots);
        bool allHold = holds(node, smallest, rect);
        for (slots &= slots - 1; slots; slots &= slots - 1) {
            const int slot = lowestBit(slots);
            allHold &= holds(node, slot, rect);
            smallest = node.size[slot] < node.size[smallest] ? slot : smallest;
        }
        if (allHold)
            return smallest;
    }
    return leastGrownBySize(node, rect);
}

}  // namespace velm::detail
