#pragma once

#include <cstddef>

namespace chart_trace {

// Finds the runs of a point set: maximal stretches of points, in input order, that lie on one row
// and whose x values rise by exactly one `step`. Calls visit(first, last) for each, in input order:
// the run holds the points first, first + 1, ..., last - 1. Every point is in exactly one run.
// With x and y exchanged it finds the runs of columns.
// Points are neighbours when x[k] == x[k + 1] - step. The test is never rearranged: with a step
// that is no whole number every other form rounds differently. NaN equals nothing and is a run of
// its own; -0.0 equals 0.0, so the y values of one run may differ in the sign of their zero.
// Cost: one pass. The plain loop is also the fastest one: taking four or more points at a time
// costs more on pictures, whose runs are short, than it saves on long ones.
template <typename Visit>
void for_each_run(const double* x, const double* y, std::size_t count, double step, Visit visit) {
  if (count == 0) return;
  std::size_t first = 0;
  for (std::size_t k = 1; k < count; ++k) {
    if (y[k - 1] == y[k] && x[k - 1] == x[k] - step) continue;
    visit(first, k);
    first = k;
  }
  visit(first, count);
}

}  // namespace chart_trace
