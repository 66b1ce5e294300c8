#include "grouping/check_groups.hpp"

#include "indexing/run_pairs.hpp"
#include "primitives/vectors.hpp"

namespace {

chart_trace::Run_extent extent_of(const std::vector<double>& x) {
  const chart_trace::Extremes extremes = chart_trace::extremes_of(x);
  return {static_cast<float>(extremes.min), static_cast<float>(extremes.max)};
}

}  // namespace

bool check_groups(std::vector<double> a, std::vector<double> b, double pixel_step) {
  return chart_trace::extents_touch(extent_of(a), extent_of(b), pixel_step);
}
