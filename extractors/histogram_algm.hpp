#pragma once

#include <utility>
#include <vector>

#include "primitives/group_of_arrays.hpp"

// Extracts the bars of a histogram. The pixels are cut into vertical compartments; the top of a
// compartment is its point with the smallest y (y grows downwards), the first in input order of
// equals; neighbouring tops of nearly equal height make one bar. A bar ends where the next top is
// higher or lower by strictly more than half a percent of the summed absolute height changes of all
// tops.
// Shape: both results are parallel, one element a bar, left to right: x is the middle of the
// leftmost and rightmost top of the bar, y the mean height of its tops. Lengths are image pixels.
// NaN: never ends a bar; when all tops are equally high the shares are NaN, and there is one bar.
// Empty: a compartment without points is passed over and does not end a bar; without any top there
// are no bars.
// Cost: three passes over the points, one over the compartments, which are never built: memory is
// bounded by the points.
class Histogram_algm {
 public:
  Histogram_algm(std::vector<double> x, std::vector<double> y, double compartment_width);

  std::vector<double> x_hist_func() const& { return x_hist; }
  std::vector<double> y_hist_func() const& { return y_hist; }

 private:
  void close_bar(const std::vector<double>& bar_x, const std::vector<double>& bar_y);

  std::vector<double> x_points, y_points;
  std::vector<double> x_hist, y_hist;
  std::vector<Group_of_arrays> x_groups, y_groups;  // stay empty: compartments are not kept
};
