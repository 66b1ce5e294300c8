// The oracle itself, on small examples whose answers can be worked out by hand.
#include "test/oracle/oracle.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "test/cpp/same_bits.hpp"

namespace chart_trace_test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t kSmallest32 = std::numeric_limits<std::int32_t>::min();

// A width that gives each of up to 19 whole columns a compartment of its own, none of them empty: a
// width of 1 would put the first two into one, since compartments are closed.
constexpr double kOne_column = 0.95;

testing::AssertionResult is(const oracle::Points& got, const Doubles& x, const Doubles& y) {
  const testing::AssertionResult same_x = same_bits(got.x, x);
  return same_x ? same_bits(got.y, y) : same_x;
}

testing::AssertionResult is(const oracle::Groups& got, const Groups_of_doubles& x,
                            const Groups_of_doubles& y) {
  const testing::AssertionResult same_x = same_bits(got.x, x);
  return same_x ? same_bits(got.y, y) : same_x;
}

oracle::Points block(int left, int right, int top, int bottom) {
  oracle::Points points;
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) {
      points.x.push_back(x);
      points.y.push_back(y);
    }
  }
  return points;
}

// --- Numbers -------------------------------------------------------------------------------------

TEST(Oracle, conversion_to_32_bits_truncates_and_gives_the_smallest_for_what_does_not_fit) {
  EXPECT_EQ(oracle::to_int32(2.9), 2);
  EXPECT_EQ(oracle::to_int32(-2.9), -2);
  EXPECT_EQ(oracle::to_int32(2147483647.5), 2147483647);
  EXPECT_EQ(oracle::to_int32(2147483648.0), kSmallest32);
  EXPECT_EQ(oracle::to_int32(-2147483648.5), kSmallest32);
  EXPECT_EQ(oracle::to_int32(kNaN), kSmallest32);
  EXPECT_EQ(oracle::to_int32(kInfinity), kSmallest32);
}

TEST(Oracle, products_wrap_around_at_32_bits) {
  EXPECT_EQ(oracle::wrapping_product(46341, 46341), -2147479015);
  EXPECT_EQ(oracle::wrapping_product(65536, 65536), 0);
  EXPECT_EQ(oracle::wrapping_product(kSmallest32, kSmallest32), 0);
  EXPECT_EQ(oracle::wrapping_product(kSmallest32, 3), kSmallest32);
  EXPECT_EQ(oracle::wrapping_product(-3, 4), -12);
}

TEST(Oracle, helpers_over_vectors_answer_their_examples) {
  EXPECT_TRUE(same_bits(oracle::distance(0, 0, 3, 4), 5));
  EXPECT_TRUE(same_bits(oracle::average_of_numbers({}), kNaN));
  EXPECT_TRUE(same_bits(oracle::average_of_numbers({1, 2}), 1.5));
  EXPECT_TRUE(same_bits(oracle::average_of_numbers({-0.0}), 0.0));
  EXPECT_TRUE(same_bits(oracle::array_distances({}, {}), {kNaN}));
  EXPECT_TRUE(same_bits(oracle::array_distances({3}, {4}), {0}));
  EXPECT_TRUE(same_bits(oracle::array_distances({0, 3}, {0, 4}), {0, 5}));
  EXPECT_TRUE(same_bits(oracle::array_distances({kInfinity, 3}, {0, 4}), {kNaN, kInfinity}));
  EXPECT_EQ(oracle::min_index({}), 1);
  EXPECT_EQ(oracle::min_index({7}), 0);
  EXPECT_EQ(oracle::min_index({2, 1, 1}), 1);
  EXPECT_EQ(oracle::min_index({kNaN, 1}), 0);
  EXPECT_EQ(oracle::min_index({2, kNaN, 1}), 2);
  EXPECT_TRUE(oracle::check_point_in_box(1, 1, {1, 2}, {0, 1}));
  EXPECT_FALSE(oracle::check_point_in_box(kNaN, 1, {1, 2}, {0, 1}));
  EXPECT_FALSE(oracle::check_point_in_box(1, 1.5, {1, 2}, {0, 1}));
  EXPECT_TRUE(same_bits(oracle::replicate_vector({1, -0.0}), {1, -0.0}));
}

TEST(Oracle, extremes_keep_the_first_of_equal_values_and_a_nan_only_in_front) {
  EXPECT_TRUE(same_bits(oracle::smallest({0.0, -0.0}), 0.0));
  EXPECT_TRUE(same_bits(oracle::largest({-0.0, 0.0}), -0.0));
  EXPECT_TRUE(same_bits(oracle::smallest({kNaN, 1}), kNaN));
  EXPECT_TRUE(same_bits(oracle::largest({1, kNaN, 2}), 2));
}

// --- Primitives ----------------------------------------------------------------------------------

TEST(Oracle, clusters_of_two_pairs_have_two_centroids) {
  const oracle::Clusters got = oracle::cluster({0, 1, 10, 11}, {0, 0, 0, 0}, 0.34);
  EXPECT_TRUE(same_bits(got.radius, 5.5));
  EXPECT_TRUE(is(got.centroids, {0.5, 10.5}, {0, 0}));
  EXPECT_TRUE(is(got.remaining, {}, {}));
}

TEST(Oracle, clusters_without_a_radius_are_nan_pairs) {
  EXPECT_TRUE(is(oracle::cluster({}, {}, 0.05).centroids, {}, {}));
  EXPECT_TRUE(is(oracle::cluster({1}, {1}, 0.05).centroids, {kNaN}, {kNaN}));
  for (const double fraction : {0.0, -1.0, kNaN, 1.0e300}) {
    const oracle::Clusters got = oracle::cluster({1, 2}, {1, 2}, fraction);
    EXPECT_TRUE(is(got.centroids, {kNaN, kNaN}, {kNaN, kNaN})) << fraction;
    EXPECT_TRUE(is(got.remaining, {1, 2}, {1, 2})) << fraction;
  }
  EXPECT_TRUE(is(oracle::cluster({4, 4, 9}, {4, 4, 9}, 0.05).centroids, {kNaN, kNaN, kNaN},
                 {kNaN, kNaN, kNaN}));
}

TEST(Oracle, a_point_exactly_at_the_radius_is_not_gathered) {
  EXPECT_TRUE(is(oracle::cluster({0, 2}, {0, 0}, 1.0).centroids, {0, 2}, {0, 0}));
}

TEST(Oracle, a_fraction_above_one_takes_all_distances) {
  EXPECT_TRUE(same_bits(oracle::cluster_radius({{0, 1, 3}, {0, 0, 0}}, 3, 7.0), 2.0));
}

TEST(Oracle, a_nan_distance_sorts_after_all_numbers) {
  const oracle::Points points = {{0, kNaN, 3, 1}, {0, 0, 0, 0}};
  EXPECT_TRUE(same_bits(oracle::cluster_radius(points, 4, 0.5), 2.0));
  EXPECT_TRUE(same_bits(oracle::cluster_radius(points, 4, 1.0), kNaN));
}

TEST(Oracle, density_chains_walk_to_the_nearest_point_left) {
  EXPECT_TRUE(same_bits(oracle::point_density({}, {}, 0.05), {{kNaN}}));
  EXPECT_TRUE(same_bits(oracle::point_density({3}, {4}, 0.05), {{3}, {4}}));
  EXPECT_TRUE(same_bits(oracle::point_density({3}, {4}, 0.06), {{}, {}}));
  EXPECT_TRUE(same_bits(oracle::point_density({0, 10, 1, 2}, {0, 0, 0, 0}, 0.05),
                        {{0, 1, 2, 10}, {0, 0, 0, 0}}));
  // Two at equal distance: the one that stands earlier.
  EXPECT_TRUE(
      same_bits(oracle::point_density({0, 1, -1}, {0, 0, 0}, 0.05), {{0, 1, -1}, {0, 0, 0}}));
}

TEST(Oracle, density_codes_keep_every_first_second_fourth_eighth_eighth_and_sixteenth) {
  Doubles line(17);
  for (std::size_t i = 0; i < line.size(); ++i) line[i] = static_cast<double>(i);
  const Doubles flat(17, 0.0);
  EXPECT_TRUE(same_bits(oracle::point_density(line, flat, 0.05)[0], line));
  EXPECT_TRUE(
      same_bits(oracle::point_density(line, flat, 0.051)[0], {0, 2, 4, 6, 8, 10, 12, 14, 16}));
  EXPECT_TRUE(same_bits(oracle::point_density(line, flat, 0.052)[0], {0, 4, 8, 12, 16}));
  EXPECT_TRUE(same_bits(oracle::point_density(line, flat, 0.053)[0], {0, 8, 16}));
  EXPECT_TRUE(same_bits(oracle::point_density(line, flat, 0.054)[0], {0, 8, 16}));
  EXPECT_TRUE(same_bits(oracle::point_density(line, flat, 0.055)[0], {0, 16}));
}

TEST(Oracle, blocks_are_solid_and_thick_runs_are_not) {
  const oracle::Points square = block(0, 2, 0, 2);
  EXPECT_TRUE(oracle::check_solid_filled(square.x, square.y, 1));
  const oracle::Points run = block(0, 9, 0, 0);
  EXPECT_TRUE(oracle::check_solid_filled(run.x, run.y, 1));
  const oracle::Points thick_run = block(0, 9, 0, 1);
  EXPECT_FALSE(oracle::check_solid_filled(thick_run.x, thick_run.y, 1));
  // One cell wide: four times as high is a line, three times is not.
  EXPECT_FALSE(oracle::check_solid_filled({0, 1}, {0, 4}, 1));
  EXPECT_TRUE(oracle::check_solid_filled({0, 1}, {0, 3}, 1));
  EXPECT_FALSE(oracle::check_solid_filled({0, 2}, {0, 4}, 1));
  // Nine points over 13 cells are 0.692..., over 14 and more too few.
  EXPECT_FALSE(oracle::check_solid_filled({0, 4, 0, 0}, {0, 4, 0, 0}, 1));
  EXPECT_TRUE(oracle::check_solid_filled({0, 4, 0}, {0, 4, 0}, 1));
}

// --- Grouping ------------------------------------------------------------------------------------

TEST(Oracle, a_box_takes_its_edges_and_leaves_nan) {
  const oracle::Bubble got =
      oracle::box_bubble({0, 1.5, -1.5, 1.6, kNaN, 0}, {0, 1.5, -1.5, 0, 0, 0}, 3.0);
  EXPECT_TRUE(is(got.group, {0, 1.5, -1.5, 0}, {0, 1.5, -1.5, 0}));
  EXPECT_TRUE(is(got.remain, {1.6, kNaN}, {0, 0}));
}

TEST(Oracle, a_box_of_no_or_negative_size_takes_duplicates_or_nothing) {
  EXPECT_TRUE(is(oracle::box_bubble({1, 1, 2}, {1, 1, 1}, 0.0).group, {1, 1}, {1, 1}));
  EXPECT_TRUE(is(oracle::box_bubble({1, 1, 2}, {1, 1, 1}, -1.0).group, {1}, {1}));
  EXPECT_TRUE(is(oracle::box_bubble({kNaN, 1}, {1, 1}, 9.0).group, {kNaN}, {1}));
  EXPECT_TRUE(is(oracle::box_bubble({}, {}, 3.0).group, {}, {}));
}

TEST(Oracle, fission_groups_touch_within_one_and_a_half_steps) {
  EXPECT_TRUE(is(oracle::fission({}, {}, 1), {}, {}));
  EXPECT_TRUE(is(oracle::fission({7}, {8}, 1), {{7}}, {{8}}));
  EXPECT_TRUE(is(oracle::fission({0, 1}, {0, 1}, 1), {{0, 1}}, {{0, 1}}));
  EXPECT_TRUE(is(oracle::fission({0, 2}, {0, 0}, 1), {{0}, {2}}, {{0}, {0}}));
  EXPECT_TRUE(is(oracle::fission({0, 1.5}, {0, -1.5}, 1), {{0, 1.5}}, {{0, -1.5}}));
  EXPECT_TRUE(is(oracle::fission({kNaN, 0, 1}, {0, 0, 0}, 1), {{kNaN}, {0, 1}}, {{0}, {0, 0}}));
}

TEST(Oracle, fission_lists_the_seed_its_neighbours_and_then_pass_by_pass) {
  // From the middle of a run, one pixel on each side is found in each pass, in input order.
  EXPECT_TRUE(is(oracle::fission({0, 3, -3, 2, -2, 1, -1, 9}, {0, 0, 0, 0, 0, 0, 0, 0}, 1),
                 {{0, 1, -1, 2, -2, 3, -3}, {9}}, {{0, 0, 0, 0, 0, 0, 0}, {0}}));
}

TEST(Oracle, runs_touch_up_to_one_step_apart_in_single_precision) {
  EXPECT_TRUE(oracle::check_groups({5}, {6}, 1));
  EXPECT_TRUE(oracle::check_groups({6}, {5}, 1));
  EXPECT_FALSE(oracle::check_groups({5}, {7}, 1));
  EXPECT_FALSE(oracle::check_groups({7}, {5}, 1));
  EXPECT_FALSE(oracle::check_groups({kNaN}, {5}, 1));
  // Both round to the same single-precision number.
  EXPECT_TRUE(oracle::check_groups({16777216}, {16777217}, 0));
}

TEST(Oracle, a_row_from_left_to_right_is_one_group_and_from_right_to_left_pairs) {
  EXPECT_TRUE(is(oracle::horizontal({}, {}, 1), {}, {}));
  EXPECT_TRUE(is(oracle::horizontal({4}, {5}, 1), {{4}}, {{5}}));
  EXPECT_TRUE(is(oracle::horizontal({6, 7, 8}, {0, 0, 0}, 1), {{6, 7, 8}}, {{0, 0, 0}}));
  EXPECT_TRUE(is(oracle::horizontal({10, 9, 8, 7, 6}, {0, 0, 0, 0, 0}, 1), {{10, 9}, {8, 7}, {6}},
                 {{0, 0}, {0, 0}, {0}}));
}

TEST(Oracle, rows_one_and_a_half_steps_apart_do_not_join_and_corners_do) {
  EXPECT_TRUE(is(oracle::horizontal({0, 0}, {0, 1.5}, 1), {{0}, {0}}, {{0}, {1.5}}));
  EXPECT_TRUE(
      is(oracle::horizontal({0, 1, 2, 3}, {0, 0, 1, 1}, 1), {{0, 1, 2, 3}}, {{0, 0, 1, 1}}));
  EXPECT_TRUE(
      is(oracle::horizontal({0, 1, 3, 4}, {0, 0, 0, 0}, 1), {{0, 1}, {3, 4}}, {{0, 0}, {0, 0}}));
}

TEST(Oracle, a_queued_run_becomes_the_reference_only_when_a_run_lies_far_below) {
  // Three rows of one pixel each: the third lies two rows below the first, so the second becomes
  // the reference and the third joins.
  EXPECT_TRUE(is(oracle::horizontal({0, 0, 0}, {0, 1, 2}, 1), {{0, 0, 0}}, {{0, 1, 2}}));
  // A run that touches only the second, on the second's own row, is not searched for.
  EXPECT_TRUE(is(oracle::horizontal({0, 1, 0}, {0, 1, 1}, 0.75), {{0, 0}, {1}}, {{0, 1}, {1}}));
}

TEST(Oracle, compartments_are_closed_and_empty_ones_stay) {
  EXPECT_TRUE(is(oracle::vertical_compartments({0, 1, 2, 3}, {0, 0, 0, 0}, 1), {{0, 1}, {2}, {3}},
                 {{0, 0}, {0}, {0}}));
  EXPECT_TRUE(is(oracle::vertical_compartments({0, 10}, {0, 0}, 2), {{0}, {}, {}, {}, {10}},
                 {{0}, {}, {}, {}, {0}}));
  EXPECT_TRUE(is(oracle::vertical_compartments({4}, {5}, 1), {{4}}, {{5}}));
  EXPECT_TRUE(is(oracle::vertical_compartments({4, 4}, {5, 3}, 1), {{4, 4}}, {{5, 3}}));
}

TEST(Oracle, compartments_end_when_a_border_does_not_move) {
  for (const double width : {0.0, -0.0, 1.0e-300}) {
    EXPECT_TRUE(is(oracle::vertical_compartments({1, 2}, {0, 0}, width), {{1}}, {{0}})) << width;
  }
  EXPECT_TRUE(is(oracle::vertical_compartments({1, 2}, {0, 0}, -1.0), {{}}, {{}}));
  EXPECT_TRUE(is(oracle::vertical_compartments({1, 2}, {0, 0}, kNaN), {{}}, {{}}));
  EXPECT_TRUE(is(oracle::vertical_compartments({kNaN, 2}, {0, 0}, 1.0), {}, {}));
}

// --- Extractors ----------------------------------------------------------------------------------

TEST(Oracle, a_marker_is_a_point_and_a_thick_run_a_curve) {
  oracle::Points pixels = block(0, 2, 0, 2);
  const oracle::Points curve = block(0, 9, 20, 21);
  pixels.x.insert(pixels.x.end(), curve.x.begin(), curve.x.end());
  pixels.y.insert(pixels.y.end(), curve.y.begin(), curve.y.end());
  const oracle::Points_curves got = oracle::points_curves(pixels.x, pixels.y, 1, "fission", 0.05);
  EXPECT_TRUE(is(got.points, {1}, {1}));
  ASSERT_FALSE(got.curves.x.empty());
  EXPECT_EQ(got.points_curves.x.size(), 1 + got.curves.x.size());
  EXPECT_TRUE(same_bits(got.points_curves.x[0], 1));
  EXPECT_TRUE(same_bits(got.points_curves.x[1], got.curves.x[0]));
  const oracle::Points_curves thinned_away =
      oracle::points_curves(pixels.x, pixels.y, 1, "fission", 0.06);
  EXPECT_TRUE(is(thinned_away.points, {1}, {1}));
  EXPECT_TRUE(is(thinned_away.curves, {}, {}));
}

TEST(Oracle, a_bar_has_a_tip_for_each_reading) {
  const oracle::Points bar = block(10, 14, 20, 59);
  for (const std::string method : {"fission", "horizontal"}) {
    const oracle::Bars got = oracle::bars(bar.x, bar.y, 1, method);
    EXPECT_TRUE(is(got.vertical, {12}, {20})) << method;
    EXPECT_TRUE(is(got.horizontal, {14}, {39.5})) << method;
  }
}

TEST(Oracle, any_method_but_fission_groups_by_rows) {
  const Doubles x = {10, 9, 8};
  const Doubles y = {0, 0, 0};
  EXPECT_EQ(oracle::bars(x, y, 1, "fission").vertical.x.size(), 1U);
  for (const std::string method : {"horizontal", "Fission", "fission ", "", "fissio"}) {
    EXPECT_EQ(oracle::bars(x, y, 1, method).vertical.x.size(), 2U) << method;
  }
}

TEST(Oracle, histogram_bars_end_where_the_tops_jump) {
  EXPECT_TRUE(
      is(oracle::histogram({0, 1, 2, 3}, {10, 10, 50, 50}, kOne_column), {0.5, 2.5}, {10, 50}));
  EXPECT_TRUE(is(oracle::histogram({0, 1, 2}, {7, 7, 7}, kOne_column), {1}, {7}));
  EXPECT_TRUE(is(oracle::histogram({4, 5, 4}, {3, 2, 2}, 2), {5}, {2}));
  // An empty compartment does not end a bar.
  EXPECT_TRUE(is(oracle::histogram({0, 9}, {7, 7}, 2), {4.5}, {7}));
  EXPECT_TRUE(is(oracle::histogram({}, {}, 1), {}, {}));
  EXPECT_TRUE(is(oracle::histogram({kNaN}, {1}, 1), {}, {}));
}

// Two treads of one pixel a column, joined by a riser of nine pixels at x = 5.
oracle::Points two_treads_and_a_riser() {
  oracle::Points pixels;
  for (int x = 0; x <= 4; ++x) {
    pixels.x.push_back(x);
    pixels.y.push_back(10);
  }
  for (int y = 10; y >= 2; --y) {
    pixels.x.push_back(5);
    pixels.y.push_back(y);
  }
  for (int x = 6; x <= 9; ++x) {
    pixels.x.push_back(x);
    pixels.y.push_back(2);
  }
  return pixels;
}

TEST(Oracle, a_step_graph_turns_twice_at_a_riser_and_ends_with_its_lone_minimum) {
  const oracle::Points pixels = two_treads_and_a_riser();
  EXPECT_TRUE(
      is(oracle::step_graph(pixels.x, pixels.y, kOne_column), {0, 5, 5, 9}, {10, 10, 2, 2, 2}));
}

TEST(Oracle, a_step_graph_that_begins_and_ends_with_risers_begins_and_ends_at_their_far_ends) {
  oracle::Points pixels;
  for (int y = 0; y <= 8; ++y) {
    pixels.x.push_back(0);
    pixels.y.push_back(y);
  }
  for (int x = 1; x <= 5; ++x) {
    pixels.x.push_back(x);
    pixels.y.push_back(0);
  }
  // The only riser stands left of the tread: its far end, the tread's end, its lone minimum.
  EXPECT_TRUE(is(oracle::step_graph(pixels.x, pixels.y, kOne_column), {0.5, 5}, {8, 0, 0}));
  // A second one to the right, hanging below the tread: its maximum is its far end.
  for (int y = 0; y <= 8; ++y) {
    pixels.x.push_back(6);
    pixels.y.push_back(y);
  }
  EXPECT_TRUE(is(oracle::step_graph(pixels.x, pixels.y, kOne_column), {0.5, 5.5, 5.5}, {8, 0, 8}));
  // One more on top of it that reaches farther up: no end is added to y.
  for (int y = -1; y >= -9; --y) {
    pixels.x.push_back(6);
    pixels.y.push_back(y);
  }
  EXPECT_TRUE(is(oracle::step_graph(pixels.x, pixels.y, kOne_column), {0.5, 5.5, 5.5}, {8, 0}));
}

TEST(Oracle, a_step_graph_without_risers_is_empty) {
  EXPECT_TRUE(is(oracle::step_graph({0, 1, 2}, {0, 0, 0}, kOne_column), {}, {}));
  EXPECT_TRUE(is(oracle::step_graph({}, {}, 1), {}, {}));
}

// --- Dispatch ------------------------------------------------------------------------------------

TEST(Oracle, only_whole_exact_mode_strings_select_something) {
  const oracle::Points pixels = two_treads_and_a_riser();
  for (const std::string mode : {"point_density ", "Histogram", "points", "", "points-Fission"}) {
    EXPECT_TRUE(is(oracle::trace(pixels.x, pixels.y, 1, mode, 0.05), {}, {})) << mode;
  }
  const oracle::Bars bars = oracle::bars(pixels.x, pixels.y, 1, "horizontal");
  EXPECT_TRUE(is(oracle::trace(pixels.x, pixels.y, 1, "bar_vertical-horizontal", 0.05),
                 bars.vertical.x, bars.vertical.y));
  EXPECT_TRUE(is(oracle::trace(pixels.x, pixels.y, 1, "bar_horizontal-horizontal", 0.05),
                 bars.horizontal.x, bars.horizontal.y));
}

}  // namespace
}  // namespace chart_trace_test
