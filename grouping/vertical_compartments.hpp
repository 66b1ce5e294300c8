#pragma once

#include <utility>
#include <vector>

#include "primitives/groups.hpp"

// Cuts a point set into vertical compartments of equal width, side by side from the leftmost point
// rightwards, as far as the rightmost point or until every point has been taken.
// Borders: closed intervals [t, t + width], each left border the right border before it. They are
// added up and never computed as left + k * width, which differs in the last bits. A point on a
// border belongs to the compartment left of it.
// Shape: x and y groups are parallel, one for each compartment, left to right, points in input
// order; a compartment without points is an empty group, so gaps stay visible.
// NaN: a point with a NaN coordinate is never taken; the run then ends behind the rightmost point.
// No points, or a NaN as first x, give no compartments; a NaN as first y leaves all empty.
// A width that does not move the border to the right (0, negative, NaN, too small) makes one
// compartment, and then the run stops.
// Cost: a few passes over the points, and over the compartments; neither multiplies the other.
class Vertical_compartments {
 public:
  Vertical_compartments(std::vector<double> x, std::vector<double> y, double compartment_width);

  std::vector<Group_of_arrays> x_groups_func() const { return groups_.x_groups(); }
  std::vector<Group_of_arrays> y_groups_func() const { return groups_.y_groups(); }

 private:
  void divide();

  std::vector<double> x_points, y_points;  // not yet taken by a compartment
  chart_trace::Groups groups_;             // left to right
  double compartment_width;
};
