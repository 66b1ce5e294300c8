// The flood fill's ways of finding neighbours, each driven on purpose and held against the oracle
// bit for bit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "grouping/fission_algm.hpp"
#include "test/cpp/pixels.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

testing::AssertionResult equals_oracle(const Pixels& set, double step) {
  const Fission_algm got(set.x, set.y, step);
  return same_groups(got.x_groups_func(), got.y_groups_func(), oracle::fission(set.x, set.y, step));
}

Pixels cloud(std::uint64_t seed, std::size_t count, double side) {
  Random random(seed);
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    set.x.push_back(side * random.fraction());
    set.y.push_back(side * random.fraction());
  }
  return set;
}

TEST(Fission_paths, clouds_of_any_density_equal_the_oracle) {
  for (const double side : {1e-9, 0.5, 3.0, 10.0, 30.0, 60.0, 1e6, 1e300}) {
    for (const double step : {1.0, 0.37, -1.0, 0.0, 1e-20, 1e20}) {
      EXPECT_TRUE(equals_oracle(cloud(1, 700, side), step)) << "side " << side << " step " << step;
    }
  }
}

// More points to a cell than are compared one by one, but not all in one box: the box reaches over
// pixels of a block that is many steps wide.
TEST(Fission_paths, crowded_cells_equal_the_oracle) {
  for (const double step : {3.0, 7.0, 20.0, 100.0}) {
    EXPECT_TRUE(equals_oracle(block(30, 40), step)) << step;
    EXPECT_TRUE(equals_oracle(cloud(2, 1500, 100.0), step)) << step;
  }
}

// Around the largest number of points that are compared one by one, and the size of a leaf.
TEST(Fission_paths, duplicates_in_any_number_equal_the_oracle) {
  for (const std::size_t count : {15U, 16U, 17U, 63U, 64U, 65U, 66U, 127U, 128U, 129U, 300U}) {
    Pixels set = cloud(3, 40, 8.0);
    for (std::size_t i = 0; i < count; ++i) {
      set.x.push_back(set.x[i % 3]);
      set.y.push_back(set.y[i % 3]);
    }
    EXPECT_TRUE(equals_oracle(set, 1.0)) << count;
    EXPECT_TRUE(equals_oracle(set, 0.0)) << count;
  }
}

TEST(Fission_paths, far_outliers_do_not_change_the_groups_of_the_others) {
  for (const double far : {1e6, 1e15, 1e17, 1e300, infinity, -infinity, -1e300}) {
    Pixels set = cloud(4, 500, 30.0);
    set.x[7] = far;
    set.y[9] = far;
    set.x[11] = far;
    set.y[11] = -far;
    EXPECT_TRUE(equals_oracle(set, 1.0)) << far;
  }
}

// Where neighbouring doubles are about as far apart as pixels, or farther.
TEST(Fission_paths, coordinates_that_hardly_tell_pixels_apart_equal_the_oracle) {
  for (const double base : {4503599627370496.0, 9007199254740992.0, 3e16, 1e18, -9007199254740992.0,
                            -4503599627370496.0}) {
    for (const double step : {0.25, 1.0, 3.0, -1.0}) {
      Pixels set = cloud(5, 400, 30.0);
      for (double& x : set.x) x = base + std::floor(x);
      EXPECT_TRUE(equals_oracle(set, step)) << base << " step " << step;
      for (double& y : set.y) y = -base + std::floor(y);
      EXPECT_TRUE(equals_oracle(set, step)) << base << " step " << step;
    }
  }
}

TEST(Fission_paths, steps_beyond_all_bounds_equal_the_oracle) {
  Pixels set = cloud(6, 200, 1e308);
  set.x[3] = infinity;
  set.x[4] = -infinity;
  set.y[5] = infinity;
  set.y[6] = not_a_number;
  for (std::size_t i = 20; i < 100; ++i) set.x[i] = infinity;
  for (const double step : {1.0, 1e149, 6e149, 1e150, 7e149, 1e200, 1e307, 1e308, infinity,
                            not_a_number, -infinity, 1e-150, 1e-151, 5e-324, 0.0, -0.0}) {
    EXPECT_TRUE(equals_oracle(set, step)) << step;
  }
}

TEST(Fission_paths, cells_left_of_and_above_zero_equal_the_oracle) {
  Pixels set = cloud(7, 800, 30.0);
  for (double& x : set.x) x -= 15.0;
  for (double& y : set.y) y -= 15.0;
  EXPECT_TRUE(equals_oracle(set, 1.0));
  EXPECT_TRUE(equals_oracle(set, 0.7));
}

}  // namespace
}  // namespace chart_trace_test
