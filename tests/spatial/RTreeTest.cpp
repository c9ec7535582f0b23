#include "CVelmRTree.h"

#include "support/StarvedMemory.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <numeric>
#include <set>
#include <vector>

namespace {

using Rect = CVelmRTreeMBR;
using Numbers = std::vector<quintptr>;

void* idOf(quintptr number)
{
    return reinterpret_cast<void*>(number);
}

int appendAndGoOn(void* id, void* ctx)
{
    static_cast<Numbers*>(ctx)->push_back(reinterpret_cast<quintptr>(id));
    return 1;
}

int appendAndStop(void* id, void* ctx)
{
    appendAndGoOn(id, ctx);
    return 0;
}

int overlapsOrFails(void*, void* entryRect, void* ctx)
{
    const Rect& entry = *static_cast<Rect*>(entryRect);
    const Rect& query = *static_cast<Rect*>(ctx);
    EXPECT_TRUE(entry.xmin <= query.xmax && query.xmin <= entry.xmax);
    return 1;
}

/// Points (x, 0), numbered from 1.
CVelmRTree line(const std::vector<double>& places)
{
    CVelmRTree tree;
    quintptr id = 0;
    for (const double x : places) {
        Rect rect(x, 0, x, 0);
        tree.InsertRect(&rect, idOf(++id), 0);
    }
    return tree;
}

Numbers idsIn(CVelmRTree& tree)
{
    Numbers ids;
    tree.Traversal(appendAndStop, &ids);  // which it does not
    return ids;
}

std::vector<double> boundsOf(const CVelmRTree& tree)
{
    std::vector<double> bounds(4, 77);
    tree.GetMinMax(bounds.data());
    return bounds;
}

struct SplitCase
{
    const char* name;
    std::vector<double> places;
    Numbers order, firstsOfLeaves;
};

// The circle over a line of length d grows with d * d. The seeds are the ends of the line; then
// goes where it matters to which seed the rest goes, until a group has six.
const SplitCase kSplits[] = {
    {"NineInOneLeaf", {0, 1, 2, 3, 4, 5, 6, 7, 8}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {1}},
    // Taken in the order 1, 8, 2, 7, 3, 6, 4, 5: near ones by turns.
    {"Even", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 6}},
    // Taken in the order 1, 2, 3, 4, 5: each the furthest from 100.
    {"FarLast", {0, 1, 2, 3, 4, 5, 6, 7, 8, 100}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 7}},
    {"FarFirst", {100, 0, 1, 2, 3, 4, 5, 6, 7, 8}, {1, 8, 9, 10, 2, 3, 4, 5, 6, 7}, {1, 2}},
    // Nothing tells the pairs or the groups apart: the first of each.
    {"Identical", {5, 5, 5, 5, 5, 5, 5, 5, 5, 5}, {1, 3, 4, 5, 6, 7, 2, 8, 9, 10}, {1, 2}}};

class RTreeSplit : public testing::TestWithParam<SplitCase>
{};

}  // namespace

TEST_P(RTreeSplit, DividesTheTenthEntryAndTheOthers)
{
    CVelmRTree tree = line(GetParam().places);
    EXPECT_EQ(idsIn(tree), GetParam().order);
    Rect all(0, 0, 100, 0);
    Numbers stops;
    const int leaves = tree.SearchOverlap(&all, appendAndStop, &stops);
    EXPECT_EQ(stops, GetParam().firstsOfLeaves);
    EXPECT_EQ(leaves, int(stops.size()));
    EXPECT_EQ(tree.SearchInclude(&all, nullptr, nullptr), int(GetParam().places.size()));
}
INSTANTIATE_TEST_SUITE_P(Lines, RTreeSplit, testing::ValuesIn(kSplits),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RTree, SharesNodesWithItsCopiesUntilTheLastIsGone)
{
    auto first = std::make_unique<CVelmRTree>(line({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    const Numbers ids = idsIn(*first);
    CVelmRTree copy(*first), assigned = line({1, 2, 3});
    assigned = *first;
    assigned = qAsConst(assigned);
    first->Init();
    EXPECT_EQ(idsIn(*first), Numbers());
    EXPECT_EQ(first->GetCount(), 0);
    first.reset();
    CVelmRTree(copy).Destroy();
    EXPECT_EQ(idsIn(copy), ids);
    copy = CVelmRTree();
    EXPECT_EQ(idsIn(copy), Numbers());
    EXPECT_EQ(idsIn(assigned), ids);
    EXPECT_EQ(assigned.GetCount(), 10);
}

TEST(RTree, StaysWholeWhenCopiesChange)
{
    CVelmRTree first = line({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    {
        CVelmRTree second(first);
        for (quintptr id = 1; id <= 6; ++id)
            first.DeleteID(idOf(id));
        second.DeleteID(idOf(7));
        for (quintptr id = 20; id < 400; ++id) {
            const double place = id * 7 % 50 * 100.0;
            Rect rect(place, 0, place, 0);
            (id % 2 != 0 ? first : second).InsertRect(&rect, idOf(id), 0);
            (id % 2 != 0 ? second : first).DeleteRectOverlap(&rect, nullptr, nullptr);
            Rect window(-1, -1, 50, 1);
            first.SearchOverlapRect(&window, overlapsOrFails, &window);
        }
    }
    for (const quintptr id : idsIn(first))
        EXPECT_TRUE(first.DeleteID(idOf(id))) << id;
    EXPECT_EQ(idsIn(first), Numbers());
}

TEST(RTree, TakesOverNodesOfTheCaller)
{
    CVelmRTree tree = line({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    auto* const leaf = new CVelmRTreeNode;
    leaf->branch[0].rect = leaf->branch[5].rect = Rect(20, 0, 21, 1);
    leaf->branch[0].child = idOf(11);
    leaf->branch[5].child = idOf(12);
    leaf->count = 2;
    Rect rect(20, 0, 21, 1);
    EXPECT_TRUE(tree.InsertRect(&rect, leaf, 1)) << "refused: of no level";
    EXPECT_TRUE(tree.InsertRect(&rect, leaf, 2)) << "refused: above the root";
    EXPECT_EQ(tree.GetCount(), 10);
    leaf->level = 0;
    EXPECT_TRUE(tree.InsertRect(&rect, leaf, 1));
    QVector<void*> ids;
    EXPECT_EQ(tree.GetInclude(&rect, ids), 2);
    EXPECT_TRUE(tree.DeleteRect(&rect, idOf(11)));
    EXPECT_EQ(idsIn(tree), Numbers({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12}));

    CVelmRTreeNode empty;
    empty.level = 0;
    tree.InsertRect(&rect, &empty, 1);
    EXPECT_EQ(idsIn(tree).size(), 11U);
}

TEST(RTree, StaysAsItWasWhereMemoryRunsOut)
{
    if (!StarvedMemory::isPossible())
        GTEST_SKIP();
    std::vector<double> places(100);
    std::iota(places.begin(), places.end(), 0.0);
    Rect everywhere(-1, -1, 999, 1);
    std::unique_ptr<CVelmRTreeNode> leaf;
    // Each answers how many entries there are more.
    const std::function<int(CVelmRTree&)> operations[] = {
        [&](CVelmRTree& tree) {
            int done = 0;
            while (done < 100 && tree.InsertRect(&everywhere, idOf(quintptr(done) + 1000), 0))
                ++done;
            return done;
        },
        [&](CVelmRTree& tree) {
            const bool done = tree.InsertRect(&everywhere, leaf.get(), 1);
            return done && leaf.release() ? 1 : 0;
        },
        [](CVelmRTree& tree) {
            int done = 0;
            while (done < 60 && tree.DeleteID(idOf(quintptr(done) + 1)))
                ++done;
            return -done;
        },
        [&](CVelmRTree& tree) {
            QVector<void*> ids{nullptr};
            const int found = tree.GetOverlap(&everywhere, ids) + tree.GetInclude(&everywhere, ids);
            return ids.size() - found - 1;
        }};
    for (const auto& operation : operations) {
        bool failed = true;
        for (int which = 1; failed; ++which) {
            CVelmRTree tree = line(places);
            leaf = std::make_unique<CVelmRTreeNode>();
            leaf->level = 0;
            leaf->branch[0].child = idOf(1000);
            int change = 0;
            {
                const StarvedMemory starved(256, which);
                change = operation(tree);
                failed = starved.hasFailed();
            }
            const Numbers ids = idsIn(tree);
            EXPECT_EQ(int(ids.size()), 100 + change) << "request " << which;
            EXPECT_EQ(std::set<quintptr>(ids.begin(), ids.end()).size(), ids.size());
        }
    }
}

TEST(RTree, HoldsAFieldOfCellsAndBecomesEmptyAgain)
{
    constexpr int kCells = 1000000;  // in rows of 1000
    const auto cellRect = [](int i) {
        const double x = i % 1000, y = i / 1000;
        return Rect(x + 0.25, y + 0.25, x + 0.75, y + 0.75);
    };
    CVelmRTree tree;
    for (int i = 0; i < kCells; ++i) {
        const int cell = static_cast<int>(i * qint64(777773) % kCells);
        Rect rect = cellRect(cell);
        tree.InsertRect(&rect, idOf(quintptr(cell) + 1), 0);
    }
    EXPECT_EQ(boundsOf(tree), std::vector<double>({0.25, 0.25, 999.75, 999.75}));
    for (int i = 0; i < 390; ++i) {
        Rect query(i, i, i + i % 50 + 1, i + 3);
        QVector<void*> ids;
        EXPECT_EQ(tree.GetInclude(&query, ids), 3 * (i % 50 + 1));
        EXPECT_EQ(tree.GetOverlap(&query, ids), 3 * (i % 50 + 1));
    }
    for (int i = 0; i < kCells; ++i) {
        Rect rect = cellRect(i);
        ASSERT_TRUE(tree.DeleteRect(&rect, idOf(quintptr(i) + 1)));
    }
    EXPECT_EQ(idsIn(tree), Numbers());
    EXPECT_EQ(boundsOf(tree), std::vector<double>(4, 77));
}
