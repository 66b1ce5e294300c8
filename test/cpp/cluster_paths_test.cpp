// The clustering's ways of finding points, each driven on purpose and held against the oracle bit
// for bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "indexing/packed_pixels.hpp"
#include "indexing/pixel_cells.hpp"
#include "indexing/squared_distance.hpp"
#include "primitives/cluster_algm.hpp"
#include "test/cpp/pixels.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

// In both forms of points where there are two.
testing::AssertionResult equals_oracle(const Pixels& set, double fraction) {
  const oracle::Clusters want = oracle::cluster(set.x, set.y, fraction);
  const Cluster_algm got(set.x, set.y, fraction);
  auto packed = chart_trace::packed_set(set.x, set.y);
  if (!packed) return same_points(got.arr_x_centroid(), got.arr_y_centroid(), want.centroids);
  const Cluster_algm of_packed({std::move(packed->pixels), {}, {}}, fraction);
  return all_of(
      {same_points(got.arr_x_centroid(), got.arr_y_centroid(), want.centroids),
       same_points(of_packed.arr_x_centroid(), of_packed.arr_y_centroid(), want.centroids)});
}

constexpr double fractions[] = {0.0005, 0.002, 0.01, 0.05, 0.3, 1.0};

testing::AssertionResult equals_oracle(const Pixels& set) {
  for (const double fraction : fractions) {
    const auto result = equals_oracle(set, fraction);
    if (!result)
      return testing::AssertionFailure() << "fraction " << fraction << ": " << result.message();
  }
  return testing::AssertionSuccess();
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

// Different whole-number pixels strewn over a box, row by row.
Pixels strewn(std::uint64_t seed, int columns, int rows, double share) {
  Random random(seed);
  Pixels set;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      if (random.fraction() >= share) continue;
      set.x.push_back(column);
      set.y.push_back(row);
    }
  }
  return set;
}

Pixels moved(Pixels set, double dx, double dy) {
  for (double& x : set.x) x += dx;
  for (double& y : set.y) y += dy;
  return set;
}

Pixels exchanged(const Pixels& set) { return {set.y, set.x}; }

Pixels cloud(std::uint64_t seed, std::size_t count, double side) {
  Random random(seed);
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    set.x.push_back(side * random.fraction());
    set.y.push_back(side * random.fraction());
  }
  return set;
}

bool are_pixels_to_a_square(const Pixels& set, double square) {
  auto packed = chart_trace::packed_set(set.x, set.y);
  return packed && chart_trace::Pixel_cells::of(*std::move(packed), square).has_value();
}

// Whether the set is taken for the pixels of a picture.
bool are_pixels(const Pixels& set, double fraction) {
  const auto count = static_cast<std::int32_t>(set.x.size());
  const double radius = oracle::cluster_radius({set.x, set.y}, count, fraction);
  const double square = chart_trace::largest_square_below(radius);
  return are_pixels_to_a_square(set, square);
}

// --- Whole-number pixels -------------------------------------------------------------------------

// Blocks that begin and end at every place of a cell of 8 by 8.
TEST(Cluster_paths, blocks_of_every_size_around_a_cell_equal_the_oracle) {
  for (int columns = 1; columns <= 18; ++columns) {
    for (int rows = 1; rows <= 18; ++rows) {
      const Pixels set = block(columns, rows, columns * 7 % 11, rows * 5 % 9);
      ASSERT_TRUE(equals_oracle(set)) << columns << " by " << rows;
      ASSERT_TRUE(equals_oracle(shuffled(set))) << columns << " by " << rows << ", shuffled";
    }
  }
}

TEST(Cluster_paths, wide_and_high_pictures_equal_the_oracle) {
  for (const int columns : {505, 511, 512, 513, 520, 1024, 1100}) {
    const Pixels set = strewn(1, columns, 20, 0.1);
    EXPECT_TRUE(equals_oracle(set)) << columns;
    EXPECT_TRUE(equals_oracle(exchanged(set))) << columns << " rows";
    EXPECT_TRUE(equals_oracle(shuffled(set))) << columns << ", shuffled";
  }
}

TEST(Cluster_paths, pictures_of_any_density_equal_the_oracle) {
  for (const double share : {1.0, 0.5, 0.1, 0.03, 0.015, 0.01, 0.007, 0.005, 0.002}) {
    const Pixels set = strewn(2, 300, static_cast<int>(std::min(200.0, 5.0 / share)), share);
    EXPECT_TRUE(equals_oracle(set)) << share;
    EXPECT_TRUE(equals_oracle(shuffled(set))) << share << ", shuffled";
  }
}

// As empty as a picture may be for cells of 8 by 8, and emptier.
TEST(Cluster_paths, one_pixel_in_every_two_cells_and_fewer_equal_the_oracle) {
  for (const double gap : {11.0, 11.9, 12.0, 30.0}) {
    Pixels set = block(25, 25, 0, 0, gap);
    for (double& x : set.x) x = std::floor(x);
    for (double& y : set.y) y = std::floor(y);
    set.x[1] = 1.0;  // for the smallest radius
    EXPECT_EQ(are_pixels(set, 1.0 / 624.0), gap < 12.0) << gap;
    EXPECT_TRUE(equals_oracle(set)) << gap;
    EXPECT_TRUE(equals_oracle(shuffled(set))) << gap << ", shuffled";
  }
}

TEST(Cluster_paths, one_point_in_every_four_columns_and_fewer_equal_the_oracle) {
  for (const double gap : {3.0, 4.0, 5.0, 2000.0}) {
    Pixels set;
    for (int i = 0; i < 600; ++i) {
      set.x.push_back(i * gap);
      set.y.push_back(i % 3);
    }
    EXPECT_TRUE(equals_oracle(set)) << gap;
    EXPECT_TRUE(equals_oracle(exchanged(set))) << gap << ", exchanged";
  }
}

// A radius of up to 1 takes the seed alone.
TEST(Cluster_paths, a_radius_of_one_pixel_makes_every_pixel_a_cluster) {
  const Pixels set = block(20, 20);
  ASSERT_TRUE(equals_oracle(set, 1.0 / 399.0));
  EXPECT_EQ(Cluster_algm(set.x, set.y, 1.0 / 399.0).arr_x_centroid().size(), 400U);
}

TEST(Cluster_paths, a_radius_beyond_the_picture_makes_one_cluster) {
  Pixels set = joined({pixels({{-900, -900}}), block(9, 9), block(3, 3, 20, 10)});
  ASSERT_TRUE(equals_oracle(set, 1.0));
  EXPECT_EQ(Cluster_algm(set.x, set.y, 1.0).arr_x_centroid().size(), 2U);
}

TEST(Cluster_paths, pixels_far_from_the_origin_equal_the_oracle) {
  const Pixels set = strewn(3, 60, 40, 0.6);
  const auto count = static_cast<double>(set.x.size());
  const double largest = 9007199254740992.0 / count;  // the last place where sums are exact
  for (const double far :
       {1e3, 32767.0 - 30, 65535.0 - 59, 65535.0 - 58, 65535.0, 2147483500.0, 2147483648.0,
        4294967296.0, std::floor(largest) - 59, std::floor(largest) - 30, std::floor(largest),
        std::floor(largest) * 2, 4503599627370400.0, 9007199254740900.0, 1e17, 1e300}) {
    for (const double sign : {1.0, -1.0}) {
      EXPECT_TRUE(equals_oracle(moved(set, sign * far, 0))) << sign * far;
      EXPECT_TRUE(equals_oracle(moved(set, 0, sign * far))) << sign * far << " down";
    }
  }
}

// As wide as a picture may be, and wider, whatever its place; the last disc reaches all over it.
TEST(Cluster_paths, pictures_of_the_largest_size_and_larger_equal_the_oracle) {
  for (const double width :
       {16382.0, 16383.0, 16384.0, 32767.0, 32768.0, 65535.0, 1e9, 1e17, 1e200}) {
    Pixels set = block(30, 20);
    set.x[77] = width;
    EXPECT_TRUE(equals_oracle(set)) << width;
    EXPECT_TRUE(equals_oracle(exchanged(set))) << width << " down";
    Pixels line;
    for (int i = 0; i < 400; ++i) {
      line.x.push_back(std::floor(width * i / 399.0));
      line.y.push_back(i % 5);
    }
    EXPECT_EQ(are_pixels(line, 0.05), width < 16384.0) << width;
    for (const Pixels& lying : {line, moved(line, 65535.0 - width, 9)}) {
      EXPECT_TRUE(equals_oracle(lying)) << width;
      EXPECT_TRUE(equals_oracle(exchanged(lying))) << width << " down";
    }
  }
}

// From corner to corner, on both diagonals: the radius is nearly the whole of it. Of two pixels
// next to each other the first disc takes no more than these, and what it leaves is next to the
// corner across. Of one pixel alone it takes half of those, at nearly the largest distance there
// is.
TEST(Cluster_paths, a_disc_as_large_as_the_largest_picture_equals_the_oracle) {
  for (const double left : {0.0, 16383.0}) {
    for (const double top : {0.0, 16383.0}) {
      for (const int near : {1, 2}) {
        Pixels set;
        for (int i = 0; i < 40; ++i) {
          set.x.push_back(i < near ? std::fabs(left - i) : 16383.0 - left);
          set.y.push_back(i < near ? top : std::fabs(16383.0 - top - i));
        }
        ASSERT_TRUE(are_pixels(set, 1.0));
        EXPECT_TRUE(equals_oracle(set)) << left << ", " << top << ": " << near;
        EXPECT_TRUE(equals_oracle(shuffled(set))) << left << ", " << top << ": " << near;
        EXPECT_TRUE(equals_oracle(moved(set, 49152, 49152))) << left << ", " << top << ": " << near;
      }
    }
  }
}

// Pixels so far apart that squares of their distances leave 32 bits, so sparse that there are no
// cells for them, or with a radius that takes nothing: all that is not taken from cells.
TEST(Cluster_paths, pixels_that_do_not_fit_cells_equal_the_oracle) {
  for (const double far : {32767.0, 32768.0, 65535.0}) {
    Pixels set = strewn(4, 30, 10, 0.5);
    set.x.push_back(far);
    set.y.push_back(0.0);
    EXPECT_TRUE(equals_oracle(set)) << far;
    EXPECT_TRUE(equals_oracle(exchanged(set))) << far << " down";
  }
  EXPECT_TRUE(equals_oracle(block(20, 20, 0, 0, 100)));
  for (const double fraction : {0.0, -1.0, not_a_number, 1e300}) {
    EXPECT_TRUE(equals_oracle(block(5, 4), fraction)) << fraction;
  }
  EXPECT_TRUE(equals_oracle({Doubles(9, 3.0), Doubles(9, 4.0)})) << "all at one place";
  EXPECT_TRUE(equals_oracle(block(1, 1))) << "one";
  EXPECT_TRUE(equals_oracle(Pixels{})) << "none";
}

// More pixels than are taken at once, in the last column and row, whose sums leave 32 bits. The
// oracle would need a minute.
TEST(Cluster_paths, hundreds_of_thousands_of_pixels_at_one_place_are_one_cluster) {
  Pixels set{Doubles(300001, 65535.0), Doubles(300001, 65535.0)};
  set.x[0] -= 100.0;
  ASSERT_TRUE(are_pixels_to_a_square(set, 9999.0));
  const Cluster_algm clusters(set.x, set.y, 1.0);
  EXPECT_TRUE(same_bits(clusters.arr_x_centroid(), {65435.0, 65535.0}));
  EXPECT_TRUE(same_bits(clusters.arr_y_centroid(), {65535.0, 65535.0}));
}

TEST(Cluster_paths, a_zero_of_either_sign_is_a_pixel) {
  Pixels set = block(12, 12, -6, -6);
  for (std::size_t i = 0; i < set.x.size(); i += 2) {
    set.x[i] = set.x[i] == 0.0 ? -0.0 : set.x[i];
    set.y[i] = set.y[i] == 0.0 ? -0.0 : set.y[i];
  }
  EXPECT_TRUE(equals_oracle(set));
  EXPECT_TRUE(equals_oracle(column(-0.0, {-0.0, 1, 2, 3, 4, 5}), 0.4));
}

TEST(Cluster_paths, one_point_that_is_no_pixel_does_not_change_the_others) {
  for (const double other : {0.5, 1e-300, -0.0, -1.0, std::nextafter(2.0, 0.0), 65536.0, 1e9, 1e300,
                             infinity, -infinity, not_a_number}) {
    for (const std::size_t place : {0U, 1U, 300U, 599U}) {
      Pixels set = block(30, 20);
      set.x[place] = other;
      EXPECT_TRUE(equals_oracle(set)) << other << " at " << place;
      EXPECT_TRUE(equals_oracle(exchanged(set))) << other << " at " << place << ", as y";
    }
  }
}

// --- Points of any kind --------------------------------------------------------------------------

TEST(Cluster_paths, pixels_that_come_twice_equal_the_oracle) {
  for (const std::size_t again : {1U, 15U, 16U, 17U, 18U, 200U}) {
    Pixels set = block(25, 20);
    for (std::size_t i = 0; i < again; ++i) {
      set.x.push_back(set.x[3]);
      set.y.push_back(set.y[3]);
    }
    EXPECT_TRUE(equals_oracle(set)) << again;
  }
}

TEST(Cluster_paths, clouds_of_any_size_equal_the_oracle) {
  for (const std::size_t count : {1U, 2U, 15U, 16U, 17U, 33U, 100U, 499U, 500U, 501U, 1500U}) {
    EXPECT_TRUE(equals_oracle(cloud(4, count, 100.0))) << count;
  }
}

// The seed's distances to the others are exact multiples of the radius here and there.
TEST(Cluster_paths, half_pixels_equal_the_oracle) {
  Pixels set = block(40, 30, 0, 0, 0.5);
  EXPECT_TRUE(equals_oracle(set));
  EXPECT_TRUE(equals_oracle(shuffled(set)));
  set = block(40, 30, 0.1, 0.2, 0.1);
  EXPECT_TRUE(equals_oracle(set));
  EXPECT_TRUE(equals_oracle(shuffled(set)));
}

// A clump in a cloud, a clump in that clump, and so on: cells within cells.
Pixels clumps(std::uint64_t seed, double shrink, int levels) {
  Pixels set = cloud(seed, 60, 1.0);
  double side = 1.0;
  for (int level = 1; level < levels; ++level) {
    side *= shrink;
    set = joined({set, moved(cloud(seed + static_cast<std::uint64_t>(level), 60, side), 0.3, 0.4)});
  }
  return shuffled(set, seed);
}

TEST(Cluster_paths, clumps_within_clumps_equal_the_oracle) {
  for (const double shrink : {0.1, 0.01, 1e-4}) {
    EXPECT_TRUE(equals_oracle(clumps(5, shrink, 8))) << shrink;
  }
}

TEST(Cluster_paths, points_on_one_line_equal_the_oracle) {
  Pixels set = cloud(6, 900, 1.0);
  for (double& x : set.x) x = 0.25;
  EXPECT_TRUE(equals_oracle(set));
  EXPECT_TRUE(equals_oracle(exchanged(set)));
  for (std::size_t i = 0; i < set.x.size(); ++i) set.x[i] = set.y[i] * 3.0;
  EXPECT_TRUE(equals_oracle(set));
}

TEST(Cluster_paths, clouds_of_any_extent_equal_the_oracle) {
  for (const double side : {5e-324, 1e-310, 1e-289, 1e-200, 1e-162, 1e-150, 1e-9, 1e9, 1e150, 1e154,
                            1e155, 1e200, 8e307, 1.7e308}) {
    EXPECT_TRUE(equals_oracle(cloud(7, 300, side))) << side;
    EXPECT_TRUE(equals_oracle(moved(cloud(7, 300, side), -side / 2, -side / 2))) << side;
  }
  // From one end of the numbers to the other: the width overflows.
  Pixels set = cloud(7, 300, 1.7e308);
  for (std::size_t i = 0; i < set.x.size(); i += 2) set.x[i] = -set.x[i];
  EXPECT_TRUE(equals_oracle(set));
}

TEST(Cluster_paths, a_far_outlier_does_not_change_the_others) {
  for (const double far : {1e6, 1e15, 1e100, 1e300, infinity, -infinity, not_a_number}) {
    Pixels set = cloud(8, 500, 30.0);
    set.x[7] = far;
    set.y[9] = far;
    EXPECT_TRUE(equals_oracle(set)) << far;
  }
}

// The first point left gathers nothing: what it finds the round before must stay.
TEST(Cluster_paths, a_seed_that_is_nowhere_ends_the_clusters) {
  for (const std::size_t place : {0U, 1U, 60U, 250U, 499U}) {
    for (const double nowhere : {not_a_number, infinity, -infinity}) {
      Pixels set = cloud(9, 500, 30.0);
      set.y[place] = nowhere;
      EXPECT_TRUE(equals_oracle(set)) << nowhere << " at " << place;
    }
  }
}

// --- Lines that have been followed ---------------------------------------------------------------

// A steep wave, one point behind the other.
Pixels wave(std::size_t count) {
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    set.x.push_back(static_cast<double>(i));
    set.y.push_back(std::round(400.0 * std::sin(static_cast<double>(i) / 150.0)));
  }
  return set;
}

TEST(Cluster_paths, lines_that_were_followed_equal_the_oracle) {
  for (const std::size_t count : {5U, 100U, 640U, 2000U, 4096U}) {
    const Pixels set = moved(wave(count), 0, 400);
    ASSERT_TRUE(are_pixels(set, 0.6)) << count;
    EXPECT_TRUE(equals_oracle(set, 0.6)) << count;
    EXPECT_TRUE(equals_oracle(set)) << count;
    EXPECT_TRUE(equals_oracle(exchanged(set))) << count << ", exchanged";
  }
}

// Sums are rounded here, and so hang on their order.
TEST(Cluster_paths, lines_of_fractions_that_were_followed_equal_the_oracle) {
  Pixels set = moved(wave(3000), 0.1, 1e-7);
  for (double& x : set.x) x *= 0.7;
  EXPECT_TRUE(equals_oracle(set));
}

TEST(Cluster_paths, a_line_that_comes_back_is_taken_in_input_order) {
  Pixels set = wave(1500);
  set = moved(joined({set, moved(set, 0.25, 0.5), set}), 0.1, 0.7);
  EXPECT_TRUE(equals_oracle(set));
}

}  // namespace
}  // namespace chart_trace_test
