#include "indexing/raster_runs.hpp"

#include <cmath>
#include <limits>

namespace chart_trace {
namespace {

// A run that reaches the one so many places before it in its row stands in a crowd. From about as
// many on Unordered_runs is faster: it need not pass over each touching run that was taken.
constexpr Run crowd = 32;

template <typename Number>
bool is_finite(Number number) {
  return std::fabs(number) <= std::numeric_limits<Number>::max();
}

}  // namespace

std::optional<Raster_runs> Raster_runs::of(const Run_pairs& pairs) {
  std::optional<Raster_runs> runs = Raster_runs(pairs);
  if (!runs->find_neighbours()) return std::nullopt;
  runs->is_left_.assign(pairs.count, 1);
  runs->left_ = runs->last_left_ = runs->stopped_ = pairs.count;
  runs->find_last_left();
  if (pairs.count >= many) runs->to_fetch_ = pairs.count - at_once;
  return runs;
}

// Returns false when the runs turn out to be in another order, or a row to be crowded: before the
// neighbours of the crowd are gone through.
bool Raster_runs::find_neighbours() {
  if (!(pairs_.step > 0.0 && is_finite(pairs_.step))) return false;
  neighbours_.reserve(pairs_.count);
  bool touch_in_row = false;
  Run row = 0;  // the first run of the row in hand
  Run row_above = 0;
  Run first = 0;  // of those in the row above that touch the run in hand
  Run last = 0;   // behind the last of them
  for (Run k = 0; k < pairs_.count; ++k) {
    const Run_extent extent = pairs_.extents[k];
    if (!is_finite(extent.min) || !is_finite(extent.max) || !is_finite(pairs_.rows[k]))
      return false;
    if (k > 0 && pairs_.rows[k - 1] == pairs_.rows[k]) {
      if (!(pairs_.extents[k - 1].max <= extent.min)) return false;
      if (reaches(k - 1, k)) {
        if (k - row >= crowd && reaches(k - crowd, k)) return false;
        touch_in_row = true;
      }
    } else if (k > 0) {
      if (!(pairs_.rows[k - 1] < pairs_.rows[k])) return false;
      if (row_above != row && pairs_.is_near(row_above, k)) return false;
      row_above = row;
      row = k;
      first = last = pairs_.is_near(row_above, k) ? row_above : row;
    }
    while (first < row && !reaches(first, k)) ++first;
    while (last < row && reaches(k, last)) ++last;
    // Field by field: a whole one would be put together in memory and waited for, 2 ns a pixel of
    // lines.
    neighbours_.emplace_back();
    neighbours_.back().above.first = first;
    neighbours_.back().above.last = last;
    for (Run j = first; j < last; ++j) {
      Run_range& below = neighbours_[j].below;
      if (below.first == below.last) below.first = k;
      below.last = k + 1;
    }
  }
  touch_in_row_ = touch_in_row;
  return true;
}

// Whether the right end of `left` is not too far from the left end of `right` to touch it. Two runs
// touch when each reaches the other: the test that is not the stated one is true of itself, for a
// run that begins right of the other ends there as well.
bool Raster_runs::reaches(Run left, Run right) const {
  return static_cast<double>(pairs_.extents[left].max - pairs_.extents[right].min) >= -pairs_.step;
}

Raster_runs::Run_range Raster_runs::touching_in_row(Run reference) const {
  const double* const rows = pairs_.rows;
  Run_range same{reference, reference};
  while (same.first > 0 && rows[same.first - 1] == rows[reference] &&
         reaches(same.first - 1, reference)) {
    --same.first;
  }
  while (same.last < pairs_.count && rows[same.last] == rows[reference] &&
         reaches(reference, same.last)) {
    ++same.last;
  }
  return same;
}

void Raster_runs::find_last_left() {
  while (last_left_ > 0 && !is_left_[last_left_ - 1]) --last_left_;
  while (stopped_ > 0 && (last_left_ == 0 || !pairs_.is_below(stopped_ - 1, last_left_ - 1))) {
    --stopped_;
  }
}

}  // namespace chart_trace
