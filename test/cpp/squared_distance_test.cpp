#include "indexing/squared_distance.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "test/cpp/pixels.hpp"
#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::largest_square_below;
using chart_trace::reach_of;

constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

// Radii of every size, most of them with all bits in use.
Doubles radii() {
  Random random(1);
  Doubles values = {smallest, 1e-200, 1.5e-162, 2.2e-162, 3e-162, 1e-154, 1.0,
                    2.0,      5.0,    1e154,    1.4e154,  1e300,  largest};
  for (int exponent = -1100; exponent < 1020; ++exponent) {
    values.push_back(std::ldexp(1.0 + random.fraction(), exponent));
  }
  return values;
}

TEST(Largest_square_below, has_a_root_below_and_the_next_square_has_not) {
  for (const double radius : radii()) {
    const double square = largest_square_below(radius);
    if (!(radius > 0.0)) continue;  // underflowed
    ASSERT_GE(square, 0.0) << text_of(radius);
    ASSERT_LT(std::sqrt(square), radius) << text_of(radius);
    if (square == largest) continue;
    ASSERT_GE(std::sqrt(std::nextafter(square, infinity)), radius) << text_of(radius);
  }
}

TEST(Largest_square_below, is_the_largest_number_for_a_radius_beyond_all_roots) {
  EXPECT_EQ(largest_square_below(infinity), largest);
  EXPECT_EQ(largest_square_below(1e155), largest);
}

TEST(Largest_square_below, is_negative_when_nothing_is_below) {
  for (const double radius : {0.0, -0.0, -1.0, -infinity, not_a_number}) {
    EXPECT_LT(largest_square_below(radius), 0.0) << radius;
  }
}

// Squares never decrease, so it is enough to look at the first difference beyond.
TEST(Reach_of, is_not_exceeded_by_a_difference_with_a_square_no_larger) {
  for (const double root : radii()) {
    const double square = std::fmin(root * root, largest);
    const double beyond = std::nextafter(reach_of(square), infinity);
    ASSERT_GT(beyond * beyond, square) << text_of(square);
  }
}

TEST(Reach_of, is_hardly_more_than_the_root) {
  for (const double root : radii()) {
    const double square = std::fmin(root * root, largest);
    ASSERT_LT(reach_of(square), std::sqrt(square) * 1.000001 + 1e-161) << text_of(square);
  }
}

}  // namespace
}  // namespace chart_trace_test
