#pragma once

#include <algorithm>

namespace chart_trace {

// A closed box around a centre: the seed's box of Box_bubble and the reach of a pixel in the flood
// fill. Its bounds are rounded once each; points are compared with these bounds and never by their
// distance from the centre, which rounds differently. With a NaN bound it contains nothing.
struct Box {
  double left, right, low, high;

  static Box around(double x, double y, double side) {
    const double half = side * 0.5;
    return {x - half, x + half, y - half, y + half};
  }

  bool contains(double x, double y) const {
    return x >= left && right >= x && y >= low && high >= y;
  }
};

// How far a value lies outside a range, 0 within it. NaN if the value or the lower bound is NaN, or
// if both are the same infinity.
inline double outside(double value, double low, double high) {
  return std::max(std::max(low - value, value - high), 0.0);
}

}  // namespace chart_trace
