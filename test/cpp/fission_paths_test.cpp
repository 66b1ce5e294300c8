// The flood fill's ways of finding neighbours, each driven on purpose and held against the oracle
// bit for bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <utility>
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

// Also with x and y exchanged: row by row becomes column by column.
testing::AssertionResult equals_oracle_both_ways(const Pixels& set, double step) {
  return all_of({equals_oracle(set, step), equals_oracle({set.y, set.x}, step)});
}

Pixels shuffled(Pixels set, std::uint64_t seed) {
  Random random(seed);
  for (std::size_t i = set.x.size(); i > 1; --i) {
    const auto other = static_cast<std::size_t>(random.below(i));
    std::swap(set.x[i - 1], set.x[other]);
    std::swap(set.y[i - 1], set.y[other]);
  }
  return set;
}

Pixels moved(Pixels set, double right, double down) {
  for (double& x : set.x) x += right;
  for (double& y : set.y) y += down;
  return set;
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

// Crowds that do not fall apart into halves of equal numbers, or that are wide in one direction
// only.
TEST(Fission_paths, lopsided_crowds_equal_the_oracle) {
  Pixels rising, one_row, two_spots, at_infinity;
  for (int i = 0; i < 700; ++i) {
    const double power = std::ldexp(1.0, -i % 350);
    rising.x.push_back(3.0 * power);
    rising.y.push_back(i < 350 ? power : 1.0);
    one_row.x.push_back((i * 37 % 700) / 100.0);
    one_row.y.push_back(2.0);
    two_spots.x.push_back(i % 2 == 0 ? 1e-13 * i : 1.5 + 1e-13 * i);
    two_spots.y.push_back(i % 3 == 0 ? 0.0 : 1e-300);
    at_infinity.x.push_back((i * 37 % 700) / 100.0);
    at_infinity.y.push_back(i % 5 == 0 ? 0.5 : infinity);
  }
  for (const double step : {0.0, 1e-13, 0.01, 1.0, 4.0}) {
    for (const Pixels& set : {rising, one_row, two_spots, at_infinity}) {
      EXPECT_TRUE(equals_oracle_both_ways(set, step)) << step;
    }
  }
}

// Points that lie in the same parts of their cells, as many cells apart as marks cannot tell, or
// one more or less; their cells now and then share a hash.
TEST(Fission_paths, points_at_the_same_place_of_far_cells_equal_the_oracle) {
  for (const double cells : {1.0, 63.0, 64.0, 65.0, 4096.0}) {
    Pixels set = cloud(14, 40, 1.0);
    for (std::size_t i = 0; i < 1000; ++i) {
      set.x.push_back(set.x[i % 40] + 3.0 * cells * static_cast<double>(i % 31));
      set.y.push_back(set.y[i % 40] + 3.0 * cells * static_cast<double>(i % 29));
    }
    EXPECT_TRUE(equals_oracle_both_ways(set, 1.0)) << cells;
  }
}

// A box from edge to edge of its cells, and points on these edges or beside them by one rounding.
TEST(Fission_paths, points_on_the_edges_of_cells_equal_the_oracle) {
  for (const double step : {1.0, 0.7, 1.0 / 3.0}) {
    Pixels set;
    for (int i = -12; i < 12; ++i) {
      for (int k = -12; k < 12; ++k) {
        const double edge = i * 1.5 * step;
        set.x.push_back(k % 3 == 0 ? edge : std::nextafter(edge, k % 3 == 1 ? 1e9 : -1e9));
        set.y.push_back(k * 1.5 * step);
      }
    }
    EXPECT_TRUE(equals_oracle_both_ways(set, step)) << step;
    EXPECT_TRUE(equals_oracle_both_ways(shuffled(set, 15), step)) << step;
  }
}

// Around the largest number of points that are compared one by one, and the size of a leaf.
TEST(Fission_paths, duplicates_in_any_number_equal_the_oracle) {
  for (const std::size_t count :
       {7U, 8U, 9U, 15U, 16U, 17U, 32U, 33U, 34U, 63U, 64U, 65U, 66U, 127U, 128U, 129U, 300U}) {
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

// Where neighbouring doubles are about as far apart as the parts of a cell.
TEST(Fission_paths, coordinates_that_hardly_tell_parts_of_a_cell_apart_equal_the_oracle) {
  for (const double base : {1.2e13, 1.4e13, -1.2e13, -1.4e13, 1e14, -1e14}) {
    EXPECT_TRUE(equals_oracle_both_ways(moved(cloud(16, 500, 30.0), base, -base), 1.0)) << base;
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

// A picture in raster order: each pixel of a rectangle is there in `per_mille` of all cases.
Pixels noise(std::uint64_t seed, int width, int height, std::uint64_t per_mille) {
  Random random(seed);
  Pixels set;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (random.below(1000) >= per_mille) continue;
      set.x.push_back(x);
      set.y.push_back(y);
    }
  }
  return set;
}

// Widths around those of the map's words, and of the longest stretch that is looked at as one.
TEST(Fission_paths, pictures_of_any_width_and_density_equal_the_oracle) {
  for (const int width : {1, 2, 3, 60, 61, 62, 63, 64, 65, 66, 124, 125, 126, 127, 128, 129, 200}) {
    for (const std::uint64_t per_mille : {50U, 300U, 400U, 500U, 600U, 800U, 950U, 1000U}) {
      const Pixels set = noise(per_mille, width, 1200 / width + 1, per_mille);
      EXPECT_TRUE(equals_oracle_both_ways(set, 1.0)) << width << " at " << per_mille;
    }
  }
}

// Teeth up and down from a bar, and bars side by side: stretches with pixels on both sides, on one
// side after the other, and ends that meet.
TEST(Fission_paths, combs_and_frames_equal_the_oracle) {
  for (const int gap : {2, 3, 5, 9}) {
    Pixels up, down, frame;
    for (int y = 0; y < 12; ++y) {
      for (int x = 0; x < 140; ++x) {
        const auto add = [&](Pixels& set, bool is_there) {
          if (!is_there) return;
          set.x.push_back(x);
          set.y.push_back(y);
        };
        add(up, y > 8 || x % gap == 0);
        add(down, y < 3 || x % gap == 0 || (y == 9 && x > 70));
        add(frame, x < 3 || x > 136 || y % gap == 0);
      }
    }
    EXPECT_TRUE(equals_oracle_both_ways(up, 1.0)) << gap;
    EXPECT_TRUE(equals_oracle_both_ways(down, 1.0)) << gap;
    EXPECT_TRUE(equals_oracle_both_ways(frame, 1.0)) << gap;
  }
}

// Rows that are reached over their whole width at once, wider than what is looked at as one.
TEST(Fission_paths, a_triangle_from_its_tip_down_equals_the_oracle) {
  Pixels set;
  for (int y = 0; y < 70; ++y) {
    for (int x = -y; x <= y; ++x) {
      if (y > 40 && y < 45 && x % 9 == 0) continue;
      set.x.push_back(x);
      set.y.push_back(y);
    }
  }
  EXPECT_TRUE(equals_oracle_both_ways(set, 1.0));
}

// A triangle that stands on its tip, and teeth below its base: the base is one stretch, so that all
// the teeth wait in the queue at the same time.
Pixels triangle_with_teeth(int height, int spacing) {
  Pixels set;
  for (int y = 0; y < height + 3; ++y) {
    const int half = std::min(y, height);
    for (int x = -half; x <= half; ++x) {
      if (y >= height && (x + half) % spacing == spacing - 1) continue;
      set.x.push_back(x);
      set.y.push_back(y);
    }
  }
  return set;
}

// Steps down to the right and to the left by turns, which wait in the queue one or two at a time.
Pixels zigzag(int steps, int width) {
  Pixels set;
  for (int y = 0; y < steps; ++y) {
    const int left = std::min(y % 200, 200 - y % 200);
    for (int x = left; x <= left + width; ++x) {
      set.x.push_back(x);
      set.y.push_back(y);
    }
  }
  return set;
}

// Around as many stretches as the queue holds at first, twice as many and several times as many.
TEST(Fission_paths, queues_of_any_length_equal_the_oracle) {
  for (const int height : {31, 32, 33, 34, 63, 64, 65, 66, 70}) {
    for (const int spacing : {2, 3, 4}) {
      EXPECT_TRUE(equals_oracle_both_ways(triangle_with_teeth(height, spacing), 1.0))
          << height << " high, teeth " << spacing << " apart";
    }
  }
  for (const int steps : {63, 64, 65, 66, 127, 128, 129, 400, 700}) {
    for (const int width : {1, 2, 3}) {
      EXPECT_TRUE(equals_oracle_both_ways(zigzag(steps, width), 1.0))
          << steps << " steps, " << width << " wide";
    }
  }
}

// A picture drawn by a pen that keeps its direction for a while, now and then lifted: lines that
// cross, touch, run along each other and along the border.
Pixels scribble(std::uint64_t seed, int width, int height, std::uint64_t straight) {
  Random random(seed);
  std::vector<bool> is_drawn(static_cast<std::size_t>(width * height));
  int x = 0, y = 0, right = 1, down = 0;
  for (int step = 0; step < 300; ++step) {
    if (random.below(straight) == 0) {
      right = static_cast<int>(random.below(3)) - 1;
      down = static_cast<int>(random.below(3)) - 1;
    }
    if (random.below(100) == 0) x = static_cast<int>(random.below(static_cast<unsigned>(width)));
    x = std::clamp(x + right, 0, width - 1);
    y = std::clamp(y + down, 0, height - 1);
    is_drawn[static_cast<std::size_t>(y * width + x)] = true;
  }
  Pixels set;
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      if (!is_drawn[static_cast<std::size_t>(row * width + column)]) continue;
      set.x.push_back(column);
      set.y.push_back(row);
    }
  }
  return set;
}

TEST(Fission_paths, lines_one_pixel_thick_equal_the_oracle) {
  std::uint64_t seed = 0;
  for (const int width : {4, 20, 61, 62, 63, 64, 65, 66, 130, 300}) {
    for (const int height : {5, 20, 60}) {
      for (const std::uint64_t straight : {2U, 5U, 20U, 60U}) {
        const Pixels set = scribble(++seed, width, height, straight);
        EXPECT_TRUE(equals_oracle_both_ways(set, 1.0)) << width << " " << height << " " << straight;
      }
    }
  }
}

// Both ends of a line meet: on the same pixel, side by side, or a pixel apart.
TEST(Fission_paths, lines_that_close_equal_the_oracle) {
  for (int width = 1; width <= 9; ++width) {
    for (int height = 1; height <= 9; ++height) {
      Pixels frame, diamond;
      for (int y = 0; y < height; ++y) {
        for (int x = 60; x < 60 + width; ++x) {
          if (y != 0 && y != height - 1 && x != 60 && x != 59 + width) continue;
          frame.x.push_back(x);
          frame.y.push_back(y);
        }
      }
      for (int y = -height; y <= height; ++y) {
        const int reach = (height - std::abs(y)) * width / height;
        diamond.x.push_back(62 - reach);
        diamond.y.push_back(y);
        if (reach == 0) continue;
        diamond.x.push_back(62 + reach);
        diamond.y.push_back(y);
      }
      EXPECT_TRUE(equals_oracle_both_ways(frame, 1.0)) << width << " by " << height;
      EXPECT_TRUE(equals_oracle_both_ways(diamond, 1.0)) << width << " by " << height;
    }
  }
}

// Across the words of the map, with one point that is no pixel of it, and with one that comes
// twice.
TEST(Fission_paths, pictures_in_any_order_equal_the_oracle) {
  for (const int width : {1, 2, 61, 62, 63, 64, 65, 66, 128, 200}) {
    for (const std::uint64_t per_mille : {50U, 400U, 600U, 1000U}) {
      const Pixels picture = noise(per_mille, width, 1200 / width + 1, per_mille);
      const Pixels set = moved(shuffled(picture, per_mille), -30.0, 5.0);
      EXPECT_TRUE(equals_oracle(set, 1.0)) << width << " at " << per_mille;
      EXPECT_TRUE(equals_oracle(moved(set, 0.5, -7.25), 1.0)) << width << " at " << per_mille;
      for (const double odd : {-0.0, 3.5, 1e300, infinity, not_a_number, set.x.front()}) {
        Pixels bent = set;
        bent.x[set.x.size() / 2] = odd;
        bent.y.back() = bent.y.front();
        EXPECT_TRUE(equals_oracle_both_ways(bent, 1.0)) << width << " with " << odd;
      }
    }
  }
}

// On maps of 2^14 words and a few more or less, which shuffled pixels are put on as they come or
// band by band; clean, and with a pixel that comes twice.
TEST(Fission_paths, large_pictures_in_any_order_equal_the_oracle) {
  for (const int bottom : {16379, 16380, 16381, 16382, 16900}) {
    Pixels set{{0, 60}, {0, 1.0 * bottom}};
    for (int k = 1; k <= 30; ++k) {
      const auto seed = static_cast<std::uint64_t>(k);
      const Pixels blot = moved(noise(seed, 9, 7, 600), k % 50, k * 500);
      set.x.insert(set.x.end(), blot.x.begin(), blot.x.end());
      set.y.insert(set.y.end(), blot.y.begin(), blot.y.end());
    }
    set = shuffled(set, 21);
    EXPECT_TRUE(equals_oracle(set, 1.0)) << bottom;
    set.x.push_back(set.x[3]);
    set.y.push_back(set.y[3]);
    EXPECT_TRUE(equals_oracle(set, 1.0)) << bottom << " and one twice";
  }
}

TEST(Fission_paths, pictures_anywhere_and_between_whole_numbers_equal_the_oracle) {
  const Pixels set = noise(8, 40, 30, 600);
  for (const double by : {-20.0, -3.0, 0.5, -7.25, 0.1, 1e6, 536870900.0, -536870912.0, 536870911.5,
                          1e9, 9007199254740992.0}) {
    EXPECT_TRUE(equals_oracle_both_ways(moved(set, by, 0.0), 1.0)) << by;
    EXPECT_TRUE(equals_oracle_both_ways(moved(set, 0.0, by), 1.0)) << by;
    EXPECT_TRUE(equals_oracle_both_ways(moved(set, by, -by), 1.0)) << by;
  }
}

// Groups stay packed where the whole map is one of pixels that can be, and become points again
// elsewhere: at its first columns and rows and before them, at the last ones and behind them. Each
// with all that is written: single pixels, stretches along and down, and lines that are followed.
TEST(Fission_paths, pictures_at_the_edges_of_packed_pixels_equal_the_oracle) {
  const Pixels set = joined({noise(11, 70, 12, 700), moved(block(7, 9), 3.0, 14.0),
                             moved(scribble(3, 66, 20, 5), 0.0, 25.0)});
  for (const double by : {-1.0, 0.0, 1.0 / 1024, 0.5, 65280.0, 65344.0, 65407.0, 65408.0, 65409.0,
                          65472.0, 65488.0, 65489.0, 65490.0, 65491.0, 65492.0, 65536.0}) {
    for (const Pixels& there : {moved(set, by, 0.0), moved(set, 0.0, by), moved(set, by, by)}) {
      EXPECT_TRUE(equals_oracle_both_ways(there, 1.0)) << by;
      EXPECT_TRUE(equals_oracle(shuffled(there, 5), 1.0)) << by << ", shuffled";
    }
  }
  // As wide as a map of whole words can be, up to the last columns.
  const Pixels wide = block(62, 3);
  for (double by = 65470.0; by < 65480.0; ++by) {
    EXPECT_TRUE(equals_oracle_both_ways(moved(wide, by, 2.0), 1.0)) << by;
    EXPECT_TRUE(equals_oracle(shuffled(moved(wide, by, 2.0), 6), 1.0)) << by << ", shuffled";
  }
}

// As wide and as high as a map may be, and more.
TEST(Fission_paths, the_largest_pictures_and_larger_ones_equal_the_oracle) {
  const Pixels left = noise(12, 5, 4, 700);
  for (const double length : {65468.0, 65469.0, 65470.0, 65471.0, 65531.0, 65532.0, 65533.0,
                              65534.0, 65535.0, 65536.0, 65537.0, 131072.0, 1e6}) {
    Pixels set;
    for (int row = 0; row < 4; ++row) {
      for (std::size_t i = 0; i < left.x.size(); ++i) {
        if (left.y[i] != row) continue;
        set.x.push_back(left.x[i]);
        set.y.push_back(row);
      }
      for (const double back : {2.0, 1.0, 0.0}) {
        set.x.push_back(length - back);
        set.y.push_back(row);
      }
    }
    for (const double by : {0.0, 0.5, -40000.0}) {
      EXPECT_TRUE(equals_oracle_both_ways(moved(set, by, 0.0), 1.0)) << length << " at " << by;
      EXPECT_TRUE(equals_oracle(shuffled(moved(set, by, by), 7), 1.0)) << length << " at " << by;
    }
  }
}

// High maps need many pixels, or they would be too sparse.
TEST(Fission_paths, the_highest_pictures_and_higher_ones_equal_the_oracle) {
  for (const double length : {65532.0, 65533.0, 65540.0}) {
    const Pixels set = joined({block(60, 220), moved(noise(13, 9, 3, 700), 20.0, length - 2.0)});
    EXPECT_TRUE(equals_oracle(moved(set, 0.0, -0.5), 1.0)) << length;
  }
}

TEST(Fission_paths, steps_that_reach_eight_neighbours_or_not_quite_equal_the_oracle) {
  const Pixels set = noise(9, 30, 30, 400);
  for (const double step : {0.6, 0.666, 0.6666666666666666, 0.6666666666666667, 0.667, 0.9, 1.1,
                            1.33, 1.3326822916666667, 1.3333333333333333, 1.334, 2.0}) {
    EXPECT_TRUE(equals_oracle_both_ways(set, step)) << step;
  }
}

// A clean picture but for one point, wherever it stands in its run.
TEST(Fission_paths, one_point_that_is_no_pixel_is_seen_anywhere) {
  const Pixels whole = moved(noise(10, 30, 20, 900), -10.0, -5.0);
  for (std::size_t i = 0; i < whole.x.size(); i += 7) {
    for (const double odd : {-0.0, 0.5, 5000.0, 1e9, 1e300, infinity, not_a_number}) {
      Pixels set = whole;
      set.x[i] = odd;
      EXPECT_TRUE(equals_oracle_both_ways(set, 1.0)) << odd << " at " << i;
    }
  }
}

// Left of 0 a pixel and its neighbour less one may be rounded to the same number.
TEST(Fission_paths, points_a_rounding_beside_a_pixel_keep_their_bits) {
  const Pixels whole = moved(noise(17, 30, 20, 900), -10.0, -5.0);
  for (std::size_t i = 0; i < whole.x.size(); i += 7) {
    for (const double towards : {-infinity, infinity}) {
      Pixels set = whole;
      set.x[i] = std::nextafter(set.x[i], towards);
      EXPECT_TRUE(equals_oracle_both_ways(set, 1.0)) << i;
      EXPECT_TRUE(equals_oracle_both_ways(moved(set, -30.0, 0.0), 1.0)) << i;
    }
  }
}

// In one coordinate at a time, at all points there or some, at the border of the picture or within.
TEST(Fission_paths, negative_zeros_keep_their_sign) {
  for (const double by : {0.0, -10.0}) {
    for (const std::size_t every : {1U, 5U, 25U}) {
      const Pixels set = moved(noise(11, 30, 20, 900), by, by);
      Pixels in_x = set;
      Pixels in_y = set;
      for (std::size_t i = every / 2; i < set.x.size(); i += every) {
        if (set.x[i] == 0.0) in_x.x[i] = -0.0;
        if (set.y[i] == 0.0) in_y.y[i] = -0.0;
      }
      EXPECT_TRUE(equals_oracle_both_ways(in_x, 1.0)) << by << " every " << every;
      EXPECT_TRUE(equals_oracle_both_ways(in_y, 1.0)) << by << " every " << every;
    }
  }
}

TEST(Fission_paths, a_pixel_twice_or_out_of_order_equals_the_oracle) {
  const Pixels whole = noise(12, 30, 20, 700);
  for (std::size_t i = 1; i < whole.x.size(); i += 9) {
    Pixels twice = whole;
    twice.x[i] = twice.x[i - 1];
    twice.y[i] = twice.y[i - 1];
    EXPECT_TRUE(equals_oracle_both_ways(twice, 1.0)) << i;
    Pixels swapped = whole;
    std::swap(swapped.x[i], swapped.x[i - 1]);
    std::swap(swapped.y[i], swapped.y[i - 1]);
    EXPECT_TRUE(equals_oracle_both_ways(swapped, 1.0)) << i;
  }
}

// Beyond what a map may measure the points are searched in cells.
TEST(Fission_paths, sparse_pictures_equal_the_oracle) {
  for (const double far : {900.0, 1100.0, 40000.0, 1e7}) {
    Pixels set = noise(13, 20, 20, 500);
    for (std::size_t i = set.x.size() / 2; i < set.x.size(); ++i) set.y[i] += far;
    set.x.back() += far;
    EXPECT_TRUE(equals_oracle_both_ways(set, 1.0)) << far;
  }
}

}  // namespace
}  // namespace chart_trace_test
