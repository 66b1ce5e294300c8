#include "extractors/step_size_graph_algm.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

void expect_vertices(const Pixels& set, double width, const Doubles& x, const Doubles& y) {
  const Step_size_graph_algm graph(set.x, set.y, width);
  EXPECT_TRUE(same_bits(graph.x_step_func(), x)) << "x";
  EXPECT_TRUE(same_bits(graph.y_step_func(), y)) << "y";
}

// The pictures below are lists of columns at x = 0, 10, 20, ..., each given by its ys. With a width
// of 9.5 every column is a compartment of its own; a column without ys is an empty compartment.
Pixels columns(const std::vector<Doubles>& ys) {
  Pixels set;
  double x = 0;
  for (const Doubles& column_ys : ys) {
    set = joined({set, column(x, column_ys)});
    x += 10;
  }
  return set;
}

void expect_vertices(const std::vector<Doubles>& ys, const Doubles& x, const Doubles& y) {
  expect_vertices(columns(ys), 9.5, x, y);
}

TEST(Step_size_graph_algm, of_nothing_has_no_vertices) { expect_vertices({}, 1, {}, {}); }

TEST(Step_size_graph_algm, without_a_riser_there_are_no_vertices) {
  expect_vertices({{5}}, {}, {});
  expect_vertices({{5}, {5}, {9}}, {}, {});
  expect_vertices({{1, 2, 3}, {5, 6, 7}}, {}, {});
}

TEST(Step_size_graph_algm, without_a_tread_there_are_no_vertices) {
  // Every compartment is empty: the mean is 0, and no compartment holds fewer points.
  expect_vertices(pixels({{0, not_a_number}, {1, 0}, {2, 0}}), 1, {}, {});
  expect_vertices(pixels({{0, 1}, {1, 0}}), -1, {}, {});
}

TEST(Step_size_graph_algm, of_a_nan_as_first_x_has_no_vertices) {
  expect_vertices(pixels({{not_a_number, 0}, {1, 0}}), 1, {}, {});
}

// From a tread over one riser to a tread: start, both ends of the riser, end of the last tread. The
// riser stands left of the end, so its smallest y follows alone.
TEST(Step_size_graph_algm, two_treads_and_a_riser_give_four_vertices_and_one_y) {
  expect_vertices({{10}, {10}, {10, 8, 6, 4, 2}, {2}, {2}}, {0, 20, 20, 40}, {10, 10, 2, 2, 2});
  expect_vertices({{2}, {2}, {10, 8, 6, 4, 2}, {10}, {10}}, {0, 20, 20, 40}, {2, 2, 10, 10, 2});
}

TEST(Step_size_graph_algm, the_vertices_between_steps_stand_halfway_between_the_nearest_centres) {
  // The nearest centres are 10 and 50; the columns at 20, 30 and 40 are risers.
  expect_vertices({{10}, {10}, {10, 8, 6}, {6, 5, 4}, {4, 3, 2}, {2}}, {0, 30, 30, 50},
                  {10, 10, 2, 2, 2});
}

TEST(Step_size_graph_algm, one_tread_has_no_risers_between_steps) {
  expect_vertices({{8}, {8, 6, 4}}, {0, 5, 5}, {8, 8});
}

// A riser that starts the line: halfway between it and the first centre, at the end far from the
// tread.
TEST(Step_size_graph_algm, a_riser_left_of_the_first_tread_starts_the_line_at_its_far_end) {
  expect_vertices({{0, 2, 4, 6, 8}, {8}, {8}}, {5, 20}, {0, 8, 0});
  expect_vertices({{0, 2, 4, 6, 8}, {0}, {0}}, {5, 20}, {8, 0, 0});
}

TEST(Step_size_graph_algm, a_start_riser_equally_far_both_ways_starts_at_its_smallest_y) {
  expect_vertices({{0, 2, 4, 6, 8}, {4}, {4}}, {5, 20}, {0, 4, 0});
}

TEST(Step_size_graph_algm, a_start_riser_stands_at_its_first_point_and_not_at_its_leftmost) {
  const Pixels riser = joined({pixels({{3, 0}}), column(0, {2, 4, 6, 8})});
  expect_vertices(joined({riser, column(10, {8}), column(20, {8})}), 9.5, {6.5, 20}, {0, 8, 0});
}

// Ten times 0.1 adds up to 0.9999999999999999, so the centre of the tread is 0.09999999999999999,
// just where the first point of the riser stands: the border between the two.
TEST(Step_size_graph_algm, a_riser_exactly_at_the_first_centre_starts_the_line) {
  constexpr double border = 0.09999999999999999;
  const Pixels riser = joined({pixels({{border, 0}, {border, 10}}), column(0, Doubles(18, 3.0))});
  const Pixels treads = joined({column(0.1, Doubles(10, 5.0)), column(0.25, Doubles(10, 5.0))});
  expect_vertices(joined({riser, treads}), border, {border, 0.25}, {0, 5, 0});
}

TEST(Step_size_graph_algm, a_riser_right_of_the_first_centre_does_not_start_the_line) {
  expect_vertices({{5}, {5, 6, 7, 8, 9}, {9}}, {0, 10, 10, 20}, {5, 5, 9, 9, 5});
}

// The end: the last centre gives way to the middle between it and the riser, twice.
TEST(Step_size_graph_algm, a_riser_right_of_the_last_tread_ends_the_line_at_its_largest_y_if_far) {
  expect_vertices({{5}, {5}, {5, 6, 7, 8, 9}}, {0, 15, 15}, {5, 5, 9});
}

TEST(Step_size_graph_algm, an_end_riser_whose_far_end_is_its_smallest_y_adds_no_y) {
  expect_vertices({{5}, {5}, {5, 4, 3, 2, 1}}, {0, 15, 15}, {5, 5});
}

TEST(Step_size_graph_algm, an_end_riser_equally_far_both_ways_adds_no_y) {
  expect_vertices({{5}, {5}, {3, 4, 5, 6, 7}}, {0, 15, 15}, {5, 5});
}

TEST(Step_size_graph_algm, an_end_riser_counts_with_the_mean_of_its_x) {
  // 20, 22, 22, 22 and 24: the mean is 22.
  const Pixels riser = pixels({{20, 5}, {22, 6}, {22, 7}, {22, 8}, {24, 9}});
  expect_vertices(joined({columns({{5}, {5}}), riser}), 9.5, {0, 16, 16}, {5, 5, 9});
}

// Three times 0.1 adds up to 0.30000000000000004, and a third of that is 0.10000000000000002: the
// centre of the second tread, and just where the riser stands, right of the border at 0.1.
TEST(Step_size_graph_algm, a_riser_exactly_at_the_last_centre_ends_the_line) {
  constexpr double centre = 0.10000000000000002;
  const Pixels treads = joined({column(0, {5}), column(0.1, {5, 5, 5})});
  expect_vertices(joined({treads, column(centre, {5, 6, 7, 8})}), 0.05, {0, centre, centre},
                  {5, 5, 8});
}

TEST(Step_size_graph_algm, a_riser_left_of_the_last_centre_adds_its_smallest_y_alone) {
  expect_vertices({{5}, {5, 4, 3}, {3}, {3, 5, 7}, {7}}, {0, 10, 10, 30, 30, 40},
                  {5, 5, 3, 3, 7, 7, 3});
  // Even when the largest is its far end.
  expect_vertices({{7}, {7, 5, 3}, {3}}, {0, 10, 10, 20}, {7, 7, 3, 3, 3});
}

TEST(Step_size_graph_algm, as_many_points_as_the_threshold_are_a_riser_one_fewer_a_tread) {
  // A mean of 5 gives a threshold of 7, not of 6, since the factor is a little above 1.2.
  expect_vertices({{0, 1, 2, 3, 4, 5, 6}, Doubles(6, 6.0), {6, 6}}, {5, 20}, {0, 6, 0});
  // A mean of 10 gives 13, not 12.
  expect_vertices({{0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6}, Doubles(12, 6.0), Doubles(5, 6.0)},
                  {5, 20}, {0, 6, 0});
}

TEST(Step_size_graph_algm, a_threshold_is_rounded_up) {
  // A mean of 7 / 3 gives 2.8: three points make a riser, two do not.
  expect_vertices({{2, 2}, {2, 2}, {2, 3, 4}}, {0, 15, 15}, {2, 2, 4});
}

TEST(Step_size_graph_algm, the_height_of_a_step_is_that_of_its_first_centre) {
  expect_vertices({{100}, {100.1}, {100, 80, 60, 40, 20}, {0}}, {0, 20, 20, 30},
                  {100, 100, 0, 0, 20});
}

TEST(Step_size_graph_algm, the_centre_of_a_tread_is_the_mean_of_its_points) {
  // Centres (1, 11) and (20, 2).
  const Pixels tread = pixels({{0, 10}, {2, 12}});
  expect_vertices(joined({tread, column(10, {10, 8, 6, 4, 2}), column(20, {2})}), 9.5,
                  {1, 10.5, 10.5, 20}, {11, 11, 2, 2, 2});
}

TEST(Step_size_graph_algm, a_jump_of_exactly_half_a_percent_does_not_begin_a_step) {
  // Changes of 1 and 199 sum up to 200.
  expect_vertices({{0}, {1}, {1, 50, 100, 150, 200}, {200}}, {0, 20, 20, 30}, {0, 0, 200, 200, 1});
  expect_vertices({{200}, {199}, {199, 150, 100, 50, 0}, {0}}, {0, 20, 20, 30},
                  {200, 200, 0, 0, 0});
}

TEST(Step_size_graph_algm, a_jump_above_half_a_percent_begins_a_step_up_or_down) {
  expect_vertices({{0}, {1}, {1, 50, 100, 150, 199}, {199}}, {0, 5, 5, 20, 20, 30},
                  {0, 0, 1, 1, 199, 199, 1});
  expect_vertices({{199}, {198}, {198, 150, 100, 50, 0}, {0}}, {0, 5, 5, 20, 20, 30},
                  {199, 199, 198, 198, 0, 0, 0});
}

TEST(Step_size_graph_algm, rises_and_falls_both_count_to_the_sum_of_changes) {
  // Changes of 1, 150 and -149: the sum of their sizes is 300, and 1 is a third of a percent.
  expect_vertices({{0}, {1}, {1, 40, 80, 120, 151}, {151}, {151, 100, 75, 50, 2}, {2}},
                  {0, 20, 20, 40, 40, 50}, {0, 0, 151, 151, 2, 2, 2});
}

TEST(Step_size_graph_algm, treads_at_one_height_are_one_step) {
  expect_vertices({{5}, {9, 8, 7, 6, 5}, {5}, {5}}, {0, 30}, {5, 5, 5});
}

// The empty compartment is a tread with a NaN centre, so every share is NaN and all centres are one
// step.
TEST(Step_size_graph_algm, an_empty_compartment_makes_one_step_of_all_treads) {
  expect_vertices({{10}, {10}, {}, {10, 8, 6, 4, 2}, {2}}, {0, 40}, {10, 10, 2});
}

TEST(Step_size_graph_algm, an_empty_compartment_counts_to_the_mean_number_of_points) {
  // 9 points in 6 compartments make a threshold of 2; in 4 compartments they would make it 3.
  expect_vertices({{10, 10}, {10}, {}, {}, {10, 8, 6, 4, 2}, {2}}, {5, 50}, {10, 10, 2});
}

TEST(Step_size_graph_algm, a_nan_first_centre_starts_the_line) {
  // The point at 0 sets the first border but is never taken.
  const Pixels set = joined(
      {column(10, {10}), column(20, {10, 8, 6, 4, 2}), column(30, {2}), column(0, {not_a_number})});
  expect_vertices(set, 9.5, {not_a_number, 30}, {not_a_number, not_a_number, 2});
}

TEST(Step_size_graph_algm, a_nan_last_centre_ends_the_line) {
  const Pixels set =
      joined({column(0, {10}), column(10, {10, 8, 6, 4, 2}), column(20, {not_a_number})});
  expect_vertices(set, 9.5, {0, not_a_number}, {10, 10, 2});
}

// A division of zeros gives a NaN with a sign on some processors and without one on others.
TEST(Step_size_graph_algm, the_centre_of_an_empty_compartment_is_the_plain_nan) {
  const Pixels set =
      joined({column(0, {10}), column(10, {10, 8, 6, 4, 2}), column(20, {not_a_number})});
  const double last = Step_size_graph_algm(set.x, set.y, 9.5).x_step_func().back();
  EXPECT_TRUE(std::isnan(last));
  EXPECT_FALSE(std::signbit(last));
}

TEST(Step_size_graph_algm, a_nan_height_takes_the_smallest_y_of_a_start_riser) {
  expect_vertices({{0, 1, 2, 3, 4}, {infinity, -infinity}}, {5, 10}, {0, not_a_number, 0});
}

TEST(Step_size_graph_algm, a_nan_height_takes_no_y_of_an_end_riser) {
  expect_vertices({{infinity, -infinity}, {0, 1, 2, 3, 4}}, {0, 5, 5},
                  {not_a_number, not_a_number});
}

TEST(Step_size_graph_algm, of_both_zeros_as_extreme_of_a_riser_takes_the_first) {
  expect_vertices({{1}, {0.0, -0.0, 1, 2, 3}, {3}}, {0, 10, 10, 20}, {1, 1, 3, 3, 0.0});
  expect_vertices({{1}, {-0.0, 0.0, 1, 2, 3}, {3}}, {0, 10, 10, 20}, {1, 1, 3, 3, -0.0});
  expect_vertices({{-3}, {-3, -2, -1, 0.0, -0.0}}, {0, 5, 5}, {-3, -3, 0.0});
  expect_vertices({{-3}, {-3, -2, -1, -0.0, 0.0}}, {0, 5, 5}, {-3, -3, -0.0});
}

TEST(Step_size_graph_algm, does_not_hang_on_the_order_of_the_columns) {
  const Pixels set = joined({column(40, {2}), column(20, {10, 8, 6, 4, 2}), column(0, {10}),
                             column(30, {2}), column(10, {10})});
  expect_vertices(set, 9.5, {0, 20, 20, 40}, {10, 10, 2, 2, 2});
}

}  // namespace
}  // namespace chart_trace_test
