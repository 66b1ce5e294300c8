#include "indexing/touching_runs.hpp"

#include <cmath>
#include <limits>

namespace chart_trace {
namespace {

template <typename Number>
bool is_finite(Number number) {
  return std::fabs(number) <= std::numeric_limits<Number>::max();
}

}  // namespace

bool Touching_runs::in_raster_order(const Run_pairs& pairs) {
  if (!(pairs.step > 0.0 && is_finite(pairs.step))) return false;
  Run row = 0;  // the first run of the row in hand
  Run row_above = 0;
  for (Run k = 0; k < pairs.count; ++k) {
    const Run_extent extent = pairs.extents[k];
    if (!is_finite(extent.min) || !is_finite(extent.max) || !is_finite(pairs.rows[k])) return false;
    if (k == 0) continue;
    if (pairs.rows[k - 1] == pairs.rows[k]) {
      if (!(pairs.extents[k - 1].max <= extent.min)) return false;
      continue;
    }
    if (!(pairs.rows[k - 1] < pairs.rows[k])) return false;
    if (row_above != row && pairs.is_near(row_above, k)) return false;
    row_above = row;
    row = k;
  }
  return true;
}

Touching_runs::Touching_runs(const Run_pairs& pairs) : pairs_(pairs), neighbours_(pairs.count) {
  cut_into_rows();
  find_rows_below();
  for (std::size_t row = 0; row + 1 < rows_.size(); ++row) sweep(row);
}

void Touching_runs::cut_into_rows() {
  for (Run k = 0; k < pairs_.count; ++k) {
    if (k == 0 || pairs_.rows[k - 1] != pairs_.rows[k]) {
      rows_.push_back({k, k, false});
    } else if (reaches(k - 1, k)) {
      rows_.back().is_crowded = true;
    }
    neighbours_[k].row = static_cast<std::uint32_t>(rows_.size() - 1);
  }
  rows_.push_back({pairs_.count, pairs_.count, false});
}

// Row and row below only move downwards, since the distance of rows is ordered as they are.
void Touching_runs::find_rows_below() {
  std::size_t below = 0;
  for (std::size_t row = 0; row + 1 < rows_.size(); ++row) {
    while (below + 1 < rows_.size() && !pairs_.is_below(rows_[row].first, rows_[below].first)) {
      ++below;
    }
    rows_[row].below = rows_[below].first;
  }
}

// Finds what touches between a row and the next.
void Touching_runs::sweep(std::size_t row) {
  const Run middle = rows_[row + 1].first;
  const Run end = middle == pairs_.count ? middle : rows_[row + 2].first;
  if (middle == end || !pairs_.is_near(rows_[row].first, middle)) return;
  Range below{middle, middle};
  for (Run k = rows_[row].first; k < middle; ++k) {
    while (below.first < end && !reaches(below.first, k)) ++below.first;
    while (below.last < end && reaches(k, below.last)) ++below.last;
    neighbours_[k].below = below;
    for (Run j = below.first; j < below.last; ++j) {
      Range& above = neighbours_[j].above;
      if (above.first == above.last) above.first = k;
      above.last = k + 1;
    }
  }
}

// Whether the right end of `left` is not too far from the left end of `right` to touch it. Two runs
// touch when each reaches the other: the test that is not the stated one is true of itself, for a
// run that begins right of the other ends there as well.
bool Touching_runs::reaches(Run left, Run right) const {
  return static_cast<double>(pairs_.extents[left].max - pairs_.extents[right].min) >= -pairs_.step;
}

Touching_runs::Range Touching_runs::touching_in_row(Run reference) const {
  const std::size_t row = neighbours_[reference].row;
  Range same{reference, reference};
  while (same.first > rows_[row].first && reaches(same.first - 1, reference)) --same.first;
  while (same.last < rows_[row + 1].first && reaches(reference, same.last)) ++same.last;
  return same;
}

}  // namespace chart_trace
