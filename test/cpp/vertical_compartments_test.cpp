#include "grouping/vertical_compartments.hpp"

#include <gtest/gtest.h>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

void expect_groups(const Pixels& set, double width, const Groups_of_doubles& x,
                   const Groups_of_doubles& y) {
  const Vertical_compartments compartments(set.x, set.y, width);
  EXPECT_TRUE(same_bits(values_of(compartments.x_groups_func()), x)) << "x";
  EXPECT_TRUE(same_bits(values_of(compartments.y_groups_func()), y)) << "y";
}

// The compartments of points on the x axis, by their x.
Groups_of_doubles on_axis(const Doubles& x, double width) {
  return values_of(Vertical_compartments(x, Doubles(x.size(), 0.0), width).x_groups_func());
}

TEST(Vertical_compartments, of_nothing_are_none) { expect_groups({}, 1, {}, {}); }

TEST(Vertical_compartments, of_one_point_are_one) {
  expect_groups(pixels({{3, 4}}), 1, {{3}}, {{4}});
}

TEST(Vertical_compartments, a_point_on_a_border_belongs_to_the_left) {
  EXPECT_TRUE(same_bits(on_axis({0, 1, 2, 3}, 1), {{0, 1}, {2}, {3}}));
}

TEST(Vertical_compartments, a_gap_is_empty_compartments) {
  EXPECT_TRUE(same_bits(on_axis({0, 10}, 2), {{0}, {}, {}, {}, {10}}));
}

TEST(Vertical_compartments, points_at_one_x_are_one_compartment_in_input_order) {
  expect_groups(pixels({{5, 3}, {5, 1}, {5, 2}, {5, 1}}), 1, {{5, 5, 5, 5}}, {{3, 1, 2, 1}});
}

TEST(Vertical_compartments, keep_input_order_inside_and_go_from_left_to_right) {
  expect_groups(pixels({{3, 0}, {0.5, 1}, {2.5, 2}, {0, 3}, {0.25, 4}}), 1,
                {{0.5, 0, 0.25}, {}, {3, 2.5}}, {{1, 3, 4}, {}, {0, 2}});
}

TEST(Vertical_compartments, start_at_the_leftmost_point_wherever_it_stands) {
  EXPECT_TRUE(same_bits(on_axis({2.5, 1.25, 3, 1.5}, 1), {{1.25, 1.5}, {2.5, 3}}));
}

TEST(Vertical_compartments, stop_as_soon_as_every_point_is_taken) {
  EXPECT_TRUE(same_bits(on_axis({0, 1}, 1), {{0, 1}}));
  EXPECT_TRUE(same_bits(on_axis({0, 1, 2}, 0.5), {{0}, {1}, {}, {2}}));
}

// Added up, the eighth border is 0.7999999999999999, and 0.8 lies right of it; 8 * 0.1 is 0.8.
TEST(Vertical_compartments, borders_are_added_up_and_not_multiplied) {
  EXPECT_TRUE(same_bits(on_axis({0, 0.8}, 0.1), {{0}, {}, {}, {}, {}, {}, {}, {}, {0.8}}));
}

TEST(Vertical_compartments, a_point_one_bit_right_of_a_border_belongs_to_the_right) {
  EXPECT_TRUE(same_bits(on_axis({0, 1.0000000000000002}, 1), {{0}, {1.0000000000000002}}));
}

TEST(Vertical_compartments, take_points_of_every_height) {
  expect_groups(pixels({{0, -1e300}, {0, infinity}, {1, 0}, {0, -infinity}}), 0.5, {{0, 0, 0}, {1}},
                {{-1e300, infinity, -infinity}, {0}});
}

TEST(Vertical_compartments, never_take_a_point_with_a_nan_coordinate) {
  // The point left over keeps the run going until the border passes the rightmost point.
  expect_groups(pixels({{0, 0}, {1, not_a_number}, {2, 0}}), 1, {{0}, {2}, {}}, {{0}, {0}, {}});
  EXPECT_TRUE(same_bits(on_axis({0, not_a_number, 1}, 1), {{0, 1}, {}}));
}

TEST(Vertical_compartments, count_the_x_of_a_point_whose_y_is_nan) {
  expect_groups(pixels({{1, 0}, {0, not_a_number}, {3.5, not_a_number}}), 1, {{1}, {}, {}, {}},
                {{0}, {}, {}, {}});
}

TEST(Vertical_compartments, of_a_nan_as_first_x_are_none) {
  EXPECT_TRUE(same_bits(on_axis({not_a_number, 0, 1}, 1), {}));
}

TEST(Vertical_compartments, of_a_nan_as_first_y_are_all_empty) {
  expect_groups(pixels({{0, not_a_number}, {1, 0}, {2, 0}}), 1, {{}, {}, {}}, {{}, {}, {}});
}

TEST(Vertical_compartments, a_width_of_zero_makes_one_compartment) {
  EXPECT_TRUE(same_bits(on_axis({1, 0, 0, 2}, 0), {{0, 0}}));
}

TEST(Vertical_compartments, a_negative_width_makes_one_empty_compartment) {
  EXPECT_TRUE(same_bits(on_axis({1, 0, 2}, -1), {{}}));
}

TEST(Vertical_compartments, a_nan_width_makes_one_empty_compartment) {
  EXPECT_TRUE(same_bits(on_axis({1, 0, 2}, not_a_number), {{}}));
}

TEST(Vertical_compartments, a_width_too_small_to_move_the_border_makes_one_compartment) {
  EXPECT_TRUE(same_bits(on_axis({1e16, 1e16 + 4}, 0.5), {{1e16}}));
  EXPECT_TRUE(same_bits(on_axis({1, 2}, 5e-324), {{1}}));
}

// Beyond 2^53 doubles are 2 apart: 2^53 + 1 rounds back to 2^53.
TEST(Vertical_compartments, a_border_that_stops_moving_ends_the_run) {
  constexpr double stuck = 9007199254740992;
  EXPECT_TRUE(same_bits(on_axis({stuck - 1, stuck, stuck + 2}, 1), {{stuck - 1, stuck}, {}}));
}

TEST(Vertical_compartments, an_infinite_width_takes_everything) {
  EXPECT_TRUE(same_bits(on_axis({5, 0, infinity, 1e300}, infinity), {{5, 0, infinity, 1e300}}));
}

TEST(Vertical_compartments, from_minus_infinity_the_border_does_not_move) {
  EXPECT_TRUE(same_bits(on_axis({0, -infinity, 5}, 1), {{-infinity}}));
}

}  // namespace
}  // namespace chart_trace_test
