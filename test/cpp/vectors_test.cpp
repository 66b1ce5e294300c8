#include "primitives/vectors.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

double above(double value) { return std::nextafter(value, infinity); }
double below(double value) { return std::nextafter(value, -infinity); }

TEST(Distance, is_the_root_of_the_sum_of_squares) {
  EXPECT_TRUE(same_bits(distance(0, 0, 3, 4), 5.0));
  EXPECT_TRUE(same_bits(distance(3, 4, 0, 0), 5.0));
  EXPECT_TRUE(same_bits(distance(-1, 2, -1, 2), 0.0));
  EXPECT_TRUE(same_bits(distance(1, 1, 2, 2), 1.4142135623730951));
  EXPECT_TRUE(same_bits(distance(1, 10, 4, 6), 5.0));
}

TEST(Distance, is_not_scaled_against_overflow_or_underflow) {
  EXPECT_TRUE(same_bits(distance(1e200, 0, 0, 0), infinity));
  EXPECT_TRUE(same_bits(distance(1e-200, 0, 0, 0), 0.0));
}

TEST(Distance, of_a_nan_or_of_equal_infinities_is_nan) {
  EXPECT_TRUE(same_bits(distance(not_a_number, 0, 0, 0), not_a_number));
  EXPECT_TRUE(same_bits(distance(0, 0, 0, not_a_number), not_a_number));
  EXPECT_TRUE(same_bits(distance(infinity, 0, infinity, 0), not_a_number));
  EXPECT_TRUE(same_bits(distance(infinity, 0, 0, 0), infinity));
}

TEST(Average_of_numbers, of_nothing_is_nan) {
  EXPECT_TRUE(same_bits(average_of_numbers({}), not_a_number));
}

TEST(Average_of_numbers, of_one_and_two_is_one_and_a_half) {
  EXPECT_TRUE(same_bits(average_of_numbers({1, 2}), 1.5));
}

// 1e16 + 1 rounds back to 1e16: only the order of the sum tells the two apart.
TEST(Average_of_numbers, adds_in_index_order) {
  EXPECT_TRUE(same_bits(average_of_numbers({1e16, 1, -1e16}), 0.0));
  EXPECT_TRUE(same_bits(average_of_numbers({1e16, -1e16, 1}), 0.3333333333333333));
  EXPECT_TRUE(same_bits(average_of_numbers({1, 1e16, -1e16}), 0.0));
}

TEST(Average_of_numbers, adds_without_compensation) {
  EXPECT_TRUE(same_bits(average_of_numbers(Doubles(10, 0.1)), 0.09999999999999999));
}

TEST(Average_of_numbers, starts_from_positive_zero) {
  EXPECT_TRUE(same_bits(average_of_numbers({-0.0}), 0.0));
  EXPECT_TRUE(same_bits(average_of_numbers({-0.0, -0.0}), 0.0));
}

TEST(Average_of_numbers, passes_nan_and_infinity_on) {
  EXPECT_TRUE(same_bits(average_of_numbers({1, not_a_number, 3}), not_a_number));
  EXPECT_TRUE(same_bits(average_of_numbers({infinity, -infinity}), not_a_number));
  EXPECT_TRUE(same_bits(average_of_numbers({infinity, 1}), infinity));
}

TEST(Array_distances, of_an_empty_set_is_one_nan) {
  EXPECT_TRUE(same_bits(array_distances({}, {}), {not_a_number}));
}

TEST(Array_distances, of_one_point_is_one_zero) {
  EXPECT_TRUE(same_bits(array_distances({3}, {4}), {0.0}));
}

TEST(Array_distances, begins_with_the_distance_of_the_first_point_to_itself) {
  EXPECT_TRUE(same_bits(array_distances({0, 3}, {0, 4}), {0, 5}));
}

TEST(Array_distances, keeps_the_order_of_the_points) {
  EXPECT_TRUE(same_bits(array_distances({1, 7, 4, 1}, {2, 10, 6, 2}), {0, 10, 5, 0}));
}

TEST(Array_distances, passes_nan_on) {
  EXPECT_TRUE(same_bits(array_distances({0, not_a_number, 3}, {0, 0, 4}), {0, not_a_number, 5}));
  EXPECT_TRUE(same_bits(array_distances({0, 3}, {not_a_number, 4}), {not_a_number, not_a_number}));
}

TEST(Array_distances, of_an_infinite_first_point_to_itself_is_nan) {
  EXPECT_TRUE(same_bits(array_distances({infinity, 0}, {0, 0}), {not_a_number, infinity}));
}

TEST(Min_index, of_nothing_is_one) { EXPECT_EQ(min_index({}), 1); }

TEST(Min_index, of_one_value_is_zero) {
  EXPECT_EQ(min_index({7}), 0);
  EXPECT_EQ(min_index({not_a_number}), 0);
}

TEST(Min_index, of_equal_values_is_the_first) {
  EXPECT_EQ(min_index({2, 1, 1}), 1);
  EXPECT_EQ(min_index({5, 5, 5}), 0);
  EXPECT_EQ(min_index({infinity, infinity}), 0);
}

TEST(Min_index, treats_the_two_zeros_as_equal) {
  EXPECT_EQ(min_index({0.0, -0.0}), 0);
  EXPECT_EQ(min_index({1, -0.0, 0.0}), 1);
}

TEST(Min_index, finds_the_smallest_wherever_it_stands) {
  EXPECT_EQ(min_index({1, 2, 3}), 0);
  EXPECT_EQ(min_index({3, 1, 2}), 1);
  EXPECT_EQ(min_index({3, 2, 1}), 2);
  EXPECT_EQ(min_index({3, 1, 2, -infinity}), 3);
}

TEST(Min_index, never_moves_from_a_nan_that_stands_first) {
  EXPECT_EQ(min_index({not_a_number, 1}), 0);
  EXPECT_EQ(min_index({not_a_number, 1, 0, -1}), 0);
}

TEST(Min_index, passes_over_a_nan_that_stands_later) {
  EXPECT_EQ(min_index({1, not_a_number, 0}), 2);
  EXPECT_EQ(min_index({1, not_a_number, 2}), 0);
}

// Whether both ways to find them give these extremes.
testing::AssertionResult have_extremes(const std::vector<double>& values, double min, double max) {
  const chart_trace::Extremes alone = chart_trace::extremes_of(values);
  const chart_trace::Group_figures figures = chart_trace::figures_of(values, values);
  for (const chart_trace::Extremes& found : {alone, figures.x, figures.y}) {
    const auto equal = same_bits({found.min, found.max}, {min, max});
    if (!equal) return equal;
  }
  return testing::AssertionSuccess();
}

TEST(Extremes, are_the_smallest_and_the_largest_wherever_they_stand) {
  EXPECT_TRUE(have_extremes({7}, 7, 7));
  EXPECT_TRUE(have_extremes({2, 1, 3}, 1, 3));
  EXPECT_TRUE(have_extremes({3, 2, 1}, 1, 3));
  EXPECT_TRUE(have_extremes({0, infinity, -infinity}, -infinity, infinity));
}

TEST(Extremes, of_equal_zeros_are_the_first) {
  EXPECT_TRUE(have_extremes({0.0, -0.0}, 0.0, 0.0));
  EXPECT_TRUE(have_extremes({-0.0, 0.0}, -0.0, -0.0));
  EXPECT_TRUE(have_extremes({1, 0.0, -0.0}, 0.0, 1));
  EXPECT_TRUE(have_extremes({-1, -0.0, 0.0}, -1, -0.0));
}

TEST(Extremes, are_a_nan_only_where_it_stands_first) {
  EXPECT_TRUE(have_extremes({not_a_number, 1, 2}, not_a_number, not_a_number));
  EXPECT_TRUE(have_extremes({1, not_a_number, 2}, 1, 2));
  EXPECT_TRUE(have_extremes({2, 1, not_a_number}, 1, 2));
}

TEST(Check_point_in_box, includes_all_edges) {
  EXPECT_TRUE(check_point_in_box(1, 1, {1, 2}, {0, 1}));
  EXPECT_TRUE(check_point_in_box(2, 0, {1, 2}, {0, 1}));
  EXPECT_TRUE(check_point_in_box(1.5, 0.5, {1, 2}, {0, 1}));
  EXPECT_TRUE(check_point_in_box(1, 1, {1, 1}, {1, 1}));
}

TEST(Check_point_in_box, excludes_what_lies_one_bit_outside) {
  EXPECT_FALSE(check_point_in_box(below(1), 0.5, {1, 2}, {3, 4}));
  EXPECT_FALSE(check_point_in_box(below(1), 3.5, {1, 2}, {3, 4}));
  EXPECT_FALSE(check_point_in_box(above(2), 3.5, {1, 2}, {3, 4}));
  EXPECT_FALSE(check_point_in_box(1.5, below(3), {1, 2}, {3, 4}));
  EXPECT_FALSE(check_point_in_box(1.5, above(4), {1, 2}, {3, 4}));
}

TEST(Check_point_in_box, is_false_for_any_nan) {
  EXPECT_FALSE(check_point_in_box(not_a_number, 1, {1, 2}, {0, 1}));
  EXPECT_FALSE(check_point_in_box(1, not_a_number, {1, 2}, {0, 1}));
  EXPECT_FALSE(check_point_in_box(1, 1, {not_a_number, 2}, {0, 1}));
  EXPECT_FALSE(check_point_in_box(1, 1, {1, not_a_number}, {0, 1}));
  EXPECT_FALSE(check_point_in_box(1, 1, {1, 2}, {not_a_number, 1}));
  EXPECT_FALSE(check_point_in_box(1, 1, {1, 2}, {0, not_a_number}));
}

TEST(Check_point_in_box, is_false_when_a_range_is_turned_round) {
  EXPECT_FALSE(check_point_in_box(1.5, 0.5, {2, 1}, {0, 1}));
  EXPECT_FALSE(check_point_in_box(1.5, 0.5, {1, 2}, {1, 0}));
}

TEST(Replicate_vector, of_nothing_is_nothing) { EXPECT_TRUE(same_bits(replicate_vector({}), {})); }

TEST(Replicate_vector, copies_every_element_in_order) {
  EXPECT_TRUE(
      same_bits(replicate_vector({3, -0.0, not_a_number, 1, 1}), {3, -0.0, not_a_number, 1, 1}));
}

}  // namespace
}  // namespace chart_trace_test
