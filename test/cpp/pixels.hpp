// Small point sets, written so that a test shows the picture it speaks of.
#pragma once

#include <initializer_list>
#include <limits>
#include <utility>

#include "test/cpp/same_bits.hpp"

namespace chart_trace_test {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct Pixels {
  Doubles x;
  Doubles y;
};

inline Pixels pixels(std::initializer_list<std::pair<double, double>> points) {
  Pixels set;
  for (const auto& [x, y] : points) {
    set.x.push_back(x);
    set.y.push_back(y);
  }
  return set;
}

// A filled block in raster order: row by row from the top, left to right, `step` apart.
inline Pixels block(int columns, int rows, double left = 0, double top = 0, double step = 1) {
  Pixels set;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      set.x.push_back(left + column * step);
      set.y.push_back(top + row * step);
    }
  }
  return set;
}

// All points at one x, from the first y to the last.
inline Pixels column(double x, const Doubles& ys) { return {Doubles(ys.size(), x), ys}; }

// One set after the other.
inline Pixels joined(std::initializer_list<Pixels> sets) {
  Pixels all;
  for (const Pixels& set : sets) {
    all.x.insert(all.x.end(), set.x.begin(), set.x.end());
    all.y.insert(all.y.end(), set.y.begin(), set.y.end());
  }
  return all;
}

}  // namespace chart_trace_test
