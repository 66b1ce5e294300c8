#pragma once

#include <vector>

// Splits a point set by one square box around its first point, the seed: the group is the seed and
// every other point inside the box, the remainder is every point outside. The box is placed once
// and never moves.
// Bounds: the seed's coordinates less and plus half of box_size, each rounded once; points are
// compared with these bounds, edges included, and not by their distance from the seed, which rounds
// differently.
// Order: the seed, then the inside points in input order; the remainder in input order.
// NaN: a point with a NaN coordinate is outside; a NaN seed leaves every other point outside, and
// so does a negative box_size, unless it is lost in rounding beside the coordinates. No points give
// an empty group and an empty remainder.
// Cost: one pass.
class Box_bubble {
 public:
  Box_bubble(std::vector<double> x, std::vector<double> y, double box_size);

  std::vector<double> x_group_func() const& { return x_group; }
  std::vector<double> y_group_func() const& { return y_group; }
  std::vector<double> x_remain_func() const& { return x_remain; }
  std::vector<double> y_remain_func() const& { return y_remain; }

 private:
  std::vector<double> x_points, y_points;
  std::vector<double> x_group, y_group;    // parallel, the seed first
  std::vector<double> x_remain, y_remain;  // parallel
  double box_size;
};
