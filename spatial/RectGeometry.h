#pragma once

#include "CVelmRTreeNode.h"

#include <emmintrin.h>

/// Rectangles in two registers: SSE2 is the least that both builds have.
namespace velm::detail {

struct WideRect
{
    __m128d low;   // xmin, ymin
    __m128d high;  // xmax, ymax
};

inline WideRect load(const CVelmRTreeMBR& rect)
{
    return {_mm_loadu_pd(&rect.xmin), _mm_loadu_pd(&rect.xmax)};
}

inline void store(const WideRect& wide, CVelmRTreeMBR& rect)
{
    _mm_storeu_pd(&rect.xmin, wide.low);
    _mm_storeu_pd(&rect.xmax, wide.high);
}

/// The smallest rectangle around both.
inline WideRect combined(const WideRect& a, const WideRect& b)
{
    return {_mm_min_pd(a.low, b.low), _mm_max_pd(a.high, b.high)};
}

/// Whether the rectangles meet, if only in a point.
inline bool overlap(const WideRect& a, const WideRect& b)
{
    return _mm_movemask_pd(_mm_or_pd(_mm_cmpgt_pd(a.low, b.high), _mm_cmpgt_pd(b.low, a.high)))
           == 0;
}

/// Whether @p inner lies within @p outer; bounds may be equal.
inline bool includes(const WideRect& outer, const WideRect& inner)
{
    return _mm_movemask_pd(
               _mm_or_pd(_mm_cmpgt_pd(outer.low, inner.low), _mm_cmpgt_pd(inner.high, outer.high)))
           == 0;
}

/// The squared lengths of the diagonals of two rectangles.
inline __m128d squaredDiagonals(const WideRect& a, const WideRect& b)
{
    const __m128d aSides = _mm_sub_pd(a.high, a.low);
    const __m128d bSides = _mm_sub_pd(b.high, b.low);
    const __m128d aSquares = _mm_mul_pd(aSides, aSides);
    const __m128d bSquares = _mm_mul_pd(bSides, bSides);
    return _mm_add_pd(_mm_unpacklo_pd(aSquares, bSquares), _mm_unpackhi_pd(aSquares, bSquares));
}

/// The area of the unit circle in every size. Not pi: results depend on it.
constexpr double kUnitCircle = 3.141593;

/// The sizes of two rectangles: the areas of the circles around them.
inline __m128d sizes(const WideRect& a, const WideRect& b)
{
    const __m128d half = _mm_set1_pd(0.5);
    const __m128d aHalves = _mm_mul_pd(_mm_sub_pd(a.high, a.low), half);
    const __m128d bHalves = _mm_mul_pd(_mm_sub_pd(b.high, b.low), half);
    const __m128d aSquares = _mm_mul_pd(aHalves, aHalves);
    const __m128d bSquares = _mm_mul_pd(bHalves, bHalves);
    const __m128d sums =
        _mm_add_pd(_mm_unpacklo_pd(aSquares, bSquares), _mm_unpackhi_pd(aSquares, bSquares));
    const __m128d radii = _mm_sqrt_pd(sums);
    return _mm_mul_pd(_mm_mul_pd(radii, radii), _mm_set1_pd(kUnitCircle));
}

inline double size(const WideRect& rect)
{
    return _mm_cvtsd_f64(sizes(rect, rect));
}

/// A comparison of two numbers as bits, of which the first has the number @p first.
inline unsigned bitsOf(int first, __m128d comparison)
{
    return static_cast<unsigned>(_mm_movemask_pd(comparison)) << first;
}

}  // namespace velm::detail
