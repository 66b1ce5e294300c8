#pragma once

#include <cstddef>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

struct Range {
  double low;
  double high;

  void include(double value) {
    low = value < low ? value : low;
    high = value > high ? value : high;
  }
};

// The smallest and the largest of `count` values, at least one; a NaN is passed over unless it is
// the first. Of equal zeros it may be either.
inline Range range_of(const double* values, std::size_t count) {
  Range range{values[0], values[0]};
  std::size_t i = 0;
#if defined(__SSE2__)
  // Every 64-bit x86 has these. Four values by turns, as each comparison has to wait for the one
  // before it; of a NaN and another number they give the second operand, as include() does.
  if (count >= 8) {
    __m128d low = _mm_set1_pd(values[0]);
    __m128d high = low;
    __m128d low_too = low;
    __m128d high_too = low;
    for (; i + 4 <= count; i += 4) {
      const __m128d two = _mm_loadu_pd(values + i);
      const __m128d more = _mm_loadu_pd(values + i + 2);
      low = _mm_min_pd(two, low);
      high = _mm_max_pd(two, high);
      low_too = _mm_min_pd(more, low_too);
      high_too = _mm_max_pd(more, high_too);
    }
    low = _mm_min_pd(low_too, low);
    high = _mm_max_pd(high_too, high);
    range = {_mm_cvtsd_f64(low), _mm_cvtsd_f64(high)};
    range.include(_mm_cvtsd_f64(_mm_unpackhi_pd(low, low)));
    range.include(_mm_cvtsd_f64(_mm_unpackhi_pd(high, high)));
  }
#endif
  for (; i < count; ++i) range.include(values[i]);
  return range;
}

inline Range range_of(const std::vector<double>& values) {
  return range_of(values.data(), values.size());
}

}  // namespace chart_trace
