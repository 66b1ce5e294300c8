#include "grouping/fission_algm.hpp"

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
  const Fission_algm fission(set.x, set.y, pixel_step);
  EXPECT_TRUE(same_bits(values_of(fission.x_groups_func()), x)) << "x";
  EXPECT_TRUE(same_bits(values_of(fission.y_groups_func()), y)) << "y";
}

// The groups of points on the x axis, by their x.
Groups_of_doubles on_axis(const Doubles& x, double pixel_step) {
  return values_of(Fission_algm(x, Doubles(x.size(), 0.0), pixel_step).x_groups_func());
}

TEST(Fission_algm, of_nothing_has_no_groups) { expect_groups({}, 1, {}); }

TEST(Fission_algm, of_one_point_is_one_group) {
  expect_groups(pixels({{3, 4}}), 1, {pixels({{3, 4}})});
}

TEST(Fission_algm, diagonal_neighbours_are_one_group) {
  expect_groups(pixels({{0, 0}, {1, 1}}), 1, {pixels({{0, 0}, {1, 1}})});
  expect_groups(pixels({{0, 0}, {-2, 2}}), 2, {pixels({{0, 0}, {-2, 2}})});
}

TEST(Fission_algm, points_two_steps_apart_are_two_groups) {
  expect_groups(pixels({{0, 0}, {2, 0}}), 1, {pixels({{0, 0}}), pixels({{2, 0}})});
  expect_groups(pixels({{0, 0}, {0, 2}}), 1, {pixels({{0, 0}}), pixels({{0, 2}})});
}

TEST(Fission_algm, a_point_exactly_one_and_a_half_steps_away_belongs_to_the_group) {
  expect_groups(pixels({{0, 0}, {1.5, 1.5}}), 1, {pixels({{0, 0}, {1.5, 1.5}})});
  expect_groups(pixels({{0, 0}, {-1.5, 1.5}}), 1, {pixels({{0, 0}, {-1.5, 1.5}})});
  expect_groups(pixels({{0, 0}, {3, -3}}), 2, {pixels({{0, 0}, {3, -3}})});
  // The same for a point that the seed does not reach.
  expect_groups(pixels({{0, 0}, {1, 0}, {2.5, 1.5}}), 1, {pixels({{0, 0}, {1, 0}, {2.5, 1.5}})});
}

TEST(Fission_algm, a_point_one_bit_farther_does_not) {
  expect_groups(pixels({{0, 0}, {1.5000000000000002, 0}}), 1,
                {pixels({{0, 0}}), pixels({{1.5000000000000002, 0}})});
  expect_groups(pixels({{0, 0}, {0, -1.5000000000000002}}), 1,
                {pixels({{0, 0}}), pixels({{0, -1.5000000000000002}})});
  expect_groups(pixels({{0, 0}, {1, 0}, {2.5000000000000004, 0}}), 1,
                {pixels({{0, 0}, {1, 0}}), pixels({{2.5000000000000004, 0}})});
}

TEST(Fission_algm, compares_with_rounded_bounds_around_every_point) {
  // Doubles beyond 2^53 are 2 apart: a bound 1.5 away rounds to the next double. Both the seed and
  // the point found reach theirs.
  EXPECT_TRUE(same_bits(on_axis({1e16, 1e16 + 4, 1e16 + 2, 1e16 - 2}, 1),
                        {{1e16, 1e16 + 2, 1e16 - 2, 1e16 + 4}}));
}

TEST(Fission_algm, orders_groups_by_their_first_point) {
  expect_groups(pixels({{9, 9}, {0, 0}, {5, 5}, {1, 0}, {9, 8}, {5, 6}}), 1,
                {pixels({{9, 9}, {9, 8}}), pixels({{0, 0}, {1, 0}}), pixels({{5, 5}, {5, 6}})});
}

TEST(Fission_algm, lists_the_seed_then_its_neighbours_in_input_order) {
  EXPECT_TRUE(same_bits(on_axis({0, 1, 9, -1, 1.25, 0.5}, 1), {{0, 1, -1, 1.25, 0.5}, {9}}));
}

TEST(Fission_algm, grows_breadth_first_in_the_order_of_the_points_found) {
  // 1 is found before -1, so 2 comes before -2, which stands earlier in the input.
  EXPECT_TRUE(same_bits(on_axis({0, -2, 2, 1, -1}, 1), {{0, 1, -1, 2, -2}}));
  // Both arms grow in turn, one step a pass.
  EXPECT_TRUE(same_bits(on_axis({0, 3, 2, 1, -1, -2, -3}, 1), {{0, 1, -1, 2, -2, 3, -3}}));
}

TEST(Fission_algm, the_neighbours_that_one_point_finds_keep_input_order) {
  // An L: (0,1) finds both (1,2) and (0,2), then (1,2) finds (2,2).
  const Pixels set = pixels({{0, 0}, {2, 2}, {1, 2}, {0, 2}, {0, 1}});
  expect_groups(set, 1, {pixels({{0, 0}, {0, 1}, {1, 2}, {0, 2}, {2, 2}})});
}

TEST(Fission_algm, a_point_within_reach_of_several_is_found_by_the_first_of_them) {
  // (2,1) is next to both (1,0) and (1,1), and (1,2) to (1,1) alone.
  const Pixels set = pixels({{0, 0}, {1, 1}, {1, 2}, {2, 1}, {1, 0}});
  // From (0,0): (1,1), (1,0). Then (1,1) finds (1,2) and (2,1).
  expect_groups(set, 1, {pixels({{0, 0}, {1, 1}, {1, 0}, {1, 2}, {2, 1}})});
}

TEST(Fission_algm, a_spiral_is_one_group_in_the_order_of_its_walk) {
  const Pixels walk = pixels({{0, 0},
                              {1, 0},
                              {2, 0},
                              {3, 0},
                              {4, 0},
                              {4, 1},
                              {4, 2},
                              {4, 3},
                              {4, 4},
                              {3, 4},
                              {2, 4},
                              {1, 4},
                              {0, 4},
                              {0, 3},
                              {0, 2},
                              {1, 2},
                              {2, 2}});
  expect_groups(walk, 1, {walk});
}

TEST(Fission_algm, the_points_left_keep_input_order_while_groups_grow) {
  // The second group's points stand between those of the first, which grows from 0 to 3.
  EXPECT_TRUE(
      same_bits(on_axis({0, 11, 3, 10, 2, 12, 1, 10.5}, 1), {{0, 1, 2, 3}, {11, 10, 12, 10.5}}));
}

TEST(Fission_algm, duplicates_are_neighbours) {
  expect_groups(pixels({{1, 1}, {7, 7}, {1, 1}, {7, 7}, {1, 1}}), 1,
                {pixels({{1, 1}, {1, 1}, {1, 1}}), pixels({{7, 7}, {7, 7}})});
}

TEST(Fission_algm, a_point_with_a_nan_coordinate_is_a_group_of_its_own) {
  expect_groups(
      pixels({{0, 0}, {not_a_number, 0}, {1, 0}, {0, not_a_number}, {2, 0}}), 1,
      {pixels({{0, 0}, {1, 0}, {2, 0}}), pixels({{not_a_number, 0}}), pixels({{0, not_a_number}})});
}

TEST(Fission_algm, a_nan_point_that_stands_first_is_the_first_group) {
  expect_groups(
      pixels({{not_a_number, 0}, {0, 0}, {not_a_number, 0}, {1, 0}}), 1,
      {pixels({{not_a_number, 0}}), pixels({{0, 0}, {1, 0}}), pixels({{not_a_number, 0}})});
}

TEST(Fission_algm, with_a_step_of_zero_only_duplicates_are_neighbours) {
  EXPECT_TRUE(same_bits(on_axis({0, 1, 0, -0.0, 1}, 0), {{0, 0, -0.0}, {1, 1}}));
}

TEST(Fission_algm, with_a_negative_or_nan_step_every_point_is_a_group) {
  EXPECT_TRUE(same_bits(on_axis({0, 0, 1}, -1), {{0}, {0}, {1}}));
  EXPECT_TRUE(same_bits(on_axis({0, 0, 1}, not_a_number), {{0}, {0}, {1}}));
}

TEST(Fission_algm, with_an_infinite_step_all_points_but_nan_are_one_group) {
  EXPECT_TRUE(
      same_bits(on_axis({0, 1e300, not_a_number, -5}, infinity), {{0, 1e300, -5}, {not_a_number}}));
}

TEST(Fission_algm, infinite_points_are_neighbours_of_their_like) {
  EXPECT_TRUE(same_bits(on_axis({infinity, 0, infinity, -infinity}, 1),
                        {{infinity, infinity}, {0}, {-infinity}}));
}

TEST(Fission_algm, keeps_the_bits_of_the_points) {
  expect_groups(pixels({{-0.0, 0.0}, {0.1, -0.0}}), 1, {pixels({{-0.0, 0.0}, {0.1, -0.0}})});
}

TEST(Fission_algm, groups_are_the_connected_components) {
  // A checkerboard hangs together at its corners; two columns of it are cut off.
  const Pixels set = pixels({{0, 0}, {2, 0}, {5, 0}, {1, 1}, {3, 1}, {6, 1}, {0, 2}, {5, 2}});
  expect_groups(
      set, 1, {pixels({{0, 0}, {1, 1}, {2, 0}, {0, 2}, {3, 1}}), pixels({{5, 0}, {6, 1}, {5, 2}})});
}

}  // namespace
}  // namespace chart_trace_test
