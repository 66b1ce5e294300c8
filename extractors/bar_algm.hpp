#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "primitives/groups.hpp"

// Turns the pixels of the bars of a bar chart into one point per bar. The pixels are grouped, by
// fission grouping when `method` is exactly "fission" and by horizontal grouping for every other
// string; each group is read both ways: as a vertical bar, (mean x, smallest y), the middle of its
// top edge since y grows downwards, and as a horizontal bar, (largest x, mean y), the middle of its
// right end. Lengths are image pixels.
// Shape: all four results are parallel, one element a group, in group order. No groups give four
// empty results.
// NaN: the extremes pass over a NaN unless it stands first in its group; a mean with a NaN is NaN.
class Bar_algm {
 public:
  Bar_algm(std::vector<double> x, std::vector<double> y, double pixel_step, std::string method);

  std::vector<double> x_vertical_bar() const& { return x_vertical; }
  std::vector<double> y_vertical_bar() const& { return y_vertical; }
  std::vector<double> x_horizontal_bar() const& { return x_horizontal; }
  std::vector<double> y_horizontal_bar() const& { return y_horizontal; }

 private:
  std::vector<double> x_points, y_points;
  std::vector<double> x_vertical, y_vertical;
  std::vector<double> x_horizontal, y_horizontal;
  chart_trace::Groups groups_;
  double pixel_step;
  std::int32_t group_count;
};
