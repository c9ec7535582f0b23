#include "RTreePeers.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include <malloc.h>

namespace {

using Rects = std::vector<CVelmRTreeMBR>;

constexpr double kExtent = 100000.0;  // metres

enum Distribution
{
    Uniform,
    Clustered,
};

double unit(std::mt19937_64& random)
{
    return static_cast<double>(random() >> 11) * 0x1p-53;
}

/// Buildings of 5 to 25 m, anywhere or in villages.
Rects makeRects(int count, Distribution distribution)
{
    std::mt19937_64 random(20240501);
    std::normal_distribution<double> spread(0.0, 300.0);
    std::vector<std::pair<double, double>> villages(static_cast<size_t>(count / 500));
    for (auto& village : villages)
        village = {unit(random) * kExtent, unit(random) * kExtent};
    Rects rects;
    for (int i = 0; i < count; ++i) {
        double x = unit(random) * kExtent;
        double y = unit(random) * kExtent;
        if (distribution == Clustered) {
            const auto& village = villages[random() % villages.size()];
            x = village.first + spread(random);
            y = village.second + spread(random);
        }
        const double width = 5.0 + unit(random) * 20.0;
        rects.emplace_back(x, y, x + width, y + 5.0 + unit(random) * 20.0);
    }
    return rects;
}

/// The rectangles of a size and distribution, made once.
const Rects& rectsOf(int count, Distribution distribution)
{
    static std::map<std::pair<int, int>, Rects> made;
    Rects& rects = made[{count, distribution}];
    if (rects.empty())
        rects = makeRects(count, distribution);
    return rects;
}

template<class Tree>
std::unique_ptr<Tree> filled(const Rects& rects)
{
    auto tree = std::make_unique<Tree>();
    for (size_t i = 0; i < rects.size(); ++i)
        tree->insert(rects[i], i);
    return tree;
}

/// Squares of one size around the centres of some entries.
Rects squares(const Rects& rects, double side)
{
    Rects queries;
    std::mt19937_64 random(7);
    for (int i = 0; i < 4096; ++i) {
        const CVelmRTreeMBR& rect = rects[random() % rects.size()];
        const double x = (rect.xmin + rect.xmax) / 2.0;
        const double y = (rect.ymin + rect.ymax) / 2.0;
        queries.emplace_back(x - side / 2.0, y - side / 2.0, x + side / 2.0, y + side / 2.0);
    }
    return queries;
}

/// Squares that overlap about @p hits entries on average; points for one hit.
const Rects& queriesOf(int count, Distribution distribution, int hits)
{
    static std::map<std::tuple<int, int, int>, Rects> made;
    Rects& queries = made[{count, distribution, hits}];
    if (!queries.empty())
        return queries;
    const Rects& rects = rectsOf(count, distribution);
    const auto tree = filled<peers::Velm>(rects);
    double low = 0.0;
    double high = hits == 1 ? 0.0 : kExtent;
    for (int step = 0; step < 30; ++step) {
        const double side = (low + high) / 2.0;
        queries = squares(rects, side);
        qint64 found = 0;
        for (size_t i = 0; i < 256; ++i)
            found += tree->query(queries[i]);
        (found > 256 * hits ? high : low) = side;
    }
    return queries;
}

Distribution distributionOf(const benchmark::State& state)
{
    return static_cast<Distribution>(state.range(1));
}

const Rects& rectsOf(const benchmark::State& state)
{
    return rectsOf(static_cast<int>(state.range(0)), distributionOf(state));
}

template<class Tree>
void Insert(benchmark::State& state)
{
    const Rects& rects = rectsOf(state);
    size_t bytes = 0;
    for (auto _ : state) {
        const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        auto tree = filled<Tree>(rects);
        state.PauseTiming();
        bytes = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(rects.size()));
    state.counters["bytes_per_entry"] =
        static_cast<double>(bytes) / static_cast<double>(rects.size());
}

template<class Tree>
void Query(benchmark::State& state)
{
    const Rects& queries = queriesOf(static_cast<int>(state.range(0)), distributionOf(state),
                                     static_cast<int>(state.range(2)));
    const auto tree = filled<Tree>(rectsOf(state));
    size_t i = 0;
    qint64 hits = 0;
    for (auto _ : state) {
        hits += tree->query(queries[i]);
        i = (i + 1) % queries.size();
    }
    state.counters["hits"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}

/// Deletes half of the entries, in another order than that of their insertion.
template<class Tree>
void Delete(benchmark::State& state)
{
    const Rects& rects = rectsOf(state);
    std::vector<size_t> order(rects.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::shuffle(order.begin(), order.end(), std::mt19937_64(3));
    order.resize(rects.size() / 2);
    for (auto _ : state) {
        state.PauseTiming();
        auto tree = filled<Tree>(rects);
        state.ResumeTiming();
        for (const size_t number : order)
            tree->erase(rects[number], number);
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(order.size()));
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"entries", "clustered"})->Unit(benchmark::kMillisecond);
    for (const int count : {100000, 1000000}) {
        for (const int distribution : {Uniform, Clustered})
            benchmark->Args({count, distribution});
    }
}

void queries(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"entries", "clustered", "hits"})->Unit(benchmark::kNanosecond);
    for (const int count : {100000, 1000000}) {
        for (const int distribution : {Uniform, Clustered}) {
            for (const int hits : {1, 10, 1000})
                benchmark->Args({count, distribution, hits});
        }
    }
}

#define VELM_BENCH_TREE(Tree)                        \
    BENCHMARK_TEMPLATE(Insert, Tree)->Apply(sizes);  \
    BENCHMARK_TEMPLATE(Query, Tree)->Apply(queries); \
    BENCHMARK_TEMPLATE(Delete, Tree)->Apply(sizes)

VELM_BENCH_TREE(peers::Velm);
VELM_BENCH_TREE(peers::Plain);
VELM_BENCH_TREE(peers::BoostQuadratic);
VELM_BENCH_TREE(peers::BoostRstar);
VELM_BENCH_TREE(peers::LibSpatialIndex);

}  // namespace
