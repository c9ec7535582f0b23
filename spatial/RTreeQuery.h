#pragma once

#include "CVelmRTreeNode.h"
#include "spatial/RectGeometry.h"

namespace velm::detail {

/// Four bounds of a rectangle as boxes have them: -xmin, -ymin, xmax, ymax. They are rounded to
/// single precision and moved by more than the rounding, up or down. A bound that single precision
/// does not have may become NaN, which compares as if it were anything.
__m128 boundsAbove(const WideRect& rect);
__m128 boundsBelow(const WideRect& rect);

/// A rectangle to look for, and comparisons with rectangles of which a box is known.
class RTreeQuery
{
public:
    explicit RTreeQuery(const CVelmRTreeMBR& rect);

    const WideRect& rect() const { return m_rect; }

    /// Which quarter of the answer is not 0: the box lies beside the query for certain.
    __m128 misses(__m128 box) const { return _mm_cmpgt_ps(m_nearBelow, box); }
    /// Whether the rectangle of the box overlaps the query for certain.
    bool surelyOverlaps(__m128 box) const
    {
        return _mm_movemask_ps(_mm_cmple_ps(m_nearAbove, boundsOfLeast(box))) == kAll;
    }
    /// Whether the rectangle of the box lies inside the query for certain.
    bool surelyIncludes(__m128 box) const
    {
        return _mm_movemask_ps(_mm_cmple_ps(box, m_farBelow)) == kAll;
    }

private:
    static constexpr int kAll = 0xF;

    /// What the bounds are at least from which a box was made.
    static __m128 boundsOfLeast(__m128 box);

    WideRect m_rect;
    __m128 m_nearBelow;  // the bounds that a box must reach: -xmax, -ymax, xmin, ymin
    __m128 m_nearAbove;
    __m128 m_farBelow;  // those that it must not pass to lie inside: -xmin, -ymin, xmax, ymax
};

// --- inline

namespace box {

/// By how much a bound is moved. Twice, it is more than the rounding of both steps.
inline __m128 margins(__m128 bounds)
{
    constexpr float kRounding = 0x1p-23F;
    constexpr float kLeast = 0x1p-126F;
    const __m128 magnitudes = _mm_andnot_ps(_mm_set1_ps(-0.0F), bounds);
    return _mm_add_ps(_mm_mul_ps(magnitudes, _mm_set1_ps(kRounding)), _mm_set1_ps(kLeast));
}

inline __m128 rounded(const WideRect& rect)
{
    const __m128d negated = _mm_xor_pd(rect.low, _mm_set1_pd(-0.0));
    return _mm_movelh_ps(_mm_cvtpd_ps(negated), _mm_cvtpd_ps(rect.high));
}

}  // namespace box

inline __m128 boundsAbove(const WideRect& rect)
{
    const __m128 bounds = box::rounded(rect);
    return _mm_add_ps(bounds, box::margins(bounds));
}

inline __m128 boundsBelow(const WideRect& rect)
{
    const __m128 bounds = box::rounded(rect);
    return _mm_sub_ps(bounds, box::margins(bounds));
}

inline __m128 RTreeQuery::boundsOfLeast(__m128 box)
{
    const __m128 margins = box::margins(box);
    return _mm_sub_ps(box, _mm_mul_ps(margins, _mm_set1_ps(4.0F)));
}

inline RTreeQuery::RTreeQuery(const CVelmRTreeMBR& rect)
    : m_rect(load(rect)), m_nearBelow(boundsBelow({m_rect.high, m_rect.low})),
      m_nearAbove(boundsAbove({m_rect.high, m_rect.low})), m_farBelow(boundsBelow(m_rect))
{}

}  // namespace velm::detail
