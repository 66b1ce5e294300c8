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

// The range of many values, four at a time. A NaN is passed over unless it is `first`, the first
// value. Of equal zeros either may be the smallest or the largest.
class Range_of_fours {
 public:
#if defined(__SSE2__)
  // Every 64-bit x86 has these. Values go two by turns to `low_` and `low_too_`, as each comparison
  // has to wait for the one before it; of a NaN and another number they give the second operand, as
  // Range::include() does.
  explicit Range_of_fours(double first)
      : low_(_mm_set1_pd(first)), high_(low_), low_too_(low_), high_too_(low_) {}

  void include(const double* four) {
    const __m128d two = _mm_loadu_pd(four);
    const __m128d more = _mm_loadu_pd(four + 2);
    low_ = _mm_min_pd(two, low_);
    high_ = _mm_max_pd(two, high_);
    low_too_ = _mm_min_pd(more, low_too_);
    high_too_ = _mm_max_pd(more, high_too_);
  }

  Range range() const {
    const __m128d low = _mm_min_pd(low_too_, low_);
    const __m128d high = _mm_max_pd(high_too_, high_);
    Range range{_mm_cvtsd_f64(low), _mm_cvtsd_f64(high)};
    range.include(_mm_cvtsd_f64(_mm_unpackhi_pd(low, low)));
    range.include(_mm_cvtsd_f64(_mm_unpackhi_pd(high, high)));
    return range;
  }

 private:
  __m128d low_, high_, low_too_, high_too_;
#else
  explicit Range_of_fours(double first) : range_{first, first} {}

  void include(const double* four) {
    for (std::size_t i = 0; i < 4; ++i) range_.include(four[i]);
  }

  Range range() const { return range_; }

 private:
  Range range_;
#endif
};

// The smallest and the largest of `count` values, at least one; NaN and zeros as above.
inline Range range_of(const double* values, std::size_t count) {
  Range_of_fours fours(values[0]);
  std::size_t i = 0;
  for (; i + 4 <= count; i += 4) fours.include(values + i);
  Range range = fours.range();
  for (; i < count; ++i) range.include(values[i]);
  return range;
}

inline Range range_of(const std::vector<double>& values) {
  return range_of(values.data(), values.size());
}

}  // namespace chart_trace
