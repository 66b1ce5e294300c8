#include "primitives/point_density.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

Groups_of_doubles kept(const Doubles& x, const Doubles& y, double density) {
  return values_of(point_density(x, y, density));
}

// 0, 1, ..., last on the x axis.
Doubles line(int last) {
  Doubles x;
  for (int i = 0; i <= last; ++i) x.push_back(i);
  return x;
}

// The x values kept of points on the x axis.
Doubles kept_on_axis(const Doubles& x, double density) {
  return kept(x, Doubles(x.size(), 0.0), density).at(0);
}

TEST(Point_density, of_nothing_is_one_group_of_one_nan) {
  EXPECT_TRUE(same_bits(kept({}, {}, 0.05), {{not_a_number}}));
  EXPECT_TRUE(same_bits(kept({}, {}, 0.06), {{not_a_number}}));
}

TEST(Point_density, of_no_x_does_not_look_at_y) {
  EXPECT_TRUE(same_bits(kept({}, {1, 2}, 0.05), {{not_a_number}}));
}

TEST(Point_density, keeps_one_point_under_every_valid_code) {
  for (const double density : {0.05, 0.051, 0.052, 0.053, 0.054, 0.055}) {
    SCOPED_TRACE(density);
    EXPECT_TRUE(same_bits(kept({3}, {4}, density), {{3}, {4}}));
  }
}

TEST(Point_density, any_other_code_gives_two_empty_groups) {
  for (const double density : {0.06, 0.0, -0.05, 0.0505, 0.056, 0.5, 1.0, not_a_number, infinity}) {
    SCOPED_TRACE(density);
    EXPECT_TRUE(same_bits(kept({3}, {4}, density), {{}, {}}));
    EXPECT_TRUE(same_bits(kept({0, 1, 2}, {0, 0, 0}, density), {{}, {}}));
  }
}

TEST(Point_density, compares_codes_exactly) {
  for (const double code : {0.05, 0.051, 0.052, 0.053, 0.054, 0.055}) {
    SCOPED_TRACE(code);
    EXPECT_TRUE(same_bits(kept({3}, {4}, std::nextafter(code, 0.0)), {{}, {}}));
    EXPECT_TRUE(same_bits(kept({3}, {4}, std::nextafter(code, 1.0)), {{}, {}}));
  }
}

TEST(Point_density, goes_from_each_point_to_the_nearest_one_left) {
  EXPECT_TRUE(same_bits(kept({0, 10, 1, 2}, {0, 0, 0, 0}, 0.05), {{0, 1, 2, 10}, {0, 0, 0, 0}}));
  EXPECT_TRUE(same_bits(kept({0, 3, 30, 0}, {0, 4, 40, 7}, 0.05), {{0, 3, 0, 30}, {0, 4, 7, 40}}));
}

TEST(Point_density, code_0_05_keeps_every_point) {
  EXPECT_TRUE(same_bits(kept_on_axis(line(16), 0.05), line(16)));
}

TEST(Point_density, code_0_051_keeps_every_second_point) {
  EXPECT_TRUE(same_bits(kept_on_axis(line(16), 0.051), {0, 2, 4, 6, 8, 10, 12, 14, 16}));
}

TEST(Point_density, code_0_052_keeps_every_fourth_point) {
  EXPECT_TRUE(same_bits(kept_on_axis(line(16), 0.052), {0, 4, 8, 12, 16}));
}

TEST(Point_density, codes_0_053_and_0_054_both_keep_every_eighth_point) {
  EXPECT_TRUE(same_bits(kept_on_axis(line(8), 0.053), {0, 8}));
  EXPECT_TRUE(same_bits(kept_on_axis(line(8), 0.054), {0, 8}));
  EXPECT_TRUE(same_bits(kept_on_axis(line(16), 0.053), {0, 8, 16}));
  EXPECT_TRUE(same_bits(kept_on_axis(line(16), 0.054), {0, 8, 16}));
}

TEST(Point_density, code_0_055_keeps_every_sixteenth_point) {
  EXPECT_TRUE(same_bits(kept_on_axis(line(15), 0.055), {0}));
  EXPECT_TRUE(same_bits(kept_on_axis(line(16), 0.055), {0, 16}));
}

TEST(Point_density, counts_the_stride_along_the_chain_and_not_along_the_input) {
  // The chain is 0, 1, 2, 3, 4.
  EXPECT_TRUE(same_bits(kept_on_axis({0, 4, 2, 3, 1}, 0.051), {0, 2, 4}));
}

TEST(Point_density, of_two_equally_near_points_visits_the_earlier_first) {
  EXPECT_TRUE(same_bits(kept_on_axis({0, 1, -1}, 0.05), {0, 1, -1}));
  EXPECT_TRUE(same_bits(kept_on_axis({0, -1, 1}, 0.05), {0, -1, 1}));
}

TEST(Point_density, the_points_left_keep_their_order_when_one_is_taken) {
  // From (0,0) to (1,0), which stands last; from there both others are equally near.
  EXPECT_TRUE(same_bits(kept({0, 1, 1, 1}, {0, 5, -5, 0}, 0.05), {{0, 1, 1, 1}, {0, 0, 5, -5}}));
  EXPECT_TRUE(same_bits(kept({0, 1, 1, 1}, {0, -5, 5, 0}, 0.05), {{0, 1, 1, 1}, {0, 0, -5, 5}}));
}

TEST(Point_density, visits_duplicates_one_after_the_other) {
  EXPECT_TRUE(same_bits(kept_on_axis({0, 3, 0, 3}, 0.05), {0, 0, 3, 3}));
}

TEST(Point_density, chooses_a_nan_point_that_stands_first_among_the_points_left) {
  EXPECT_TRUE(same_bits(kept_on_axis({0, not_a_number, 1, 2}, 0.05), {0, not_a_number, 1, 2}));
  // From 0 to 1; then the NaN point stands first.
  EXPECT_TRUE(same_bits(kept_on_axis({0, 1, not_a_number, 2}, 0.05), {0, 1, not_a_number, 2}));
}

TEST(Point_density, passes_over_a_nan_point_that_stands_later) {
  EXPECT_TRUE(same_bits(kept_on_axis({0, 2, not_a_number, 1}, 0.05), {0, 1, 2, not_a_number}));
}

TEST(Point_density, goes_on_in_input_order_from_a_nan_point) {
  EXPECT_TRUE(same_bits(kept_on_axis({not_a_number, 5, 1}, 0.05), {not_a_number, 5, 1}));
}

TEST(Point_density, keeps_the_bits_of_the_points) {
  EXPECT_TRUE(same_bits(kept({-0.0, 0.1}, {0.0, -0.0}, 0.05), {{-0.0, 0.1}, {0.0, -0.0}}));
}

}  // namespace
}  // namespace chart_trace_test
