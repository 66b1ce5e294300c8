// Horizontal grouping goes four ways: pixels row by row, taken off a bitmap; other runs row by row;
// runs column by column; and all others.
// These are walked through as long as searches are short, as in shuffled order; then a map of
// pixels or, for runs that have no place on it, bands are asked. Here each is taken on purpose and
// held against the oracle.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "grouping/horizontal_grouping_algm.hpp"
#include "indexing/column_runs.hpp"
#include "indexing/pixel_map.hpp"
#include "indexing/raster_runs.hpp"
#include "indexing/run_flood.hpp"
#include "indexing/run_map.hpp"
#include "indexing/runs.hpp"
#include "indexing/unordered_runs.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::Column_runs;
using chart_trace::Raster_runs;
using chart_trace::Run;
using chart_trace::Run_extent;
using chart_trace::Run_map;
using chart_trace::Run_pairs;
using chart_trace::Unordered_runs;

constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double two_24 = 16777216.0;

struct Points {
  Doubles x;
  Doubles y;
  double step = 1;

  void add(double px, double py) {
    x.push_back(px);
    y.push_back(py);
  }
};

enum class Order { raster, columns, shuffled, right_to_left, bottom_up };
const std::vector<Order> all_orders = {Order::raster, Order::columns, Order::shuffled,
                                       Order::right_to_left, Order::bottom_up};

// Some pixels of a box, in raster order: dots and stretches up to `longest` long.
std::vector<std::pair<int, int>> pixels_in_box(Random& random, int width, int height, int longest) {
  std::vector<std::pair<int, int>> pixels;
  for (int y = 0; y < height; ++y) {
    for (int x = static_cast<int>(random.below(4)); x < width;) {
      const int length = static_cast<int>(random.between(1, longest));
      for (int k = 0; k < length && x < width; ++k) pixels.emplace_back(x++, y);
      x += static_cast<int>(random.between(1, 5));
    }
  }
  return pixels;
}

Points picture(Random& random, int width, int height, int longest, Order order) {
  auto pixels = pixels_in_box(random, width, height, longest);
  if (order == Order::columns) std::sort(pixels.begin(), pixels.end());
  if (order == Order::bottom_up) {
    std::stable_sort(pixels.begin(), pixels.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
  }
  if (order == Order::right_to_left) {
    std::stable_sort(pixels.begin(), pixels.end(), [](const auto& a, const auto& b) {
      return a.second != b.second ? a.second < b.second : a.first > b.first;
    });
  }
  if (order == Order::shuffled) {
    for (std::size_t i = pixels.size(); i > 1; --i) {
      std::swap(pixels[i - 1], pixels[static_cast<std::size_t>(random.below(i))]);
    }
  }
  Points points;
  for (const auto& [x, y] : pixels) points.add(x, y);
  return points;
}

// The same picture half as large, which is not taken off a map.
Points halved(Points points) {
  for (double& x : points.x) x *= 0.5;
  for (double& y : points.y) y *= 0.5;
  points.step *= 0.5;
  return points;
}

testing::AssertionResult equals_the_oracle(const Points& points) {
  const Horizontal_grouping_algm got(points.x, points.y, points.step);
  return same_groups(got.x_groups_func(), got.y_groups_func(),
                     oracle::horizontal(points.x, points.y, points.step));
}

// The runs of a point set, as the class makes them.
struct Runs {
  explicit Runs(const Points& points) : step(points.step) {
    chart_trace::for_each_run(points.x.data(), points.y.data(), points.x.size(), step,
                              [&](std::size_t first, std::size_t last) {
                                extents.push_back({static_cast<float>(points.x[first]),
                                                   static_cast<float>(points.x[last - 1])});
                                rows.push_back(points.y[first]);
                              });
  }

  Run_pairs pairs() const {
    return {extents.data(), rows.data(), static_cast<Run>(extents.size()), step, step * 1.5};
  }

  std::vector<Run_extent> extents;
  Doubles rows;
  double step;
};

bool in_raster_order(const Points& points) {
  const Runs runs(points);
  return Raster_runs::of(runs.pairs()).has_value();
}

bool in_column_order(const Points& points) {
  const Runs runs(points);
  return Column_runs::of(runs.pairs()).has_value();
}

bool has_a_map(const Points& points) {
  const Runs runs(points);
  return Run_map::of(runs.pairs()).has_value();
}

// --- Which way a point set goes ------------------------------------------------------------------

TEST(Horizontal_paths, pictures_in_raster_order_go_the_raster_way_whatever_their_numbers) {
  Random random(1);
  Points points = picture(random, 30, 30, 6, Order::raster);
  EXPECT_TRUE(in_raster_order(points));
  for (double& x : points.x) x = x * 0.1 + 1e6;
  for (double& y : points.y) y = y * 0.1 - 7.7;
  points.step = 0.1;
  EXPECT_TRUE(in_raster_order(points));
}

TEST(Horizontal_paths, pictures_by_columns_go_their_own_way) {
  for (const int longest : {3, 100}) {
    Random random(2);
    const Points points = picture(random, 100, 4, longest, Order::columns);
    EXPECT_FALSE(in_raster_order(points));
    EXPECT_TRUE(in_column_order(points));
  }
}

TEST(Horizontal_paths, all_other_orders_of_pixels_can_go_by_the_map) {
  for (const Order order : {Order::shuffled, Order::right_to_left, Order::bottom_up}) {
    Random random(2);
    const Points points = picture(random, 30, 30, 3, order);
    EXPECT_FALSE(in_raster_order(points));
    EXPECT_FALSE(in_column_order(points));
    EXPECT_TRUE(has_a_map(points));
  }
}

TEST(Horizontal_paths, what_is_no_picture_by_columns_is_told) {
  const auto by_columns = [](const Doubles& x, const Doubles& y, double step) {
    return in_column_order({x, y, step});
  };
  EXPECT_TRUE(by_columns({0, 0, 2, 2, 3}, {1, 3, 0, 5, 4}, 1));
  EXPECT_TRUE(by_columns({0, 0, 1, 2, 2}, {1, 3, 3, 3, 4}, 1)) << "a run from column 0 to 2";
  EXPECT_FALSE(by_columns({0, 0, 1, 2, 1}, {1, 3, 3, 3, 4}, 1)) << "under the middle of a run";
  EXPECT_FALSE(by_columns({0, 0, 1, 2, 2}, {1, 3, 3, 3, 2}, 1)) << "above the end of a run";
  EXPECT_FALSE(by_columns({0, 1, 2, 1}, {3, 3, 3, 4}, 1)) << "a column back";
  EXPECT_FALSE(by_columns({0, 0}, {3, 3}, 1)) << "the same pixel twice";
  EXPECT_FALSE(by_columns({0, 0}, {3, 2}, 1)) << "upwards";
  EXPECT_FALSE(by_columns({0, 0}, {1, 3}, 2));
  EXPECT_FALSE(by_columns({0.5, 1}, {1, 3}, 1));
  EXPECT_FALSE(by_columns({0, 0}, {1, 3.5}, 1));
  EXPECT_TRUE(by_columns({two_24 - 1, two_24}, {-two_24, two_24}, 1));
  EXPECT_FALSE(by_columns({two_24, two_24 + 2}, {0, 5}, 1));
  EXPECT_FALSE(by_columns({-two_24 - 2, 0}, {0, 5}, 1));
  EXPECT_FALSE(by_columns({0, 0}, {0, two_24 + 1}, 1));
  // Runs whose ends are whole numbers only in single precision.
  EXPECT_FALSE(by_columns({two_24 + 1, 0}, {0, 0}, 1));
  for (const double special : {nan_value, infinity, -infinity}) {
    EXPECT_FALSE(by_columns({0, special}, {0, 0}, 1)) << special;
    EXPECT_FALSE(by_columns({0, 0}, {special, 0}, 1)) << special;
    EXPECT_FALSE(by_columns({0, 0}, {0, 1}, special)) << special;
  }
}

TEST(Horizontal_paths, what_is_no_picture_in_raster_order_is_told) {
  const auto is_raster = [](const Doubles& x, const Doubles& y, double step) {
    return in_raster_order({x, y, step});
  };
  EXPECT_TRUE(is_raster({0, 5, 0}, {0, 0, 1}, 1));
  EXPECT_FALSE(is_raster({0, 5, 4}, {0, 0, 0}, 1)) << "steps back";
  EXPECT_FALSE(is_raster({0, 0}, {1, 0}, 1)) << "rows go up";
  EXPECT_TRUE(is_raster({0, 0, 0}, {0, 1, 2}, 1));
  EXPECT_TRUE(is_raster({0, 0, 0}, {0, 0.75, 1.5}, 1)) << "exactly the tolerance apart is not near";
  EXPECT_FALSE(is_raster({0, 0, 0}, {0, 0.75, 1.4375}, 1)) << "three rows within the tolerance";
  EXPECT_FALSE(is_raster({0, nan_value}, {0, 0}, 1));
  EXPECT_FALSE(is_raster({0, 0}, {0, nan_value}, 1));
  EXPECT_FALSE(is_raster({0, infinity}, {0, 0}, 1));
  EXPECT_FALSE(is_raster({0, 1e39}, {0, 0}, 1)) << "infinite in single precision";
  EXPECT_FALSE(is_raster({0, 0}, {0, infinity}, 1));
  for (const double step : {0.0, -1.0, nan_value, infinity}) {
    EXPECT_FALSE(is_raster({0, 0}, {0, 1}, step)) << step;
  }
}

// A run that touches the 32nd before it in its row.
TEST(Horizontal_paths, crowded_rows_do_not_go_the_raster_way) {
  const auto is_raster = [](const Doubles& row) {
    Points points{row, Doubles(row.size(), 0.0)};
    for (const double x : row) points.add(x, 1);
    const Points row_above{{0, 3, 6, 9, 12, 15, 18, 21, 24}, Doubles(9, -5.0)};
    points.x.insert(points.x.begin(), row_above.x.begin(), row_above.x.end());
    points.y.insert(points.y.begin(), row_above.y.begin(), row_above.y.end());
    return in_raster_order(points);
  };
  const auto spaced = [](std::size_t count, double pitch) {
    Doubles row;
    while (row.size() < count) row.push_back(pitch * static_cast<double>(row.size()));
    return row;
  };
  EXPECT_TRUE(is_raster(Doubles(32, 5.0)));
  EXPECT_FALSE(is_raster(Doubles(33, 5.0)));
  EXPECT_TRUE(is_raster(spaced(100, 0.032)));
  EXPECT_TRUE(is_raster(spaced(32, 0.03125)));
  EXPECT_FALSE(is_raster(spaced(33, 0.03125)))
      << "the last one touches the first at exactly a step";
  EXPECT_TRUE(is_raster(spaced(100, 1.5)));
}

TEST(Horizontal_paths, what_has_no_place_on_the_map_is_told) {
  const auto is_mapped = [](const Doubles& x, const Doubles& y, double step) {
    return has_a_map({x, y, step});
  };
  EXPECT_TRUE(is_mapped({3, -2}, {5, -9}, 1));
  EXPECT_FALSE(is_mapped({3, -2}, {5, -9}, 2));
  EXPECT_FALSE(is_mapped({3.5, -2}, {5, -9}, 1));
  EXPECT_FALSE(is_mapped({3, -2}, {5, -9.25}, 1));
  // A run from -2 to a little below -1 in single precision: it does not touch a pixel at 0.
  const double little = std::ldexp(1, -23);
  EXPECT_FALSE(is_mapped({-2 - little, -1 - little}, {0, 0}, 1));
  EXPECT_FALSE(is_mapped({3, 3}, {5, 5}, 1)) << "the same pixel twice";
  EXPECT_FALSE(is_mapped({3, 4, 5, 4}, {5, 5, 5, 5}, 1)) << "a pixel of a run once more";
  EXPECT_TRUE(is_mapped({two_24, two_24 - 2}, {two_24, two_24 - 1}, 1));
  EXPECT_FALSE(is_mapped({two_24 + 2, two_24}, {0, 0}, 1));
  EXPECT_FALSE(is_mapped({0, 0}, {-two_24 - 1, -two_24}, 1));
  EXPECT_FALSE(is_mapped({0, 0}, {two_24 + 1, two_24}, 1));
  EXPECT_FALSE(is_mapped({0, 5000}, {0, 5000}, 1)) << "far apart";
  EXPECT_FALSE(is_mapped({0, nan_value}, {0, 0}, 1));
  EXPECT_FALSE(is_mapped({0, 0}, {nan_value, 0}, 1));
  EXPECT_FALSE(is_mapped({0, -infinity}, {0, 0}, 1));
  EXPECT_FALSE(is_mapped({0, 0}, {0, infinity}, 1));
}

// --- Each way equals the oracle ------------------------------------------------------------------

TEST(Horizontal_paths, pictures_in_every_order_equal_the_oracle) {
  for (const Order order : all_orders) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
      Random random(seed);
      const int width = static_cast<int>(random.between(1, 200));
      const int height = static_cast<int>(random.between(1, 12));
      const int longest = random.one_in(3) ? 150 : static_cast<int>(random.between(1, 4));
      const Points points = picture(random, width, height, longest, order);
      ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
      ASSERT_TRUE(equals_the_oracle(halved(points))) << "seed " << seed << ", no map";
    }
  }
}

TEST(Horizontal_paths, the_same_pictures_shifted_and_scaled_equal_the_oracle) {
  struct Axis {
    double origin, pitch, step;
  };
  const std::vector<Axis> axes = {
      {0, 0.1, 0.1},       {0.3, 0.7, 0.7},     {0, 1, 2},           {0, 1, 0.25},
      {0, 1, 7.5},         {0.3, 1, 1},         {-20, 2, 2},         {0, 0.4, 1},
      {two_24 - 20, 1, 1}, {-two_24 - 9, 1, 1}, {two_24 - 39, 1, 1}, {-two_24, 1, 1},
      {1e15, 0.25, 1},     {9e15, 1, 1},        {0, 1e300, 1e300},   {0, 1e37, 1e37},
      {0, 1e-320, 1e-320}, {0, 1, 1e9},         {0, 1, -1},          {0, 1, 0},
      {0, 1, nan_value},   {0, 1, infinity},    {0, 1, 1e308}};
  for (const Axis& axis : axes) {
    for (const Order order : all_orders) {
      for (std::uint64_t seed = 0; seed < 8; ++seed) {
        Random random(seed);
        Points points = picture(random, 40, 8, 3, order);
        for (double& x : points.x) x = axis.origin + axis.pitch * x;
        for (double& y : points.y) y = axis.origin + axis.pitch * y;
        points.step = axis.step;
        ASSERT_TRUE(equals_the_oracle(points))
            << "origin " << axis.origin << " pitch " << axis.pitch << " step " << axis.step;
      }
    }
  }
}

TEST(Horizontal_paths, pixels_that_come_again_equal_the_oracle) {
  for (const Order order : all_orders) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
      Random random(seed);
      Points points = picture(random, 20, 6, 3, order);
      const std::size_t count = points.x.size();
      for (int copies = 0; copies < 5; ++copies) {
        for (std::size_t k = 0; k < count; ++k) {
          if (random.one_in(1 + seed % 3)) points.add(points.x[k], points.y[k]);
        }
      }
      ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
    }
  }
}

TEST(Horizontal_paths, special_numbers_among_pixels_equal_the_oracle) {
  const Doubles specials = {nan_value, infinity, -infinity, -0.0,   1e39,  -1e39,
                            1e308,     -1e308,   5e-324,    two_24, 1e300, 0.5};
  for (const Order order : all_orders) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
      Random random(seed);
      Points points = picture(random, 15, 6, 3, order);
      for (std::uint64_t k = 0; k < 1 + seed % 9; ++k) {
        Doubles& coordinates = random.one_in(2) ? points.x : points.y;
        coordinates[static_cast<std::size_t>(random.below(coordinates.size()))] =
            random.pick(specials);
      }
      if (random.one_in(5)) points.step = random.pick(specials);
      ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
    }
  }
}

// Rows that are no numbers touch nothing: each is walked from in vain, until bands are asked.
TEST(Horizontal_paths, an_infinite_step_reaches_everywhere_from_behind_rows_that_are_no_numbers) {
  for (const int rows : {20, 60, 200}) {
    Points points;
    points.step = infinity;
    for (int k = 0; k < rows; ++k) points.add(k, nan_value);
    for (int k = 0; k < rows; ++k) points.add(100 - k, 7 * k);
    const Horizontal_grouping_algm got(points.x, points.y, points.step);
    EXPECT_EQ(got.x_groups_func().size(), static_cast<std::size_t>(rows) + 1);
    EXPECT_TRUE(equals_the_oracle(points)) << rows << " rows of each kind";
  }
}

TEST(Horizontal_paths, points_anywhere_equal_the_oracle) {
  for (std::uint64_t seed = 0; seed < 150; ++seed) {
    Random random(seed);
    Points points;
    const double width = static_cast<double>(random.between(1, 60));
    const double height = static_cast<double>(random.between(1, 60));
    const std::uint64_t count = 20 + random.below(300);
    for (std::uint64_t k = 0; k < count; ++k) {
      points.add(width * random.fraction(), height * random.fraction());
    }
    ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
  }
}

// Sizes around those from which a search looks beyond the first runs of the list, and from which
// there are lower parts to go through.
TEST(Horizontal_paths, pictures_of_every_size_in_every_order_equal_the_oracle) {
  for (const Order order : all_orders) {
    for (const std::size_t size : {15U, 16U, 17U, 18U, 33U, 255U, 256U, 257U, 511U, 700U, 1025U}) {
      for (const int width : {3, 30, 300}) {
        Random random(size + static_cast<std::size_t>(width));
        Points points = picture(random, width, 4 * 1100 / width + 4, 2, order);
        ASSERT_GE(points.x.size(), size);
        points.x.resize(size);
        points.y.resize(size);
        ASSERT_TRUE(equals_the_oracle(points)) << size << " pixels, width " << width;
      }
    }
  }
}

// Line charts, by columns: long runs where the line is flat, and between them pixels under pixels.
TEST(Horizontal_paths, lines_by_columns_equal_the_oracle) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    Random random(seed);
    std::vector<std::pair<int, int>> pixels;
    const int lines = static_cast<int>(random.between(1, 3));
    for (int line = 0; line < lines; ++line) {
      int y = static_cast<int>(random.between(0, 12));
      for (int x = 0; x < 120; ++x) {
        const int next = y + (random.one_in(4) ? static_cast<int>(random.between(-4, 4)) : 0);
        for (int k = std::min(y, next); k <= std::max(y, next); ++k) pixels.emplace_back(x, k);
        y = next;
        if (random.one_in(20)) x += static_cast<int>(random.between(1, 3));
      }
    }
    std::sort(pixels.begin(), pixels.end());
    pixels.erase(std::unique(pixels.begin(), pixels.end()), pixels.end());
    Points points;
    for (const auto& [x, y] : pixels) points.add(x, y);
    ASSERT_TRUE(in_column_order(points));
    ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
  }
}

TEST(Horizontal_paths, zeros_below_zero_in_columns_equal_the_oracle) {
  for (std::uint64_t seed = 0; seed < 20; ++seed) {
    Random random(seed);
    Points points = picture(random, 12, 8, 3, Order::columns);
    for (double& x : points.x) x = x == 5 ? -0.0 : x - 5;
    for (double& y : points.y) y = y == 3 && random.one_in(2) ? -0.0 : y - 3;
    ASSERT_TRUE(in_column_order(points));
    ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
  }
}

// Runs of pixels are counted up from their first, unless a zero has a sign.
TEST(Horizontal_paths, zeros_keep_their_signs) {
  for (const Order order : all_orders) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
      Random random(seed);
      Points points = picture(random, 12, 4, 9, order);
      Doubles& coordinates = seed % 2 == 0 ? points.x : points.y;
      const std::uint64_t share = 1 + random.below(4);
      for (double& number : coordinates) {
        if (number == 0 && random.one_in(share)) number = -0.0;
      }
      ASSERT_TRUE(equals_the_oracle(points)) << "seed " << seed;
    }
  }
}

// --- Pixels row by row, taken off a bitmap -------------------------------------------------------

// The pixels of a picture that is drawn with a # for each.
Points drawn(const std::vector<std::string>& rows) {
  Points points;
  for (std::size_t y = 0; y < rows.size(); ++y) {
    for (std::size_t x = 0; x < rows[y].size(); ++x) {
      if (rows[y][x] == '#') points.add(static_cast<double>(x), static_cast<double>(y));
    }
  }
  return points;
}

std::string repeated(const std::string& text, std::size_t times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

TEST(Horizontal_paths, a_bitmap_is_taken_where_single_precision_holds_every_column) {
  const auto is_held = [](double left, double right) {
    const auto map = chart_trace::Pixel_map::of_raster({left, right}, {0, 1});
    return map && chart_trace::Run_flood::holds_exactly(*map);
  };
  EXPECT_TRUE(is_held(0, 100));
  EXPECT_TRUE(is_held(-16383, -16000));
  EXPECT_FALSE(is_held(-16384, -16000));
  EXPECT_TRUE(is_held(16384 - 62, 16384 - 1));
  EXPECT_FALSE(is_held(16384 - 61, 16384 - 1));
  // Neighbours whose gap is more than a step in single precision, as one of them is rounded.
  for (const double side : {1.0, -1.0}) {
    const double near = side * (16383 + 3.0 / 1024);
    const double far = side * (16384 + 3.0 / 1024);
    const Points points{{near, far, near, near, far}, {0, 1, 2, 5, 6}};
    EXPECT_TRUE(equals_the_oracle(points)) << side;
  }
}

// Groups stay packed where all rows and columns of the map can be, and become points again
// elsewhere. The last pictures are as high as a map may be, and higher.
TEST(Horizontal_paths, pictures_at_the_edges_of_packed_pixels_equal_the_oracle) {
  const Points picture = drawn({"## ##   #", "  #   # #", "##### #  ", "#  ####  ", "   #     "});
  for (const double right : {-1.0, 0.0, 0.5, 1.0 / 1024, 300.0}) {
    for (const double down :
         {-1.0, 0.0, 0.25, 1.0 / 1024, 65528.0, 65529.0, 65530.0, 65531.0, 65532.0, 65536.0}) {
      Points there = picture;
      for (double& x : there.x) x += right;
      for (double& y : there.y) y += down;
      EXPECT_TRUE(equals_the_oracle(there)) << right << ", " << down;
      for (double& y : there.y) y = y > 2.0 + down ? y : y - down;
      EXPECT_TRUE(equals_the_oracle(there)) << right << ", " << down << ", from the top on";
    }
  }
}

TEST(Horizontal_paths, all_small_pictures_row_by_row_equal_the_oracle) {
  constexpr unsigned columns = 3;
  for (unsigned bits = 1; bits < 1U << 15; ++bits) {
    Points points;
    for (unsigned k = 0; k < 15; ++k) {
      if ((bits >> k & 1) != 0) points.add(k % columns, k / columns);
    }
    ASSERT_TRUE(equals_the_oracle(points)) << bits;
  }
}

// Runs and what they touch, at every place of the words of a bitmap.
TEST(Horizontal_paths, runs_across_words_equal_the_oracle) {
  for (std::size_t shift = 55; shift < 70; ++shift) {
    for (const std::size_t length : {1U, 2U, 3U, 30U, 62U, 63U, 64U, 65U, 127U, 128U, 129U, 200U}) {
      const std::string before(shift, ' ');
      const std::string run(length, '#');
      ASSERT_TRUE(equals_the_oracle(
          drawn({"#", before + "##  " + run, before + " " + run, before + run + "  #",
                 before + repeated("# ", length), before + run, "", "", before + run})))
          << shift << ", " << length;
    }
  }
}

// The first pixel left and the last one, so many words from those taken just before.
TEST(Horizontal_paths, words_without_pixels_equal_the_oracle) {
  for (std::size_t words = 0; words <= 10; ++words) {
    const std::string apart(64 * words + 3, ' ');
    const std::string dots = "#" + apart + "#" + apart + "#";
    ASSERT_TRUE(equals_the_oracle(drawn({dots, "", "  #" + apart + "#"}))) << words;
  }
  for (std::size_t height = 1; height <= 12; ++height) {
    for (std::size_t row = 0; row < height + 3; ++row) {
      for (const std::size_t apart : {3U, 100U}) {
        std::vector<std::string> lines(height, "#");
        lines.resize(std::max(height, row + 1));
        lines[row].resize(1, ' ');
        lines[row] += std::string(apart, ' ') + "#";
        ASSERT_TRUE(equals_the_oracle(drawn(lines))) << height << ", " << row << ", " << apart;
      }
    }
  }
}

// More runs in the queue than it holds at first, and more that have left it.
TEST(Horizontal_paths, groups_of_many_runs_equal_the_oracle) {
  for (const std::size_t count : {60U, 64U, 127U, 128U, 191U, 192U, 193U, 256U, 257U, 700U}) {
    const std::string teeth = repeated("# ", count);
    const std::string between = repeated(" #", count);
    const std::string back(2 * count, '#');
    ASSERT_TRUE(equals_the_oracle(drawn({back, teeth, teeth, "", "", "#"}))) << count;
    ASSERT_TRUE(equals_the_oracle(drawn({teeth, between, teeth, between, teeth}))) << count;
    ASSERT_TRUE(equals_the_oracle(drawn({teeth, back, "", "", "", "#"}))) << count;
    std::vector<std::string> line;
    std::vector<std::string> two_lines{std::string(count, ' ') + "##"};
    for (std::size_t k = 0; k < 2 * count; ++k) {
      const std::size_t left = std::min(k % 200, 200 - k % 200);
      line.push_back(std::string(left, ' ') + "##");
    }
    for (std::size_t k = 1; k <= count; ++k) {
      two_lines.push_back(std::string(count - k, ' ') + "##" + std::string(2 * k - 2, ' ') + "##");
    }
    ASSERT_TRUE(equals_the_oracle(drawn(line))) << count;
    ASSERT_TRUE(equals_the_oracle(drawn(two_lines))) << count;
  }
}

// A search that stops just before, at and behind the place from which the index is asked.
TEST(Horizontal_paths, stops_at_every_distance_equal_the_oracle) {
  for (int apart = 0; apart <= 40; ++apart) {
    Points points;
    points.add(0, 5);
    for (int k = 0; k < apart; ++k) points.add(-2 * k - 3, 5 - k % 3);
    points.add(0, 7);
    points.add(1, 6);
    points.add(-1, 6);
    points.add(0, 100);
    ASSERT_TRUE(equals_the_oracle(points)) << apart;
  }
}

TEST(Horizontal_paths, a_row_exactly_the_tolerance_below_ends_no_search_in_raster_order) {
  const Points points{{0, 0, 0}, {0, 1, 1.5}};
  ASSERT_TRUE(in_raster_order(points));
  const Horizontal_grouping_algm grouping(points.x, points.y, points.step);
  EXPECT_TRUE(same_bits(values_of(grouping.y_groups_func()), {{0, 1}, {1.5}}));
}

// Runs of one row that touch without being one: a fractional step that does not divide the gap.
TEST(Horizontal_paths, runs_that_touch_on_their_own_row_equal_the_oracle) {
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    Random random(seed);
    Points points;
    for (int row = 0; row < 6; ++row) {
      double x = 0;
      for (int k = 0; k < 12; ++k) {
        x += 0.25 * static_cast<double>(random.between(1, 8));
        points.add(x, row);
      }
    }
    points.step = random.one_in(2) ? 1.0 : 0.75;
    EXPECT_TRUE(equals_the_oracle(points)) << "seed " << seed;
  }
}

// Each pixel again and again, in raster order: as often as rows may hold it, and more often.
TEST(Horizontal_paths, pixels_that_come_again_in_their_row_equal_the_oracle) {
  for (const int copies : {1, 2, 3, 5, 8, 31, 32, 33, 40}) {
    for (std::uint64_t seed = 0; seed < 12; ++seed) {
      Random random(seed);
      const Points once = picture(random, 12, 6, 3, Order::raster);
      Points points;
      for (std::size_t k = 0; k < once.x.size(); ++k) {
        const int times = seed % 2 == 0 ? copies : static_cast<int>(random.between(1, copies));
        for (int copy = 0; copy < times; ++copy) points.add(once.x[k], once.y[k]);
      }
      ASSERT_TRUE(equals_the_oracle(points)) << copies << " copies, seed " << seed;
    }
  }
}

// From a whole step down to less than a 32nd of one, in rows a step apart.
TEST(Horizontal_paths, points_that_lie_closer_than_a_step_equal_the_oracle) {
  for (const double pitch : {1.0, 0.75, 0.5, 0.25, 0.1, 0.032, 0.03125, 0.02}) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
      Random random(seed);
      Points points = picture(random, 120, 4, 4, Order::raster);
      for (double& x : points.x) x *= pitch;
      ASSERT_TRUE(equals_the_oracle(points)) << "pitch " << pitch << ", seed " << seed;
    }
  }
}

TEST(Horizontal_paths, crowded_rows_equal_the_oracle) {
  for (const std::size_t count : {1U, 2U, 31U, 32U, 33U, 34U, 100U}) {
    const Doubles spot(count, 5.0);
    Points points{spot, Doubles(count, 0.0)};
    EXPECT_TRUE(equals_the_oracle(points)) << count;
    for (std::size_t k = 0; k < count; ++k) points.add(5, 1);
    EXPECT_TRUE(equals_the_oracle(points)) << count;
    points.add(3, 0);
    EXPECT_TRUE(equals_the_oracle(points)) << count;
    points = {spot, Doubles(count, 0.0)};
    points.add(5, 9);
    points.add(50, 9);
    EXPECT_TRUE(equals_the_oracle(points)) << count;
  }
}

// --- The ways for rows and columns are the general one made quick
// ---------------------------------

template <typename Run_list>
std::vector<Run> in_order_of_joining(Run_list runs) {
  std::vector<Run> all;
  while (runs.left() > 0) {
    std::vector<Run> group = {runs.take_first()};
    bool stopped = runs.take_touching(group[0], false, group);
    for (std::size_t next = 1; stopped && next < group.size(); ++next) {
      stopped = runs.take_touching(group[next], true, group);
    }
    all.insert(all.end(), group.begin(), group.end());
    all.push_back(std::numeric_limits<Run>::max());
  }
  return all;
}

TEST(Horizontal_paths, runs_in_raster_order_are_taken_alike_on_both_ways) {
  for (std::uint64_t seed = 0; seed < 10; ++seed) {
    Random random(seed);
    const Points points = picture(random, 300, 300, 12, Order::raster);
    const Runs runs(points);
    std::optional<Raster_runs> by_rows = Raster_runs::of(runs.pairs());
    ASSERT_TRUE(by_rows && has_a_map(points));
    EXPECT_EQ(in_order_of_joining(*std::move(by_rows)),
              in_order_of_joining(Unordered_runs(runs.pairs())));
  }
}

TEST(Horizontal_paths, runs_that_touch_in_their_row_are_taken_alike_on_both_ways) {
  for (const double pitch : {0.75, 0.5, 0.25, 0.1, 0.032}) {
    for (std::uint64_t seed = 0; seed < 10; ++seed) {
      Random random(seed);
      Points points = picture(random, 100, 30, 8, Order::raster);
      for (double& x : points.x) x *= pitch;
      const Runs runs(points);
      std::optional<Raster_runs> by_rows = Raster_runs::of(runs.pairs());
      ASSERT_TRUE(by_rows);
      EXPECT_EQ(in_order_of_joining(*std::move(by_rows)),
                in_order_of_joining(Unordered_runs(runs.pairs())));
    }
  }
}

// Sizes around that from which the list is fetched ahead of the searches.
TEST(Horizontal_paths, many_runs_in_raster_order_are_taken_alike_on_both_ways) {
  Random random(1);
  Points points = picture(random, 1000, 600, 1, Order::raster);
  for (const std::size_t size : {(1U << 17) + 1, 1U << 17, (1U << 17) - 1}) {
    ASSERT_GE(points.x.size(), size);
    points.x.resize(size);
    points.y.resize(size);
    const Runs runs(points);
    ASSERT_EQ(runs.rows.size(), size);
    std::optional<Raster_runs> by_rows = Raster_runs::of(runs.pairs());
    ASSERT_TRUE(by_rows);
    EXPECT_EQ(in_order_of_joining(*std::move(by_rows)),
              in_order_of_joining(Unordered_runs(runs.pairs())));
  }
}

TEST(Horizontal_paths, runs_by_columns_are_taken_alike_on_both_ways) {
  for (const int height : {4, 300}) {
    for (std::uint64_t seed = 0; seed < 10; ++seed) {
      Random random(seed);
      const Points points = picture(random, 90000 / height, height, 12, Order::columns);
      const Runs runs(points);
      std::optional<Column_runs> by_columns = Column_runs::of(runs.pairs());
      ASSERT_TRUE(by_columns && has_a_map(points));
      EXPECT_EQ(in_order_of_joining(*std::move(by_columns)),
                in_order_of_joining(Unordered_runs(runs.pairs())));
    }
  }
}

}  // namespace
}  // namespace chart_trace_test
