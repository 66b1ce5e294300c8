#pragma once

#include <cmath>
#include <cstdint>

namespace chart_trace {

// The horizontal extent of a run, in the precision in which touching is decided. min <= max, or
// both are NaN.
struct Run_extent {
  float min;
  float max;
};

// Whether two runs touch horizontally: their extents overlap, or the gap between the end of the
// left one and the start of the right one is at most `step`. The gap is taken in single precision
// and widened for its test. A NaN touches nothing.
inline bool extents_touch(Run_extent a, Run_extent b, double step) {
  if (a.min >= b.min) return static_cast<double>(b.max - a.min) >= -step;
  if (b.min > a.min) return static_cast<double>(a.max - b.min) >= -step;
  return false;
}

// A run by its place in the list of runs, which is in input order.
using Run = std::uint32_t;

// The runs of a point set, and what two of them are to each other. Points to arrays that live
// elsewhere: extents[k] and rows[k], the y value, belong to run k.
struct Run_pairs {
  const Run_extent* extents;
  const double* rows;
  Run count;
  double step;
  double row_tolerance;

  // Whether `run` lies more than the tolerance below `reference`. Never with a NaN among the rows.
  bool is_below(Run reference, Run run) const {
    return rows[run] - rows[reference] > row_tolerance;
  }
  // Whether `run` lies less than the tolerance above or below `reference`.
  bool is_near(Run reference, Run run) const {
    return row_tolerance > std::fabs(rows[run] - rows[reference]);
  }
  // Whether `run` is near `reference` and touches it.
  bool touch(Run reference, Run run) const {
    return is_near(reference, run) && extents_touch(extents[reference], extents[run], step);
  }
};

}  // namespace chart_trace
