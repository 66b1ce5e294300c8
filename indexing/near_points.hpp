#pragma once

#include <cstddef>
#include <cstdint>

#include "indexing/squared_distance.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// Which of `count` points, at most 64, lie near (x0, y0): bit k when the square of the distance to
// (x[k], y[k]) is at most `largest_square`, so never for a NaN.
inline std::uint64_t near_points(const double* x, const double* y, std::size_t count, double x0,
                                 double y0, double largest_square) {
  std::uint64_t near = 0;
  std::size_t k = 0;
#if defined(__SSE2__)
  // Every 64-bit x86 has these: two points at a time, rounded as below. Without branches, as the
  // border of a disc cannot be guessed.
  const __m128d x0_twice = _mm_set1_pd(x0);
  const __m128d y0_twice = _mm_set1_pd(y0);
  const __m128d largest = _mm_set1_pd(largest_square);
  for (; k + 2 <= count; k += 2) {
    const __m128d dy = _mm_sub_pd(y0_twice, _mm_loadu_pd(y + k));
    const __m128d dx = _mm_sub_pd(x0_twice, _mm_loadu_pd(x + k));
    const __m128d squares = _mm_add_pd(_mm_mul_pd(dy, dy), _mm_mul_pd(dx, dx));
    const int both = _mm_movemask_pd(_mm_cmple_pd(squares, largest));
    near |= static_cast<std::uint64_t>(both) << k;
  }
#endif
  for (; k < count; ++k) {
    const bool is_near = square_between(x0, y0, x[k], y[k]) <= largest_square;
    near |= static_cast<std::uint64_t>(is_near) << k;
  }
  return near;
}

}  // namespace chart_trace
