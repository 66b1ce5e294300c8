#pragma once

#include <utility>
#include <vector>

#include "primitives/groups.hpp"

// Divides a point set into groups of touching pixels. A point touches another when it lies in the
// closed square box of side 3 pixel steps around it, so with a pixel step of 1 the groups of whole
// pixels are the connected components under 8-connectivity.
// Shape: x and y groups are parallel; every input point is in exactly one group, none is empty.
// Order (the extractors rely on it): groups by their first point in input order; inside a group
// that seed, then breadth first: the points that each point of the group takes, in input order.
// NaN: a point with a NaN coordinate touches nothing and is a group of its own; so is every point
// with a pixel step that is NaN or negative. (A negative step that is lost in rounding beside huge
// coordinates counts as zero: equal points touch.) No points give no groups.
// Cost: near linear, whatever the spread of the points; a few ns a pixel for pictures that come row
// by row or column by column.
class Fission_algm {
 public:
  Fission_algm(std::vector<double> x, std::vector<double> y, double pixel_step);

  std::vector<Group_of_arrays> x_groups_func() const { return groups_.x_groups(); }
  std::vector<Group_of_arrays> y_groups_func() const { return groups_.y_groups(); }
  // The same without a copy, of a grouping that is about to be thrown away.
  chart_trace::Groups groups() && { return std::move(groups_); }

 private:
  bool flood_picture(double side);

  std::vector<double> x_points, y_points;  // not yet grouped; empty once built
  chart_trace::Groups groups_;             // in the order of their seeds
  double pixel_step;
};
