#include "grouping/box_bubble.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

double above(double value) { return std::nextafter(value, infinity); }
double below(double value) { return std::nextafter(value, -infinity); }

void expect_split(const Pixels& set, double box_size, const Pixels& group, const Pixels& remain) {
  const Box_bubble bubble(set.x, set.y, box_size);
  EXPECT_TRUE(same_bits(bubble.x_group_func(), group.x)) << "x of the group";
  EXPECT_TRUE(same_bits(bubble.y_group_func(), group.y)) << "y of the group";
  EXPECT_TRUE(same_bits(bubble.x_remain_func(), remain.x)) << "x of the remainder";
  EXPECT_TRUE(same_bits(bubble.y_remain_func(), remain.y)) << "y of the remainder";
}

TEST(Box_bubble, of_nothing_is_empty) { expect_split({}, 3, {}, {}); }

TEST(Box_bubble, of_one_point_is_that_point_and_no_remainder) {
  expect_split(pixels({{4, 5}}), 3, pixels({{4, 5}}), {});
  expect_split(pixels({{4, 5}}), -1, pixels({{4, 5}}), {});
}

TEST(Box_bubble, keeps_input_order_on_both_sides_with_the_seed_first) {
  expect_split(pixels({{5, 5}, {9, 9}, {6, 6}, {0, 0}, {4, 4}, {5, 6}, {9, 8}}), 3,
               pixels({{5, 5}, {6, 6}, {4, 4}, {5, 6}}), pixels({{9, 9}, {0, 0}, {9, 8}}));
}

TEST(Box_bubble, takes_points_exactly_on_an_edge_or_corner) {
  const Pixels set =
      pixels({{10, 20}, {8.5, 20}, {11.5, 20}, {10, 18.5}, {10, 21.5}, {11.5, 18.5}});
  expect_split(set, 3, set, {});
}

TEST(Box_bubble, leaves_points_one_bit_outside_an_edge) {
  expect_split(
      pixels({{10, 20}, {below(8.5), 20}, {above(11.5), 20}, {10, below(18.5)}, {10, above(21.5)}}),
      3, pixels({{10, 20}}),
      pixels({{below(8.5), 20}, {above(11.5), 20}, {10, below(18.5)}, {10, above(21.5)}}));
}

TEST(Box_bubble, needs_both_coordinates_inside) {
  expect_split(pixels({{0, 10}, {1, 10}, {10, 1}, {1, 1}, {10, 10}}), 3, pixels({{0, 10}, {1, 10}}),
               pixels({{10, 1}, {1, 1}, {10, 10}}));
}

// Doubles beyond 2^53 are 2 apart: 1e16 + 1.5 rounds up to 1e16 + 2, which is then on the edge,
// although it lies 2 away from the seed.
TEST(Box_bubble, compares_with_rounded_bounds_and_not_with_the_distance_from_the_seed) {
  const Pixels inside = pixels({{1e16, 0}, {1e16 + 2, 0}, {1e16 - 2, 0}});
  expect_split(inside, 3, inside, {});
  const Pixels turned = {inside.y, inside.x};
  expect_split(turned, 3, turned, {});
}

TEST(Box_bubble, a_box_of_size_zero_takes_duplicates_of_the_seed_alone) {
  expect_split(pixels({{1, 2}, {1, above(2)}, {1, 2}, {below(1), 2}, {1, 2}}), 0,
               pixels({{1, 2}, {1, 2}, {1, 2}}), pixels({{1, above(2)}, {below(1), 2}}));
}

TEST(Box_bubble, a_box_of_size_zero_holds_both_zeros_and_keeps_their_bits) {
  expect_split(pixels({{0.0, -0.0}, {-0.0, 0.0}}), 0, pixels({{0.0, -0.0}, {-0.0, 0.0}}), {});
}

TEST(Box_bubble, a_negative_box_holds_the_seed_alone) {
  expect_split(pixels({{1, 2}, {1, 2}, {1.5, 2}}), -3, pixels({{1, 2}}),
               pixels({{1, 2}, {1.5, 2}}));
}

TEST(Box_bubble, a_nan_box_holds_the_seed_alone) {
  expect_split(pixels({{1, 2}, {1, 2}}), not_a_number, pixels({{1, 2}}), pixels({{1, 2}}));
}

TEST(Box_bubble, an_infinite_box_holds_everything_that_is_not_nan) {
  expect_split(pixels({{1, 2}, {infinity, -infinity}, {not_a_number, 2}, {-1e300, 1e300}}),
               infinity, pixels({{1, 2}, {infinity, -infinity}, {-1e300, 1e300}}),
               pixels({{not_a_number, 2}}));
}

TEST(Box_bubble, a_point_with_a_nan_coordinate_is_outside) {
  expect_split(pixels({{0, 0}, {not_a_number, 0}, {0, not_a_number}, {1, 1}}), 3,
               pixels({{0, 0}, {1, 1}}), pixels({{not_a_number, 0}, {0, not_a_number}}));
}

TEST(Box_bubble, a_nan_seed_leaves_every_other_point_outside) {
  expect_split(pixels({{not_a_number, 0}, {not_a_number, 0}, {0, 0}}), 3,
               pixels({{not_a_number, 0}}), pixels({{not_a_number, 0}, {0, 0}}));
  expect_split(pixels({{0, not_a_number}, {0, not_a_number}, {0, 0}}), infinity,
               pixels({{0, not_a_number}}), pixels({{0, not_a_number}, {0, 0}}));
}

TEST(Box_bubble, duplicates_land_on_the_same_side) {
  expect_split(pixels({{0, 0}, {1, 1}, {5, 5}, {1, 1}, {5, 5}, {1, 1}}), 3,
               pixels({{0, 0}, {1, 1}, {1, 1}, {1, 1}}), pixels({{5, 5}, {5, 5}}));
}

TEST(Box_bubble, an_infinite_seed_holds_its_like) {
  expect_split(pixels({{infinity, 0}, {1e300, 0}, {infinity, 1}}), 3,
               pixels({{infinity, 0}, {infinity, 1}}), pixels({{1e300, 0}}));
}

TEST(Box_bubble, accessors_return_copies) {
  const Box_bubble bubble({0, 9}, {0, 9}, 3);
  bubble.x_group_func()[0] = 99;
  bubble.y_remain_func()[0] = 99;
  EXPECT_TRUE(same_bits(bubble.x_group_func(), {0}));
  EXPECT_TRUE(same_bits(bubble.y_remain_func(), {9}));
}

}  // namespace
}  // namespace chart_trace_test
