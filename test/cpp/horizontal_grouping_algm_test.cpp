#include "grouping/horizontal_grouping_algm.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

void expect_groups(const Pixels& set, double pixel_step, const std::vector<Pixels>& groups) {
  Groups_of_doubles x;
  Groups_of_doubles y;
  for (const Pixels& group : groups) {
    x.push_back(group.x);
    y.push_back(group.y);
  }
  const Horizontal_grouping_algm grouping(set.x, set.y, pixel_step);
  EXPECT_TRUE(same_bits(values_of(grouping.x_groups_func()), x)) << "x";
  EXPECT_TRUE(same_bits(values_of(grouping.y_groups_func()), y)) << "y";
}

// The run from x `first` to `last`, one pixel apart, on the row `y`.
Pixels run(int first, int last, double y) { return block(last - first + 1, 1, first, y); }

Pixels dot(double x, double y) { return pixels({{x, y}}); }

TEST(Horizontal_grouping_algm, of_nothing_has_no_groups) { expect_groups({}, 1, {}); }

TEST(Horizontal_grouping_algm, of_one_point_is_one_group) {
  expect_groups(dot(3, 4), 1, {dot(3, 4)});
}

TEST(Horizontal_grouping_algm, a_row_from_left_to_right_is_one_group) {
  expect_groups(run(0, 9, 3), 1, {run(0, 9, 3)});
  expect_groups(block(10, 1, 0.25, 3, 0.5), 0.5, {block(10, 1, 0.25, 3, 0.5)});
}

// Each reference run takes its left neighbour; the next run is too far from the reference run, and
// the scan reaches the end of the list with the run taken still in the queue.
TEST(Horizontal_grouping_algm, a_row_from_right_to_left_falls_into_pairs) {
  expect_groups(pixels({{10, 0}, {9, 0}, {8, 0}, {7, 0}}), 1,
                {pixels({{10, 0}, {9, 0}}), pixels({{8, 0}, {7, 0}})});
  expect_groups(pixels({{5, 0}, {4, 0}, {3, 0}, {2, 0}, {1, 0}}), 1,
                {pixels({{5, 0}, {4, 0}}), pixels({{3, 0}, {2, 0}}), dot(1, 0)});
}

TEST(Horizontal_grouping_algm, runs_of_one_row_with_a_missing_pixel_between_stay_apart) {
  expect_groups(joined({run(0, 1, 0), run(3, 4, 0)}), 1, {run(0, 1, 0), run(3, 4, 0)});
}

TEST(Horizontal_grouping_algm, runs_of_one_row_with_less_than_a_step_between_join) {
  expect_groups(pixels({{0, 0}, {1, 0}, {1.5, 0}}), 1, {pixels({{0, 0}, {1, 0}, {1.5, 0}})});
}

TEST(Horizontal_grouping_algm, duplicates_are_runs_that_join) {
  expect_groups(pixels({{0, 0}, {0, 0}}), 1, {pixels({{0, 0}, {0, 0}})});
}

TEST(Horizontal_grouping_algm, runs_that_meet_at_a_corner_join) {
  expect_groups(joined({run(0, 2, 0), run(3, 5, 1)}), 1, {joined({run(0, 2, 0), run(3, 5, 1)})});
  expect_groups(joined({run(3, 5, 0), run(0, 2, 1)}), 1, {joined({run(3, 5, 0), run(0, 2, 1)})});
}

TEST(Horizontal_grouping_algm, runs_of_neighbouring_rows_a_pixel_apart_stay_apart) {
  expect_groups(joined({run(0, 2, 0), run(4, 5, 1)}), 1, {run(0, 2, 0), run(4, 5, 1)});
}

TEST(Horizontal_grouping_algm, rows_exactly_one_and_a_half_steps_apart_never_join) {
  expect_groups(pixels({{0, 0}, {0, 1.5}}), 1, {dot(0, 0), dot(0, 1.5)});
  expect_groups(pixels({{0, 1.5}, {0, 0}}), 1, {dot(0, 1.5), dot(0, 0)});
  expect_groups(pixels({{0, 0}, {0, 3}}), 2, {dot(0, 0), dot(0, 3)});
}

TEST(Horizontal_grouping_algm, rows_one_bit_nearer_join) {
  expect_groups(pixels({{0, 0}, {0, 1.4999999999999998}}), 1,
                {pixels({{0, 0}, {0, 1.4999999999999998}})});
  expect_groups(pixels({{0, 1.4999999999999998}, {0, 0}}), 1,
                {pixels({{0, 1.4999999999999998}, {0, 0}})});
}

TEST(Horizontal_grouping_algm, a_run_exactly_one_and_a_half_steps_below_does_not_end_the_scan) {
  expect_groups(pixels({{0, 0}, {0, 1.5}, {0, 1}}), 1, {pixels({{0, 0}, {0, 1}}), dot(0, 1.5)});
}

TEST(Horizontal_grouping_algm, a_run_farther_below_ends_the_scan) {
  expect_groups(pixels({{0, 0}, {0, 1.5000000000000002}, {0, 1}}), 1,
                {dot(0, 0), pixels({{0, 1.5000000000000002}, {0, 1}})});
}

TEST(Horizontal_grouping_algm, a_run_above_joins) {
  expect_groups(pixels({{0, 5}, {0, 4}}), 1, {pixels({{0, 5}, {0, 4}})});
}

TEST(Horizontal_grouping_algm, a_run_far_above_is_passed_over) {
  expect_groups(pixels({{0, 5}, {0, 0}, {0, 6}}), 1, {pixels({{0, 5}, {0, 6}}), dot(0, 0)});
}

TEST(Horizontal_grouping_algm, rows_must_be_equal_to_the_last_bit_to_make_a_run) {
  // Three runs: the first takes the second but cannot reach the third. As one run they would be
  // one group.
  expect_groups(pixels({{0, 1}, {1, 1.0000000000000002}, {2, 1}}), 1,
                {pixels({{0, 1}, {1, 1.0000000000000002}}), dot(2, 1)});
}

TEST(Horizontal_grouping_algm, zero_and_minus_zero_are_one_row) {
  expect_groups(pixels({{0, 0.0}, {1, -0.0}, {2, 0.0}}), 1,
                {pixels({{0, 0.0}, {1, -0.0}, {2, 0.0}})});
}

// 0.1 + 0.2 is 0.30000000000000004, but 0.30000000000000004 - 0.2 is not 0.1; and that plus 0.2 is
// 0.5, but 0.5 - 0.2 is 0.3. So there are three runs. As floats the first two are more than 0.2
// apart, the last two less.
TEST(Horizontal_grouping_algm, a_neighbour_is_found_by_subtracting_the_step_from_the_next_point) {
  expect_groups(pixels({{0.1, 0}, {0.30000000000000004, 0}, {0.5, 0}}), 0.2,
                {dot(0.1, 0), pixels({{0.30000000000000004, 0}, {0.5, 0}})});
}

TEST(Horizontal_grouping_algm, a_staircase_is_one_group) {
  const Pixels stairs = joined({run(0, 2, 0), run(2, 4, 1), run(4, 6, 2), run(6, 8, 3)});
  expect_groups(stairs, 1, {stairs});
}

TEST(Horizontal_grouping_algm, a_filled_block_is_one_group_in_raster_order) {
  expect_groups(block(4, 5), 1, {block(4, 5)});
}

// The bar of the U joins its left arm; it is the last row, so it is never searched from, and the
// right arm is left over.
TEST(Horizontal_grouping_algm, runs_waiting_at_the_end_of_the_list_are_never_searched_from) {
  expect_groups(joined({dot(0, 0), dot(4, 0), run(0, 4, 1)}), 1,
                {joined({dot(0, 0), run(0, 4, 1)}), dot(4, 0)});
}

TEST(Horizontal_grouping_algm, waiting_runs_are_searched_from_while_a_run_farther_below_is_left) {
  expect_groups(joined({dot(0, 0), dot(4, 0), run(0, 4, 1), dot(0, 5)}), 1,
                {joined({dot(0, 0), run(0, 4, 1), dot(4, 0)}), dot(0, 5)});
}

// (1,2) lies too far below the first run and below (2.5,0), which waits first, so the scan comes to
// the end of the list before (1,1), which waits second and touches it, gets its turn.
TEST(Horizontal_grouping_algm, the_first_run_after_a_change_of_reference_does_not_move_it_again) {
  const Pixels joined_runs = joined({run(0, 2, 0), dot(2.5, 0), dot(1, 1)});
  expect_groups(joined({joined_runs, dot(1, 2)}), 1, {joined_runs, dot(1, 2)});
  // With one more run far below, the second one gets its turn.
  expect_groups(joined({joined_runs, dot(1, 2), dot(50, 9)}), 1,
                {joined({joined_runs, dot(1, 2)}), dot(50, 9)});
}

TEST(Horizontal_grouping_algm, the_run_that_moves_up_into_a_free_place_is_examined_next) {
  const Pixels set = joined({run(0, 9, 0), dot(0, 1), dot(2, 1), dot(4, 1)});
  expect_groups(set, 1, {set});
}

// (0,1) and (8,1) wait in this order. The run under (8,1) stands earlier in the list than the one
// under (0,1), but is reached later.
TEST(Horizontal_grouping_algm, waiting_runs_are_searched_from_first_in_first_out) {
  const Pixels top = joined({run(0, 8, 0), dot(0, 1), dot(8, 1)});
  expect_groups(joined({top, dot(8, 2), dot(0, 2), dot(0, 9)}), 1,
                {joined({top, dot(0, 2), dot(8, 2)}), dot(0, 9)});
}

TEST(Horizontal_grouping_algm, lists_the_points_of_a_group_run_by_run_in_order_of_joining) {
  // Joining goes by the list and not by the row.
  expect_groups(joined({run(0, 3, 5), run(2, 4, 6), run(1, 2, 4)}), 1,
                {joined({run(0, 3, 5), run(2, 4, 6), run(1, 2, 4)})});
}

TEST(Horizontal_grouping_algm, orders_groups_by_their_first_run) {
  expect_groups(
      joined({run(8, 9, 0), run(0, 1, 0), run(4, 5, 0), run(0, 1, 1), run(8, 9, 1)}), 1,
      {joined({run(8, 9, 0), run(8, 9, 1)}), joined({run(0, 1, 0), run(0, 1, 1)}), run(4, 5, 0)});
}

TEST(Horizontal_grouping_algm, a_nan_x_breaks_a_run_and_joins_nothing) {
  expect_groups(pixels({{0, 0}, {not_a_number, 0}, {1, 0}}), 1,
                {pixels({{0, 0}, {1, 0}}), dot(not_a_number, 0)});
  expect_groups(pixels({{not_a_number, 0}, {0, 0}, {1, 0}}), 1,
                {dot(not_a_number, 0), run(0, 1, 0)});
}

TEST(Horizontal_grouping_algm, a_run_on_a_nan_row_joins_nothing_and_does_not_end_the_scan) {
  expect_groups(pixels({{0, 0}, {0, not_a_number}, {1, 1}}), 1,
                {pixels({{0, 0}, {1, 1}}), dot(0, not_a_number)});
  expect_groups(pixels({{0, not_a_number}, {0, 0}, {0, 1}}), 1,
                {dot(0, not_a_number), pixels({{0, 0}, {0, 1}})});
}

TEST(Horizontal_grouping_algm, with_a_step_of_zero_a_run_is_a_string_of_duplicates) {
  expect_groups(pixels({{0, 0}, {0, 0}, {1, 0}, {0, 0}}), 0,
                {pixels({{0, 0}, {0, 0}}), dot(1, 0), dot(0, 0)});
}

TEST(Horizontal_grouping_algm, with_a_negative_step_runs_go_leftwards_and_never_join) {
  expect_groups(pixels({{5, 0}, {4, 0}, {3, 0}, {4, 0}, {5, 0}}), -1,
                {pixels({{5, 0}, {4, 0}, {3, 0}}), dot(4, 0), dot(5, 0)});
}

TEST(Horizontal_grouping_algm, with_a_nan_step_every_point_is_a_group) {
  expect_groups(pixels({{0, 0}, {0, 0}, {1, 0}}), not_a_number, {dot(0, 0), dot(0, 0), dot(1, 0)});
}

TEST(Horizontal_grouping_algm, with_an_infinite_step_all_points_but_nan_are_one_group) {
  expect_groups(pixels({{0, 0}, {not_a_number, 0}, {900, 70}, {-5, -8}}), infinity,
                {pixels({{0, 0}, {900, 70}, {-5, -8}}), dot(not_a_number, 0)});
}

}  // namespace
}  // namespace chart_trace_test
