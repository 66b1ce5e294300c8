#include "primitives/check_solid_filled.hpp"

#include <gtest/gtest.h>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

bool solid(const Pixels& group, double cell_size = 1) {
  return check_solid_filled(group.x, group.y, cell_size);
}

// A filled block that is so many cells wide and high: one pixel more each way. More than every cell
// is filled, so it is solid unless it is elongated.
bool solid_block_of_cells(int columns, int rows) { return solid(block(columns + 1, rows + 1)); }

TEST(Check_solid_filled, a_filled_square_is_solid) {
  EXPECT_TRUE(solid(block(3, 3)));
  EXPECT_TRUE(solid(block(3, 3, 100.5, -7.25)));
}

TEST(Check_solid_filled, a_straight_run_one_pixel_thick_is_solid_on_purpose) {
  EXPECT_TRUE(solid(block(10, 1)));
  EXPECT_TRUE(solid(block(1, 10)));
}

TEST(Check_solid_filled, a_run_two_pixels_thick_is_elongated) {
  EXPECT_FALSE(solid(block(10, 2)));
  EXPECT_FALSE(solid(block(2, 10)));
}

TEST(Check_solid_filled, one_cell_wide_is_elongated_from_four_times_as_long) {
  EXPECT_TRUE(solid_block_of_cells(1, 2));
  EXPECT_TRUE(solid_block_of_cells(1, 3));
  EXPECT_FALSE(solid_block_of_cells(1, 4));
  EXPECT_TRUE(solid_block_of_cells(2, 1));
  EXPECT_TRUE(solid_block_of_cells(3, 1));
  EXPECT_FALSE(solid_block_of_cells(4, 1));
}

TEST(Check_solid_filled, two_cells_wide_is_elongated_from_twice_as_long) {
  EXPECT_TRUE(solid_block_of_cells(2, 3));
  EXPECT_FALSE(solid_block_of_cells(2, 4));
  EXPECT_TRUE(solid_block_of_cells(3, 2));
  EXPECT_FALSE(solid_block_of_cells(4, 2));
}

TEST(Check_solid_filled, three_cells_wide_is_elongated_from_twice_as_long) {
  EXPECT_TRUE(solid_block_of_cells(3, 5));
  EXPECT_FALSE(solid_block_of_cells(3, 6));
  EXPECT_TRUE(solid_block_of_cells(5, 3));
  EXPECT_FALSE(solid_block_of_cells(6, 3));
}

TEST(Check_solid_filled, four_cells_wide_and_more_is_elongated_from_twice_as_long) {
  EXPECT_TRUE(solid_block_of_cells(4, 7));
  EXPECT_FALSE(solid_block_of_cells(4, 8));
  EXPECT_TRUE(solid_block_of_cells(7, 4));
  EXPECT_FALSE(solid_block_of_cells(8, 4));
  EXPECT_TRUE(solid_block_of_cells(9, 17));
  EXPECT_FALSE(solid_block_of_cells(9, 18));
  EXPECT_TRUE(solid_block_of_cells(17, 9));
  EXPECT_FALSE(solid_block_of_cells(18, 9));
}

TEST(Check_solid_filled, fewer_than_four_points_are_solid_whatever_the_fill) {
  EXPECT_TRUE(solid(pixels({{5, 5}})));
  EXPECT_TRUE(solid(pixels({{0, 0}, {3, 3}})));
  EXPECT_TRUE(solid(pixels({{0, 0}, {3, 3}, {1, 1}})));
  EXPECT_FALSE(solid(pixels({{0, 0}, {3, 3}, {1, 1}, {2, 2}})));
}

TEST(Check_solid_filled, fewer_than_four_points_can_be_elongated) {
  EXPECT_FALSE(solid(pixels({{0, 0}, {1, 4}})));
  EXPECT_FALSE(solid(pixels({{0, 0}, {8, 4}, {1, 1}})));
}

TEST(Check_solid_filled, more_than_65_percent_of_the_cells_must_be_filled) {
  // Five by four cells; the corners set the extent.
  Pixels group = pixels({{0, 0}, {5, 4}});
  while (group.x.size() < 13) {
    group.x.push_back(2);
    group.y.push_back(2);
  }
  EXPECT_FALSE(solid(group)) << "13 of 20 cells are exactly 65 percent";
  group.x.push_back(2);
  group.y.push_back(2);
  EXPECT_TRUE(solid(group)) << "14 of 20 cells";
}

TEST(Check_solid_filled, the_fill_is_rounded_to_single_precision) {
  // 5857802 of 3001 * 3003 cells are 0.6500000055, above 0.65; the nearest float is 0.64999998.
  Pixels group = pixels({{0, 0}, {3001, 3003}});
  group.x.resize(5857802, 1.0);
  group.y.resize(5857802, 1.0);
  EXPECT_FALSE(solid(group));
  // One more point passes the middle between the two floats around 0.65.
  group.x.push_back(1.0);
  group.y.push_back(1.0);
  EXPECT_TRUE(solid(group));
}

TEST(Check_solid_filled, the_ratio_is_rounded_to_single_precision) {
  // 39999999 / 20000000 is 1.99999995; the nearest float is 2.
  EXPECT_FALSE(solid(pixels({{0, 0}, {20000000, 39999999}})));
  EXPECT_FALSE(solid(pixels({{0, 0}, {39999999, 20000000}})));
  // 19999999 / 10000000 is 1.9999999; the nearest float is below 2.
  EXPECT_TRUE(solid(pixels({{0, 0}, {10000000, 19999999}})));
  EXPECT_TRUE(solid(pixels({{0, 0}, {19999999, 10000000}})));
}

TEST(Check_solid_filled, an_extent_is_rounded_up_to_whole_cells) {
  EXPECT_TRUE(solid(pixels({{0, 0}, {2, 0}, {0, 2}, {2, 2}})));
  EXPECT_FALSE(solid(pixels({{0, 0}, {2.1, 0}, {0, 2.1}, {2.1, 2.1}})));
  EXPECT_TRUE(solid(pixels({{0, 0}, {0.1, 0}, {0, 0.1}, {0.1, 0.1}})));
}

TEST(Check_solid_filled, the_cell_size_scales_the_group) {
  EXPECT_TRUE(solid(block(3, 3, 0, 0, 0.5), 0.5));
  EXPECT_FALSE(solid(block(2, 10, 0, 0, 0.5), 0.5));
  EXPECT_TRUE(solid(block(2, 10, 0, 0, 0.5), 2)) << "one cell by three";
  EXPECT_FALSE(solid(pixels({{0, 0}, {2, 0}, {0, 2}, {2, 2}}), 0.5)) << "4 points, 16 cells";
}

TEST(Check_solid_filled, the_extremes_may_stand_anywhere) {
  // Neither the first nor the last point is a corner: 4 of 9 cells, then 4 of 4.
  EXPECT_FALSE(solid(pixels({{1, 1}, {0, 3}, {3, 0}, {2, 2}})));
  EXPECT_TRUE(solid(pixels({{1, 1}, {0, 2}, {2, 0}, {1, 1}})));
}

TEST(Check_solid_filled, points_on_one_pixel_are_solid) {
  EXPECT_TRUE(solid(Pixels{Doubles(9, 5.0), Doubles(9, 6.0)}));
}

// Counts that leave the 32-bit range, NaN included, are the smallest integer: no row of the
// elongation table holds, and the product of two of them wraps to 0 cells.
TEST(Check_solid_filled, a_cell_size_of_zero_finds_nothing_elongated_and_everything_filled) {
  EXPECT_TRUE(solid(block(2, 10), 0));
  EXPECT_TRUE(solid(block(10, 2), 0));
  EXPECT_TRUE(solid(pixels({{0, 0}, {3, 3}, {1, 1}, {2, 2}}), 0));
  EXPECT_TRUE(solid(block(1, 10), 0));
}

TEST(Check_solid_filled, a_nan_cell_size_finds_nothing_elongated_and_everything_filled) {
  EXPECT_TRUE(solid(block(2, 10), not_a_number));
  EXPECT_TRUE(solid(pixels({{0, 0}, {3, 3}, {1, 1}, {2, 2}}), not_a_number));
}

TEST(Check_solid_filled, a_cell_size_so_small_that_counts_leave_the_range_is_like_zero) {
  EXPECT_TRUE(solid(block(2, 10), 1e-300));
  EXPECT_TRUE(solid(pixels({{0, 0}, {3, 3}, {1, 1}, {2, 2}}), 1e-10));
}

TEST(Check_solid_filled, a_negative_cell_size_elongates_nothing_but_counts_the_fill) {
  EXPECT_TRUE(solid(block(2, 10), -1));
  EXPECT_FALSE(solid(pixels({{0, 0}, {3, 3}, {1, 1}, {2, 2}}), -1)) << "4 of -3 * -3 cells";
}

TEST(Check_solid_filled, an_infinite_cell_size_makes_an_extent_of_no_cells) {
  EXPECT_TRUE(solid(block(2, 10), infinity));
}

TEST(Check_solid_filled, the_product_of_the_counts_wraps_at_32_bits) {
  EXPECT_TRUE(solid(pixels({{0, 0}, {65536, 0}, {0, 65536}, {65536, 65536}})))
      << "65536 * 65536 wraps to 0 cells";
  EXPECT_FALSE(solid(pixels({{0, 0}, {65537, 0}, {0, 65536}, {65537, 65536}})))
      << "65537 * 65536 wraps to 65536 cells";
  EXPECT_FALSE(solid(pixels({{0, 0}, {46341, 0}, {0, 46341}, {46341, 46341}})))
      << "46341 * 46341 wraps to a negative number of cells";
}

TEST(Check_solid_filled, a_nan_coordinate_is_passed_over_unless_it_stands_first) {
  // Two by three cells without the NaN: 4 of 6 are filled.
  EXPECT_TRUE(solid(pixels({{0, 0}, {not_a_number, 1}, {1, 2}, {2, 3}})));
  // First, it makes the width the smallest integer; three times that wraps to itself.
  EXPECT_FALSE(solid(pixels({{not_a_number, 0}, {0, 1}, {1, 2}, {2, 3}})));
}

TEST(Check_solid_filled, an_infinite_extent_is_the_smallest_integer) {
  // The smallest integer times 2 wraps to 0 cells.
  EXPECT_TRUE(solid(pixels({{0, 0}, {infinity, 1}, {0, 2}, {0, 2}})));
}

}  // namespace
}  // namespace chart_trace_test
