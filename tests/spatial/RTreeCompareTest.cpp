#include "CVelmRTree.h"
#include "oracle/PlainRTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include <emmintrin.h>

namespace {

using Rect = CVelmRTreeMBR;
using Numbers = std::vector<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// A host that traps invalid and infinite results and rounds upwards. Its numbers are whole.
class StrictHost
{
public:
    explicit StrictHost(bool isStrict) : m_before(_mm_getcsr())
    {
        if (isStrict)
            _mm_setcsr(kControl);
    }
    ~StrictHost() { _mm_setcsr(m_before); }
    Q_DISABLE_COPY(StrictHost)

    static bool isIntact(bool isStrict)
    {
        return !isStrict || (_mm_getcsr() & ~_MM_EXCEPT_MASK) == kControl;
    }

private:
    static constexpr unsigned kControl =
        _MM_MASK_UNDERFLOW | _MM_MASK_INEXACT | _MM_MASK_DENORM | _MM_ROUND_UP;
    const unsigned m_before;
};

int onId(void* id, void* ctx);
int onEntry(void* id, void* entryRect, void* ctx);

/// One operation on a tree, and all that it answers and calls back.
struct Call
{
    auto idCallback() const { return hasCallback ? &onId : nullptr; }
    auto entryCallback() const { return hasCallback ? &onEntry : nullptr; }
    void add(const Rect& r) { log.insert(log.end(), {r.xmin, r.ymin, r.xmax, r.ymax}); }

    int action;  // index in kActions
    Rect rect;
    void* id;
    quint64 stopEvery;  // so many callbacks; 0 for never
    bool hasCallback;
    int level = 0;
    QVector<void*> ids = {nullptr};
    Numbers log = {};
    quint64 callbacks = 0;
    bool isHostStrict = false;
    std::function<int()> counter = {};  // logged too: a removal calls back before it moves entries
};

int onId(void* id, void* ctx)
{
    Call& call = *static_cast<Call*>(ctx);
    EXPECT_TRUE(StrictHost::isIntact(call.isHostStrict));
    call.log.push_back(static_cast<double>(reinterpret_cast<quintptr>(id)));
    call.log.push_back(call.counter());
    return call.stopEvery == 0 || ++call.callbacks % call.stopEvery != 0;
}

int onEntry(void* id, void* entryRect, void* ctx)
{
    static_cast<Call*>(ctx)->add(*static_cast<Rect*>(entryRect));
    return onId(id, ctx);
}

template<class Tree>
int (*const kActions[])(Tree& t, Call& c) = {
    [](Tree& t, Call& c) -> int { return t.InsertRect(&c.rect, c.id, c.level); },
    [](Tree& t, Call& c) -> int { return t.DeleteRect(&c.rect, c.id); },
    [](Tree& t, Call& c) -> int { return t.DeleteID(c.id); },
    [](Tree& t, Call& c) -> int { return t.DeleteRectOverlap(&c.rect, c.idCallback(), &c); },
    [](Tree& t, Call& c) -> int { return t.DeleteRectInclude(&c.rect, c.idCallback(), &c); },
    [](Tree& t, Call& c) { return t.GetOverlap(&c.rect, c.ids); },
    [](Tree& t, Call& c) { return t.GetInclude(&c.rect, c.ids); },
    [](Tree& t, Call& c) { return t.SearchOverlap(&c.rect, c.idCallback(), &c); },
    [](Tree& t, Call& c) { return t.SearchInclude(&c.rect, c.idCallback(), &c); },
    [](Tree& t, Call& c) { return t.SearchOverlapRect(&c.rect, c.entryCallback(), &c); },
    [](Tree& t, Call& c) { return t.SearchIncludeRect(&c.rect, c.entryCallback(), &c); },
    [](Tree& t, Call& c) { return t.Traversal(&onId, &c), 0; },
    [](Tree& t, Call& c) { return t.TraversalRect(&onEntry, &c), 0; },
    [](Tree& t, Call&) { return t.Init(), 0; },
    [](Tree& t, Call&) { return t.Destroy(), 0; }};
constexpr int kInsertion = 0, kDeletions = 1, kSearches = 5, kTraversalRect = 12, kResets = 13;

/// What @p call answers, what becomes of the caller's rectangle, the counter and the bounds.
template<class Tree>
Numbers outcome(Tree& tree, Call call, bool isHostStrict)
{
    const StrictHost host(isHostStrict);
    call.isHostStrict = isHostStrict;
    call.counter = [&tree] { return tree.GetCount(); };
    call.log.push_back(kActions<Tree>[call.action](tree, call));
    for (void* const id : qAsConst(call.ids))
        onId(id, &call);
    call.add(call.rect);
    double bounds[] = {kNan, kNan, kNan, kNan};
    tree.GetMinMax(bounds);
    call.log.insert(call.log.end(), bounds, bounds + 4);
    return call.log;
}

/// Whether both trees answer @p call alike, also to a strict host. Not a number equals itself here.
bool agree(CVelmRTree& tree, PlainRTree& plain, const Call& call)
{
    const Numbers a = outcome(tree, call, true), b = outcome(plain, call, false);
    const auto same = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

/// Random numbers that are the same on every system.
struct Source
{
    quint64 below(quint64 end) { return random() % end; }
    double whole(quint64 end) { return static_cast<double>(below(end)); }
    double real(double end) { return static_cast<double>(random() >> 11) * 0x1p-53 * end; }

    Rect uniform(double range, double size)
    {
        const double x = real(range), y = real(range), width = real(size), height = real(size);
        return Rect(x, y, x + width, y + height);
    }

    std::mt19937_64 random;
};

Rect shifted(const Rect& rect, double by)
{
    return Rect(rect.xmin + by, rect.ymin - by, rect.xmax + by, rect.ymax - by);
}

/// At whole places and of size 1 or 2.
Rect gridRect(Source& s)
{
    const double x = s.whole(16), y = s.whole(16), width = 1 + s.whole(2), height = 1 + s.whole(2);
    return Rect(x, y, x + width, y + height);
}

Rect collinearRect(Source& s)
{
    const double x = s.whole(999);
    return Rect(x, 5, x + s.real(9), 5);
}

Rect invertedRect(Source& s)
{
    Rect rect = s.uniform(1000, 50);
    if (s.below(3) == 0)
        std::swap(rect.xmin, rect.xmax);
    if (s.below(3) == 0)
        std::swap(rect.ymin, rect.ymax);
    return rect;
}

/// Puts @p value in place of every fourth bound.
Rect rectWith(double value, Source& s)
{
    Rect rect = s.uniform(1000, 50);
    for (double* const bound : {&rect.xmin, &rect.ymin, &rect.xmax, &rect.ymax})
        *bound = s.below(4) != 0 ? *bound : s.below(2) != 0 ? value : -value;
    return rect;
}

Rect anyRect(Source& s);

struct Kind
{
    const char* name;
    Rect (*rect)(Source& s);
};

const Kind kKinds[] = {
    {"Uniform", [](Source& s) { return s.uniform(1000, 50); }},
    {"Clustered",
     [](Source& s) {
         const double shift = 100 * s.whole(8);
         return shifted(s.uniform(10, 2), shift);
     }},
    {"Identical", [](Source&) { return Rect(1, 2, 3, 4); }},
    {"Collinear", collinearRect},
    {"Grid", gridRect},
    {"Tiny", [](Source& s) { return s.uniform(0.01, 0.001); }},  // areas of about a millionth
    {"FarAway",  // where single precision cannot tell neighbours apart
     [](Source& s) { return shifted(s.uniform(20, 2), 4e7); }},
    {"Points", [](Source& s) { return s.uniform(1000, 0); }},
    {"Huge",  // areas that overflow and some that do not quite
     [](Source& s) { return s.below(2) == 0 ? s.uniform(1e300, 1e300) : s.uniform(1e153, 1e153); }},
    {"Greatest", [](Source& s) { return rectWith(std::numeric_limits<float>::max(), s); }},
    {"Infinite", [](Source& s) { return rectWith(kInfinity, s); }},
    {"NotANumber", [](Source& s) { return rectWith(kNan, s); }},
    {"Inverted", invertedRect},
    {"Mixed", anyRect}};

Rect anyRect(Source& s)
{
    return kKinds[s.below(std::size(kKinds) - 1)].rect(s);
}

/// The calls of one run. They let the tree grow, shrink, grow and shrink.
class Script
{
public:
    Script(const Kind& kind, quint64 seed) : m_kind(kind), m_source{std::mt19937_64(seed)} {}

    Call next(int step)
    {
        const int action = nextAction(step % 2500 < 1500);
        Call call{action, m_kind.rect(m_source), idOf(3000), m_source.below(4),
                  m_source.below(8) != 0};
        if (action == kInsertion) {
            call.level = m_source.below(99) == 0 ? 99 : 0;
            m_inserted.push_back(call);
        } else if (!m_inserted.empty() && m_source.below(8) != 0) {
            const auto chosen = static_cast<size_t>(m_source.below(m_inserted.size()));
            std::swap(m_inserted[chosen], m_inserted.back());
            call.id = m_inserted.back().id;
            call.rect = changed(m_inserted.back().rect);
            if (action < kDeletions + 2)
                m_inserted.pop_back();
        }
        return call;
    }

private:
    void* idOf(quint64 end) { return reinterpret_cast<void*>(quintptr(m_source.below(end))); }

    int nextAction(bool grows)
    {
        if (m_source.below(1500) == 0)
            return kResets + static_cast<int>(m_source.below(2));
        if (m_source.below(100) < (grows ? 65 : 10))
            return kInsertion;
        if (m_source.below(100) < (grows ? 25 : 75))
            return kDeletions + static_cast<int>(m_source.below(4));
        return kSearches + static_cast<int>(m_source.below(8));
    }

    /// Often the same, sometimes wider on one side or both, sometimes another.
    Rect changed(Rect rect)
    {
        const quint64 change = m_source.below(8);
        if (change < 2)
            return change == 0 ? m_kind.rect(m_source) : anyRect(m_source);
        if (change < 4)
            rect.xmax += m_source.real(300);
        if (change == 3 || change == 4)
            rect.ymin -= m_source.real(300);
        return rect;
    }

    const Kind& m_kind;
    Source m_source;
    std::vector<Call> m_inserted;
};

class RTreeKind : public testing::TestWithParam<Kind>
{};

}  // namespace

TEST_P(RTreeKind, GrowsAndShrinksLikeThePlainTree)
{
    const Call entries{kTraversalRect, {}, nullptr, 0, true};
    Rect everywhere(-kInfinity, -kInfinity, kInfinity, kInfinity);
    for (quint64 run = 0; run < 10; ++run) {
        SCOPED_TRACE(run);
        Script script(GetParam(), run);
        CVelmRTree tree;
        PlainRTree plain;
        for (int step = 0; step < 5000; ++step) {
            const Call call = script.next(step);
            ASSERT_TRUE(agree(tree, plain, call)) << "action " << call.action << ", step " << step;
            const bool whole = step % 50 == 0 || plain.GetCount() < 40;
            ASSERT_TRUE(!whole || agree(tree, plain, entries)) << "step " << step;
        }
        while (plain.DeleteRectOverlap(&everywhere, nullptr, nullptr)) {
            ASSERT_TRUE(tree.DeleteRectOverlap(&everywhere, nullptr, nullptr));
            ASSERT_TRUE(agree(tree, plain, entries));
        }
        EXPECT_FALSE(tree.DeleteRectOverlap(&everywhere, nullptr, nullptr));
    }
}
INSTANTIATE_TEST_SUITE_P(Kinds, RTreeKind, testing::ValuesIn(kKinds),
                         [](const auto& info) { return std::string(info.param.name); });
