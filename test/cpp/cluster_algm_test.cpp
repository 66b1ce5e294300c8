#include "primitives/cluster_algm.hpp"

#include <gtest/gtest.h>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

void expect_centroids(const Cluster_algm& clusters, const Doubles& x, const Doubles& y) {
  EXPECT_TRUE(same_bits(clusters.arr_x_centroid(), x)) << "x";
  EXPECT_TRUE(same_bits(clusters.arr_y_centroid(), y)) << "y";
}

// The centroids' x of points on the x axis.
Doubles on_axis(const Doubles& x, double cluster_fraction) {
  return Cluster_algm(x, Doubles(x.size(), 0.0), cluster_fraction).arr_x_centroid();
}

TEST(Cluster_algm, of_nothing_has_no_centroids) {
  expect_centroids(Cluster_algm({}, {}, 0.5), {}, {});
}

TEST(Cluster_algm, of_one_point_is_a_nan_pair) {
  expect_centroids(Cluster_algm({3}, {4}, 0.5), {not_a_number}, {not_a_number});
}

// Distances 1, 10, 11; two of them are taken; the radius is 5.5.
TEST(Cluster_algm, gathers_what_is_nearer_to_the_seed_than_the_radius) {
  expect_centroids(Cluster_algm({0, 1, 10, 11}, {0, 0, 0, 0}, 0.34), {0.5, 10.5}, {0, 0});
}

TEST(Cluster_algm, measures_in_both_directions) {
  // Distances 5 and 50, both taken: radius 27.5.
  expect_centroids(Cluster_algm({0, 3, 30}, {0, 4, 40}, 1), {1.5, 30}, {2, 40});
}

TEST(Cluster_algm, an_isolated_seed_is_its_own_centroid) {
  // Distances 1, 2 and 50, the first two taken: radius 1.5.
  EXPECT_TRUE(same_bits(on_axis({0, 1, 2, 50}, 0.6), {0.5, 2, 50}));
}

TEST(Cluster_algm, a_point_exactly_at_the_radius_is_not_gathered) {
  // Distances 1 and 100, one taken: radius 1.
  EXPECT_TRUE(same_bits(on_axis({0, 1, 100}, 0.5), {0, 1, 100}));
}

TEST(Cluster_algm, gathers_around_the_seed_and_not_along_a_chain) {
  // Distances 2, 4, 6, 8, three taken: radius 4. Neither 4 nor 6 is strictly nearer to 0.
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4, 6, 8}, 0.75), {1, 5, 8}));
}

TEST(Cluster_algm, orders_centroids_by_their_seeds) {
  // Distances 3, 4, 9, 9, two taken: radius 3.5.
  expect_centroids(Cluster_algm({0, 9, 3, 4, 9}, {0, 0, 0, 0, 0}, 0.5), {1.5, 9, 4}, {0, 0, 0});
}

TEST(Cluster_algm, adds_up_gathered_points_in_input_order) {
  // Distances 1e16, 1e16, 2e16: a radius between the two leaves out -1e16 alone. From the front,
  // 1e16 + 1 + 1 rounds to 1e16; from the back it is 1e16 + 2.
  expect_centroids(Cluster_algm({1e16, 1, 1, -1e16}, {0, 0, 0, 0}, 1), {3333333333333333.5, -1e16},
                   {0, 0});
}

TEST(Cluster_algm, a_radius_of_zero_gathers_nothing_not_even_the_seed) {
  // Distances 0 and 5, one taken: radius 0.
  expect_centroids(Cluster_algm({0, 0, 5}, {0, 0, 0}, 0.5), Doubles(3, not_a_number),
                   Doubles(3, not_a_number));
}

TEST(Cluster_algm, all_points_remain_when_the_radius_is_zero) {
  const Cluster_algm clusters({0, 0, 5}, {0, 0, 0}, 0.5);
  EXPECT_TRUE(same_bits(clusters.cluster_radius(3), 0.0));
}

TEST(Cluster_algm, a_fraction_that_takes_no_distance_gives_a_nan_pair_for_every_point) {
  for (const double fraction : {0.0, -0.0, -0.5, -1e300, not_a_number, -infinity}) {
    SCOPED_TRACE(fraction);
    expect_centroids(Cluster_algm({0, 1, 2}, {0, 0, 0}, fraction), Doubles(3, not_a_number),
                     Doubles(3, not_a_number));
  }
}

TEST(Cluster_algm, the_number_of_distances_taken_is_rounded_up) {
  // Distances 1, 3, 8, 20: 4 * 0.5 takes two, radius 2; 4 * 0.51 takes three, radius 4.
  EXPECT_TRUE(same_bits(on_axis({0, 1, 3, 8, 20}, 0.5), {0.5, 3, 8, 20}));
  EXPECT_TRUE(same_bits(on_axis({0, 1, 3, 8, 20}, 0.51), {1.3333333333333333, 8, 20}));
}

TEST(Cluster_algm, the_least_positive_fraction_takes_one_distance) {
  EXPECT_TRUE(same_bits(on_axis({0, 2, 3}, 5e-324), {0, 2.5}));
  EXPECT_TRUE(same_bits(on_axis({0, 2, 3.5, 1}, 5e-324), {0, 2, 3.5, 1}));
}

TEST(Cluster_algm, takes_the_smallest_distances_and_not_the_first) {
  // Distances 10 and 1, the smaller is taken: radius 1.
  EXPECT_TRUE(same_bits(on_axis({0, 10, 1}, 0.5), {0, 10, 1}));
}

TEST(Cluster_algm, computes_the_radius_once_from_all_points) {
  // Distances 1, 3, 100, 101.5, two taken: radius 2. Computed anew from 100 and 101.5 alone it
  // would be 1.5, and they would stay apart.
  EXPECT_TRUE(same_bits(on_axis({0, 1, 3, 100, 101.5}, 0.5), {0.5, 3, 100.75}));
}

TEST(Cluster_algm, a_fraction_above_one_takes_all_distances) {
  // Distances 2 and 4: radius 3.
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, 1), {1, 4}));
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, 1.0000000000000002), {1, 4}));
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, 7), {1, 4}));
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, 1e9), {1, 4}));
}

TEST(Cluster_algm, a_fraction_whose_product_leaves_the_32_bit_range_takes_no_distance) {
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, 2e9), Doubles(3, not_a_number)));
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, 1e300), Doubles(3, not_a_number)));
  EXPECT_TRUE(same_bits(on_axis({0, 2, 4}, infinity), Doubles(3, not_a_number)));
}

TEST(Cluster_algm, a_nan_distance_sorts_after_all_numbers) {
  // Distances NaN, 1, 3; two are taken: 1 and 3, radius 2. The seed after 0 and 1 is the NaN point,
  // which gathers nothing, so the rounds left give NaN pairs up to the number of points.
  expect_centroids(Cluster_algm({0, not_a_number, 1, 3}, {0, 0, 0, 0}, 0.6),
                   {0.5, not_a_number, not_a_number, not_a_number},
                   {0, not_a_number, not_a_number, not_a_number});
}

TEST(Cluster_algm, several_nan_distances_sort_after_all_numbers) {
  // Distances NaN, 4, NaN, 2, NaN, 6; three are taken: 2, 4 and 6, radius 4.
  const Doubles x = {0, not_a_number, 4, 0, 2, not_a_number, 6};
  const Doubles y = {0, 0, 0, not_a_number, 0, not_a_number, 0};
  Doubles want(7, not_a_number);
  want[0] = 1;
  EXPECT_TRUE(same_bits(Cluster_algm(x, y, 0.5).arr_x_centroid(), want));
}

TEST(Cluster_algm, a_nan_point_at_the_end_costs_only_the_last_rounds) {
  // Distances 1, 3, NaN, two taken: radius 2.
  expect_centroids(Cluster_algm({0, 1, 3, not_a_number}, {7, 7, 7, 7}, 0.6),
                   {0.5, 3, not_a_number, not_a_number}, {7, 7, not_a_number, not_a_number});
}

TEST(Cluster_algm, a_nan_among_the_distances_taken_makes_all_centroids_nan) {
  EXPECT_TRUE(same_bits(on_axis({0, not_a_number, 1}, 1), Doubles(3, not_a_number)));
}

TEST(Cluster_algm, a_nan_first_point_makes_all_centroids_nan) {
  expect_centroids(Cluster_algm({not_a_number, 1, 2}, {0, 0, 0}, 0.5), Doubles(3, not_a_number),
                   Doubles(3, not_a_number));
}

TEST(Cluster_algm, an_infinite_radius_gathers_every_finite_point) {
  // The infinite point is not strictly nearer than infinity, and its distance to itself is NaN.
  expect_centroids(Cluster_algm({0, 1, infinity}, {0, 0, 0}, 1), {0.5, not_a_number, not_a_number},
                   {0, not_a_number, not_a_number});
}

TEST(Cluster_algm, radius_looks_at_the_first_points_only) {
  // The radius over all three is 0, so all of them remain to be asked about.
  const Cluster_algm clusters({0, 0, 5}, {0, 0, 0}, 1.5e-9);
  EXPECT_TRUE(same_bits(clusters.cluster_radius(0), not_a_number));
  EXPECT_TRUE(same_bits(clusters.cluster_radius(1), not_a_number));
  EXPECT_TRUE(same_bits(clusters.cluster_radius(2), 0.0));
  EXPECT_TRUE(same_bits(clusters.cluster_radius(3), 0.0));
}

TEST(Cluster_algm, accessors_return_copies) {
  const Cluster_algm clusters({0, 1, 10, 11}, {0, 0, 0, 0}, 0.34);
  clusters.arr_x_centroid()[0] = 99;
  clusters.arr_y_centroid()[0] = 99;
  expect_centroids(clusters, {0.5, 10.5}, {0, 0});
}

}  // namespace
}  // namespace chart_trace_test
