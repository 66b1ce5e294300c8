#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "indexing/bits.hpp"
#include "indexing/range.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// Whether point k carries on the run of point k - 1. The test is never rearranged: with a step that
// is no whole number every other form rounds differently.
inline bool carries_on(const double* x, const double* y, std::size_t k, double step) {
  return y[k - 1] == y[k] && x[k - 1] == x[k] - step;
}

// The same for four points from k on, a bit each, the lowest for point k.
inline std::uint64_t four_carry_on(const double* x, const double* y, std::size_t k, double step) {
#if defined(__SSE2__)
  // Every 64-bit x86 has these. Two points at a time and no branches: runs of a picture are short,
  // and a branch that guesses their ends wrongly costs more than all the rest, 2.1 ns a point
  // instead of 0.7 on discs of 13 pixels.
  const __m128d steps = _mm_set1_pd(step);
  const auto two_carry_on = [&](std::size_t first) {
    const __m128d x_before = _mm_sub_pd(_mm_loadu_pd(x + first), steps);
    const __m128d same_x = _mm_cmpeq_pd(_mm_loadu_pd(x + first - 1), x_before);
    const __m128d same_y = _mm_cmpeq_pd(_mm_loadu_pd(y + first - 1), _mm_loadu_pd(y + first));
    return _mm_castpd_ps(_mm_and_pd(same_x, same_y));
  };
  const __m128 four = _mm_shuffle_ps(two_carry_on(k), two_carry_on(k + 2), _MM_SHUFFLE(2, 0, 2, 0));
  return static_cast<std::uint64_t>(_mm_movemask_ps(four));
#else
  std::uint64_t bits = 0;
  for (std::size_t j = 0; j < 4; ++j) {
    bits |= static_cast<std::uint64_t>(carries_on(x, y, k + j, step)) << j;
  }
  return bits;
#endif
}

// A bit for each of the 64 points from k on that begins a run, the lowest for point k. Includes
// their x values in `fours`, four at a time.
template <typename Fours>
std::uint64_t begin_runs_of_64(const double* x, const double* y, std::size_t k, double step,
                               Fours& fours) {
  std::uint64_t carry_on = 0;
  Fours copy = fours;  // which need not be in memory meanwhile
  for (std::size_t j = 0; j < 64; j += 4) {
    carry_on |= four_carry_on(x, y, k + j, step) << j;
    copy.include(x + k + j);
  }
  fours = copy;
  return ~carry_on;
}

// The same for the last points, fewer than 64, and then one for the end of the last run.
inline std::uint64_t begin_last_runs(const double* x, const double* y, std::size_t k,
                                     std::size_t count, double step) {
  std::uint64_t begins = std::uint64_t{1} << (count - k);
  for (std::size_t j = k; j < count; ++j) {
    begins |= static_cast<std::uint64_t>(!carries_on(x, y, j, step)) << (j - k);
  }
  return begins;
}

// Calls visit(first, last) for each run that ends where `begins` says, from k on, and moves `first`
// to the last of these ends.
template <typename Visit>
void visit_runs(std::uint64_t begins, std::size_t k, std::size_t& first, Visit& visit) {
  for (; begins != 0; begins &= begins - 1) {
    const std::size_t next = k + static_cast<std::size_t>(lowest_bit(begins));
    visit(first, next);
    first = next;
  }
}

// Finds the runs of a point set: maximal stretches of points, in input order, that lie on one row
// and whose x values rise by exactly one `step`. Calls visit(first, last) for each, in input order:
// the run holds the points first, first + 1, ..., last - 1. Every point is in exactly one run.
// With x and y exchanged it finds the runs of columns.
// NaN equals nothing and is a run of its own; -0.0 equals 0.0, so the y values of one run may
// differ in the sign of their zero. Cost: one pass, some 0.5 ns a point and 1 ns a run.
template <typename Visit>
void for_each_run(const double* x, const double* y, std::size_t count, double step, Visit visit) {
  struct {
    void include(const double*) const {}
  } nothing;
  std::size_t first = 0;
  for (std::size_t k = 1; k <= count; k += 64) {
    const std::uint64_t begins = k + 64 <= count ? begin_runs_of_64(x, y, k, step, nothing)
                                                 : begin_last_runs(x, y, k, count, step);
    visit_runs(begins, k, first, visit);
  }
}

// The same in two steps, for those who have to know the range of x before they look at a run: it is
// found in the same pass, where a pass of its own would be 0.2 ns a point. There is at least one
// point.
class Found_runs {
 public:
  Found_runs(const double* x, const double* y, std::size_t count, double step)
      : begins_((count + 63) / 64), range_of_x_{x[0], x[0]} {
    Range_of_fours fours(x[0]);
    std::size_t k = 1;
    for (; k + 64 <= count; k += 64) begins_[k / 64] = begin_runs_of_64(x, y, k, step, fours);
    begins_[k / 64] = begin_last_runs(x, y, k, count, step);
    range_of_x_ = fours.range();
    for (; k < count; ++k) range_of_x_.include(x[k]);
  }

  Range range_of_x() const { return range_of_x_; }

  template <typename Visit>
  void for_each(Visit visit) const {
    std::size_t first = 0;
    std::size_t k = 1;
    for (const std::uint64_t begins : begins_) {
      visit_runs(begins, k, first, visit);
      k += 64;
    }
  }

 private:
  std::vector<std::uint64_t> begins_;  // a bit for each point after the first, and for the end
  Range range_of_x_;
};

}  // namespace chart_trace
