#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace chart_trace {

// Distances compared by their squares. A distance is sqrt(dy * dy + dx * dx), each step rounded;
// subtraction, multiplication, addition and root never decrease when what they are given grows, and
// rounding keeps that. So the squares decide, as long as it is known which squares have which
// roots: several neighbouring ones share one rounded root.

// The square of the distance between two points.
inline double square_between(double x1, double y1, double x2, double y2) {
  const double dy = y1 - y2;
  const double dx = x1 - x2;
  return dy * dy + dx * dx;
}

// The largest square whose root lies below `radius`, so that a distance lies below `radius` just
// when its square does not exceed this. Negative when there is none: `radius` is NaN or not above
// 0. A finite number in every other case, an infinite radius included. The search starts high
// enough: what is next above the rounded square of the radius is above the true one, and so is its
// root, or equal once it is rounded. Cost: a few roots.
inline double largest_square_below(double radius) {
  if (!(radius > 0.0)) return -1.0;
  double square = std::min(radius * radius, std::numeric_limits<double>::max());
  while (!(std::sqrt(square) < radius)) square = std::nextafter(square, 0.0);
  return square;
}

// A length that no coordinate difference of two points exceeds whose square is at most `square`.
// The factor outweighs the roundings, the summand what a square loses when it underflows.
inline double reach_of(double square) { return std::sqrt(square) * (1.0 + 0x1p-50) + 0x1p-536; }

}  // namespace chart_trace
