// The chain's ways of finding the nearest point, each driven on purpose and held against the oracle
// bit for bit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "primitives/point_density.hpp"
#include "test/cpp/pixels.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

testing::AssertionResult equals_oracle(const Pixels& set) {
  return same_bits(values_of(point_density(set.x, set.y, 0.05)),
                   oracle::point_density(set.x, set.y, 0.05));
}

Pixels exchanged(const Pixels& set) { return {set.y, set.x}; }

Pixels moved(Pixels set, double dx, double dy) {
  for (double& x : set.x) x += dx;
  for (double& y : set.y) y += dy;
  return set;
}

Pixels cloud(std::uint64_t seed, std::size_t count, double width, double height) {
  Random random(seed);
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    set.x.push_back(width * random.fraction());
    set.y.push_back(height * random.fraction());
  }
  return set;
}

Pixels shuffled(Pixels set, std::uint64_t seed = 1) {
  Random random(seed);
  for (std::size_t i = set.x.size(); i > 1; --i) {
    const auto k = static_cast<std::size_t>(random.below(i));
    std::swap(set.x[i - 1], set.x[k]);
    std::swap(set.y[i - 1], set.y[k]);
  }
  return set;
}

// Around one cell, one batch, and the number of points from which a cell is divided.
TEST(Chain_paths, clouds_of_any_size_equal_the_oracle) {
  for (std::size_t count = 1; count <= 70; ++count) {
    ASSERT_TRUE(equals_oracle(cloud(1, count, 9.0, 9.0))) << count;
  }
  for (const std::size_t count : {127U, 500U, 2000U}) {
    EXPECT_TRUE(equals_oracle(cloud(2, count, 100.0, 100.0))) << count;
  }
}

TEST(Chain_paths, long_and_thin_clouds_equal_the_oracle) {
  for (const double height : {0.0, 1e-300, 1e-9, 0.01, 1.0}) {
    EXPECT_TRUE(equals_oracle(cloud(3, 900, 1000.0, height))) << height;
    EXPECT_TRUE(equals_oracle(exchanged(cloud(3, 900, 1000.0, height)))) << height;
  }
}

// Nearly all distances tie; the first in input order is next.
TEST(Chain_paths, lattices_equal_the_oracle) {
  for (const double step : {1.0, 0.1, 3.0}) {
    EXPECT_TRUE(equals_oracle(block(31, 29, 0, 0, step))) << step;
    EXPECT_TRUE(equals_oracle(shuffled(block(31, 29, -7, 100, step)))) << step;
  }
}

TEST(Chain_paths, points_on_a_circle_equal_the_oracle) {
  Pixels set = pixels({{0, 0}});
  for (int i = 0; i < 600; ++i) {
    set.x.push_back(10.0 * std::cos(i));
    set.y.push_back(10.0 * std::sin(i));
  }
  EXPECT_TRUE(equals_oracle(set));
}

// Squares that differ in the last bits have one root, and then the first point is next, not the one
// with the smaller square. All points lie around the first at distances within a few of those bits.
TEST(Chain_paths, different_squares_with_one_root_tie) {
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    Pixels set = pixels({{0, 0}});
    const double radius = 1.0 + random.fraction();
    for (int i = 0; i < 40; ++i) {
      double along = radius;
      for (std::uint64_t k = random.below(4); k > 0; --k) along = std::nextafter(along, 9.0);
      const bool across = random.one_in(2);
      const double sign = random.one_in(2) ? 1.0 : -1.0;
      const double aside = 1e-8 * random.fraction();
      set.x.push_back(across ? aside : sign * along);
      set.y.push_back(across ? sign * along : aside);
    }
    ASSERT_TRUE(equals_oracle(set)) << seed;
  }
}

// The same, spread over many cells.
TEST(Chain_paths, one_root_in_far_cells_ties) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    Random random(seed);
    Pixels set = pixels({{50, 50}});
    for (int i = 0; i < 300; ++i) {
      const double angle = 6.3 * random.fraction();
      set.x.push_back(50 + 40 * std::cos(angle));
      set.y.push_back(50 + 40 * std::sin(angle));
    }
    ASSERT_TRUE(equals_oracle(set)) << seed;
  }
}

TEST(Chain_paths, clumps_within_clumps_equal_the_oracle) {
  for (const double shrink : {0.1, 0.01, 1e-4}) {
    Pixels set = cloud(4, 80, 1.0, 1.0);
    double side = 1.0;
    for (std::uint64_t level = 0; level < 8; ++level) {
      side *= shrink;
      set = joined({set, moved(cloud(5 + level, 80, side, side), 0.3, 0.4)});
    }
    EXPECT_TRUE(equals_oracle(set)) << shrink;
    EXPECT_TRUE(equals_oracle(shuffled(set))) << shrink << ", shuffled";
  }
}

// Each ring, half as wide as the one around it, holds as many points: grids would lie within each
// other without end. Towards the middle or a corner, on a line, and with many points on its edge.
TEST(Chain_paths, points_ever_closer_equal_the_oracle) {
  for (const int smallest : {-60, -500, -1074}) {
    for (const int largest : {0, 500, 1023}) {
      Random random(static_cast<std::uint64_t>(largest - smallest));
      Pixels set;
      for (int i = 0; i < 400; ++i) {
        const auto scale = static_cast<int>(random.between(smallest, largest));
        set.x.push_back(std::ldexp(random.fraction() * 2.0 - 1.0, scale));
        set.y.push_back(std::ldexp(random.fraction() * 2.0 - 1.0, scale));
      }
      SCOPED_TRACE(testing::Message() << "2^" << smallest << " to 2^" << largest);
      EXPECT_TRUE(equals_oracle(set));
      for (double& x : set.x) x = std::abs(x);
      for (double& y : set.y) y = std::abs(y);
      EXPECT_TRUE(equals_oracle(set)) << "towards a corner";
      for (std::size_t i = 0; i < 300; ++i) set.x[i] = 0.0;
      EXPECT_TRUE(equals_oracle(set)) << "most on the left edge";
      EXPECT_TRUE(equals_oracle(exchanged(set))) << "most on the upper edge";
      for (double& x : set.x) x = 7.0;
      EXPECT_TRUE(equals_oracle(set)) << "on a line";
      EXPECT_TRUE(equals_oracle(exchanged(set))) << "on a row";
      for (std::size_t i = 0; i < 200; ++i) set.y[i] = std::ldexp(1.0, largest);
      EXPECT_TRUE(equals_oracle(set)) << "most at one place";
    }
  }
}

// The walk leaves a clump for the next one, across many empty cells, and comes back for what it has
// left behind.
TEST(Chain_paths, clumps_far_from_each_other_equal_the_oracle) {
  Pixels set;
  std::uint64_t seed = 20;
  for (const double top : {0.0, 53.0, 106.0}) {
    for (const double left : {0.0, 97.0, 194.0, 291.0}) {
      set = joined({set, moved(cloud(++seed, 40, 1.0, 1.0), left, top)});
    }
  }
  EXPECT_TRUE(equals_oracle(set));
  EXPECT_TRUE(equals_oracle(shuffled(set)));
}

TEST(Chain_paths, many_points_at_one_place_equal_the_oracle) {
  for (const std::size_t again : {2U, 15U, 16U, 17U, 18U, 65U, 300U}) {
    Pixels set = cloud(6, 60, 9.0, 9.0);
    for (std::size_t i = 0; i < again; ++i) {
      set.x.push_back(set.x[i % 2]);
      set.y.push_back(set.y[i % 2]);
    }
    EXPECT_TRUE(equals_oracle(set)) << again;
    EXPECT_TRUE(equals_oracle(shuffled(set))) << again << ", shuffled";
  }
  EXPECT_TRUE(equals_oracle({Doubles(100, -0.0), Doubles(100, 0.0)}));
}

TEST(Chain_paths, clouds_of_any_extent_equal_the_oracle) {
  for (const double side : {5e-324, 1e-310, 1e-289, 1e-200, 1e-162, 1e-161, 1e-154, 1e-9, 1e9,
                            1e150, 1e154, 1e155, 1e200, 8e307, 1.7e308}) {
    EXPECT_TRUE(equals_oracle(cloud(7, 200, side, side))) << side;
    EXPECT_TRUE(equals_oracle(moved(cloud(7, 200, side, side), -side / 2, -side / 2))) << side;
    EXPECT_TRUE(equals_oracle(cloud(7, 200, side, 1.0))) << side << " by 1";
  }
  Pixels set = cloud(7, 300, 1.7e308, 1.7e308);
  for (std::size_t i = 0; i < set.x.size(); i += 2) set.x[i] = -set.x[i];
  EXPECT_TRUE(equals_oracle(set));
}

// Coordinates whose neighbours are as far apart as the points.
TEST(Chain_paths, coordinates_that_hardly_tell_points_apart_equal_the_oracle) {
  for (const double base : {1e15, 4503599627370496.0, 9007199254740992.0, 1e17}) {
    Pixels set = cloud(8, 300, 60.0, 60.0);
    EXPECT_TRUE(equals_oracle(moved(set, base, 0))) << base;
    EXPECT_TRUE(equals_oracle(moved(set, -base, base))) << base;
  }
}

TEST(Chain_paths, a_far_outlier_comes_last) {
  for (const double far : {1e6, 1e15, 1e100, 1e300}) {
    Pixels set = cloud(9, 400, 30.0, 30.0);
    set.x[7] = far;
    set.y[9] = -far;
    EXPECT_TRUE(equals_oracle(set)) << far;
  }
}

// A NaN or an infinity among the points, first of those left or not.
TEST(Chain_paths, points_at_no_distance_equal_the_oracle) {
  const Doubles nowhere = {not_a_number, infinity, -infinity};
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    Random random(seed);
    Pixels set = cloud(seed, 1 + static_cast<std::size_t>(random.below(60)), 9.0, 9.0);
    const std::uint64_t share = 2 + random.below(20);
    for (std::size_t i = 0; i < set.x.size(); ++i) {
      if (random.one_in(share)) set.x[i] = random.pick(nowhere);
      if (random.one_in(share)) set.y[i] = random.pick(nowhere);
    }
    ASSERT_TRUE(equals_oracle(set)) << seed;
  }
}

// Distances that overflow are all infinite: the first point left is next.
TEST(Chain_paths, points_too_far_for_a_distance_equal_the_oracle) {
  for (std::uint64_t seed = 1; seed <= 100; ++seed) {
    Random random(seed);
    Pixels set = cloud(seed, 50, 1.0, 1.0);
    for (double& x : set.x)
      x = random.one_in(2) ? x : x + 1e160 * static_cast<double>(random.below(4));
    for (double& y : set.y) y = random.one_in(3) ? 1e308 * y : y;
    ASSERT_TRUE(equals_oracle(set)) << seed;
  }
}

}  // namespace
}  // namespace chart_trace_test
