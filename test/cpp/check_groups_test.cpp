#include "grouping/check_groups.hpp"

#include <gtest/gtest.h>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

// Whether the two touch, which must not hang on the order in which they are named.
void expect_touch(const Doubles& a, const Doubles& b, double pixel_step, bool touch) {
  EXPECT_EQ(check_groups(a, b, pixel_step), touch) << text_of(a) << " and " << text_of(b);
  EXPECT_EQ(check_groups(b, a, pixel_step), touch) << text_of(b) << " and " << text_of(a);
}

TEST(Check_groups, runs_whose_ends_are_one_step_apart_touch) {
  expect_touch({5}, {6}, 1, true);
  expect_touch({0, 1, 2}, {3, 4}, 1, true);
  expect_touch({0, 2, 4}, {6, 8}, 2, true);
}

TEST(Check_groups, runs_whose_ends_are_two_steps_apart_do_not) {
  expect_touch({5}, {7}, 1, false);
  expect_touch({0, 1, 2}, {4, 5}, 1, false);
  expect_touch({0, 2, 4}, {8, 10}, 2, false);
}

TEST(Check_groups, a_gap_just_over_one_step_is_too_wide) {
  expect_touch({0, 1}, {2.0000005}, 1, false);
  expect_touch({0, 1}, {1.9999999}, 1, true);
}

TEST(Check_groups, runs_that_overlap_touch) {
  expect_touch({0, 1, 2, 3}, {2, 3, 4}, 1, true);
  expect_touch({0, 1, 2, 3}, {3, 4, 5}, 1, true);
  expect_touch({0, 1, 2, 3, 4, 5}, {2, 3}, 1, true);
  expect_touch({1, 2}, {1, 2}, 1, true);
}

TEST(Check_groups, the_extremes_may_stand_anywhere) {
  expect_touch({3, 1, 2}, {9, 4, 5}, 1, true);
  expect_touch({2, 1, 3, 1}, {9, 5, 7}, 1, false);
}

TEST(Check_groups, with_a_step_of_zero_runs_must_meet) {
  expect_touch({5}, {5}, 0, true);
  expect_touch({4, 5}, {5, 6}, 0, true);
  expect_touch({5}, {6}, 0, false);
}

TEST(Check_groups, with_a_negative_step_runs_must_overlap) {
  expect_touch({0, 1, 2}, {1, 2, 3}, -1, true);
  expect_touch({0, 1}, {1, 2}, -1, false);
}

// Both minima are equal: the extent of the second run is what counts.
TEST(Check_groups, equal_minima_measure_the_second_run) {
  EXPECT_FALSE(check_groups({0, 1, 2}, {0}, -1));
  EXPECT_TRUE(check_groups({0}, {0, 1, 2}, -1));
}

TEST(Check_groups, with_a_nan_step_nothing_touches) {
  expect_touch({5}, {5}, not_a_number, false);
  expect_touch({5}, {6}, not_a_number, false);
}

TEST(Check_groups, with_an_infinite_step_everything_touches) {
  expect_touch({-1e30}, {1e30}, infinity, true);
}

TEST(Check_groups, compares_extents_in_single_precision) {
  // As floats the ends are 16777215 and 16777216, one apart; as doubles two.
  expect_touch({16777215}, {16777217}, 1, true);
  expect_touch({16777216}, {16777218}, 1, false);
  // As floats the ends are 0.5 and 0.60000002; as doubles just under 0.1 apart.
  expect_touch({0.5}, {0.6}, 0.1, false);
}

TEST(Check_groups, subtracts_in_single_precision) {
  // 1 - 1e-8 is 0.99999999; the nearest float is 1.
  expect_touch({1}, {1e-8}, 0.999999995, false);
}

TEST(Check_groups, compares_the_gap_with_the_step_in_double_precision) {
  // The float nearest to 0.1 is 0.10000000149, more than the double 0.1.
  expect_touch({0}, {0.1}, 0.1, false);
  expect_touch({0}, {0.1}, 0.1000000015, true);
}

TEST(Check_groups, a_nan_as_minimum_makes_it_false) {
  expect_touch({not_a_number}, {5}, 1, false);
  expect_touch({not_a_number}, {not_a_number}, 1, false);
  expect_touch({not_a_number, 5}, {5}, 1, false);
}

TEST(Check_groups, passes_over_a_nan_that_does_not_stand_first) {
  expect_touch({5, not_a_number}, {6}, 1, true);
  expect_touch({5, not_a_number, 6}, {7}, 1, true);
  expect_touch({5, not_a_number, 6}, {8}, 1, false);
}

}  // namespace
}  // namespace chart_trace_test
