#include "grouping/check_groups.hpp"

#include "primitives/vectors.hpp"

bool check_groups(std::vector<double> a, std::vector<double> b, double pixel_step) {
  using chart_trace::run_extent_of;
  return chart_trace::extents_touch(run_extent_of(a), run_extent_of(b), pixel_step);
}

namespace chart_trace {

Run_extent run_extent_of(const std::vector<double>& x) {
  const Extremes extremes = extremes_of(x);
  return {static_cast<float>(extremes.min), static_cast<float>(extremes.max)};
}

bool extents_touch(Run_extent a, Run_extent b, double pixel_step) {
  if (a.min >= b.min) return static_cast<double>(b.max - a.min) >= -pixel_step;
  if (b.min > a.min) return static_cast<double>(a.max - b.min) >= -pixel_step;
  return false;
}

}  // namespace chart_trace
