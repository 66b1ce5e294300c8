#include "extractors/points_curves_algm.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "test/cpp/pixels.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

Points_curves_algm traced(const Pixels& set, const std::string& method,
                          double cluster_fraction = 0.05, double pixel_step = 1) {
  return Points_curves_algm(set.x, set.y, pixel_step, method, cluster_fraction);
}

// All six results, of which the last two must be the points and then the curve.
void expect_result(const Points_curves_algm& result, const Pixels& points, const Pixels& curve) {
  EXPECT_TRUE(same_bits(result.x_get_points(), points.x)) << "x of the points";
  EXPECT_TRUE(same_bits(result.y_get_points(), points.y)) << "y of the points";
  EXPECT_TRUE(same_bits(result.x_get_curves(), curve.x)) << "x of the curve";
  EXPECT_TRUE(same_bits(result.y_get_curves(), curve.y)) << "y of the curve";
  const Pixels both = joined({points, curve});
  EXPECT_TRUE(same_bits(result.x_get_points_curves(), both.x)) << "x of points and curve";
  EXPECT_TRUE(same_bits(result.y_get_points_curves(), both.y)) << "y of points and curve";
}

// Ten pixels long and two thick, in raster order: a curve. Its first pixel has neighbours one pixel
// away, so at the valid fractions the radius is 1 and every pixel is a cluster of its own.
Pixels thick_line() { return block(10, 2); }

// Horizontal grouping lists the line row by row. The chain goes out on the upper row and comes back
// on the lower.
Pixels thick_line_by_rows() {
  return {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0},
          {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}};
}

// Fission grouping lists it column by column but for the first two: (0,0), (1,0), (0,1), (1,1),
// (2,0), (2,1), (3,0), ... The chain takes the earlier of equally near pixels, and so winds.
Pixels thick_line_by_fission() {
  return {{0, 1, 1, 0, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9},
          {0, 0, 1, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1}};
}

TEST(Points_curves_algm, of_nothing_has_six_empty_results) {
  expect_result(traced({}, "fission"), {}, {});
  expect_result(traced({}, "horizontal"), {}, {});
}

TEST(Points_curves_algm, solid_groups_alone_give_no_curve) {
  const Pixels markers = joined({block(3, 3), block(2, 2, 10, 20)});
  expect_result(traced(markers, "fission"), pixels({{1, 1}, {10.5, 20.5}}), {});
  expect_result(traced(markers, "horizontal"), pixels({{1, 1}, {10.5, 20.5}}), {});
}

TEST(Points_curves_algm, a_marker_is_reduced_to_the_mean_of_its_pixels) {
  // The middle of the extremes would be (1, 1).
  const Pixels marker = pixels({{0, 0}, {1, 0}, {2, 0}, {0, 1}, {0, 2}});
  expect_result(traced(marker, "fission"), pixels({{0.6, 0.6}}), {});
}

TEST(Points_curves_algm, points_come_in_group_order) {
  expect_result(traced(pixels({{50, 0}, {0, 0}, {20, 0}}), "fission"),
                pixels({{50, 0}, {0, 0}, {20, 0}}), {});
}

TEST(Points_curves_algm, curve_groups_alone_give_no_points) {
  expect_result(traced(thick_line(), "fission"), {}, thick_line_by_fission());
  expect_result(traced(thick_line(), "horizontal"), {}, thick_line_by_rows());
}

TEST(Points_curves_algm, every_method_but_exactly_fission_is_horizontal) {
  for (const char* method : {"horizontal", "Fission", "FISSION", "fission ", " fission", "fissio",
                             "fissions", "", "unknown"}) {
    SCOPED_TRACE(method);
    expect_result(traced(thick_line(), method), {}, thick_line_by_rows());
  }
  SCOPED_TRACE("fission and a NUL");
  expect_result(traced(thick_line(), std::string("fission\0", 8)), {}, thick_line_by_rows());
}

TEST(Points_curves_algm, the_fraction_is_also_the_code_that_thins_the_chain) {
  const auto curve = [](double fraction) { return traced(thick_line(), "horizontal", fraction); };
  expect_result(curve(0.051), {}, {{0, 2, 4, 6, 8, 9, 7, 5, 3, 1}, {0, 0, 0, 0, 0, 1, 1, 1, 1, 1}});
  expect_result(curve(0.052), {}, {{0, 4, 8, 7, 3}, {0, 0, 0, 1, 1}});
  expect_result(curve(0.053), {}, {{0, 8, 3}, {0, 0, 1}});
  expect_result(curve(0.054), {}, {{0, 8, 3}, {0, 0, 1}});
  expect_result(curve(0.055), {}, {{0, 3}, {0, 1}});
}

TEST(Points_curves_algm, a_fraction_of_no_valid_code_leaves_the_curve_empty) {
  const Pixels set = joined({block(3, 3, 50, 50), thick_line()});
  for (const double fraction : {0.06, 0.0, 1.0, -1.0, 7.0, not_a_number}) {
    SCOPED_TRACE(fraction);
    expect_result(traced(set, "fission", fraction), pixels({{51, 51}}), {});
  }
}

TEST(Points_curves_algm, lists_points_before_the_curve_whatever_came_first) {
  const Pixels set = joined({thick_line(), block(3, 3, 50, 50)});
  expect_result(traced(set, "horizontal"), pixels({{51, 51}}), thick_line_by_rows());
}

// Two uprights, two pixels wide and five high. Both together make one chain: up and down between
// the columns of the first, across to the nearest end of the second, along its left column and back
// along its right one.
TEST(Points_curves_algm, all_curve_pixels_make_one_chain) {
  Pixels uprights;
  for (int row = 0; row < 5; ++row) {
    uprights = joined({uprights, block(2, 1, 0, row), block(2, 1, 10, row)});
  }
  expect_result(traced(uprights, "horizontal"), {},
                {{0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 10, 10, 10, 10, 10, 11, 11, 11, 11, 11},
                 {0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4, 3, 2, 1, 0, 0, 1, 2, 3, 4}});
}

// 42 pixels: of the 41 distances three are taken, 1, 1 and the root of 2, so the radius is 1.138
// and a pixel gathers its direct neighbours. The first takes two, then left and right alternate.
TEST(Points_curves_algm, the_curve_is_a_chain_of_cluster_centroids) {
  Pixels want = pixels({{0.3333333333333333, 0.3333333333333333}});
  for (int row = 1; row < 20; ++row) {
    want.x.push_back(row % 2 == 1 ? 1 : 0);
    want.y.push_back(row + 0.5);
  }
  want = joined({want, pixels({{0, 20}})});
  expect_result(traced(block(2, 21), "horizontal"), {}, want);
}

// The first pixel stands twice, so the radius is 0 and every centroid is NaN.
TEST(Points_curves_algm, nan_centroids_are_passed_on) {
  const Pixels set = joined({pixels({{0, 0}}), block(2, 5)});
  const Doubles nans(11, not_a_number);
  expect_result(traced(set, "fission"), {}, {nans, nans});
}

TEST(Points_curves_algm, a_point_with_a_nan_coordinate_is_a_point) {
  expect_result(traced(pixels({{not_a_number, 5}, {1, 2}}), "fission"),
                pixels({{not_a_number, 5}, {1, 2}}), {});
}

// At step 2 these are a block of 3 by 3 and a line of 10 by 2, at step 1 single pixels.
TEST(Points_curves_algm, the_pixel_step_sets_both_neighbourhood_and_cell_size) {
  const Pixels set = joined({block(3, 3, 100, 100, 2), block(10, 2, 0, 0, 2)});
  Pixels curve = thick_line_by_rows();
  for (double& x : curve.x) x *= 2;
  for (double& y : curve.y) y *= 2;
  expect_result(traced(set, "horizontal", 0.05, 2), pixels({{102, 102}}), curve);
  expect_result(traced(set, "fission", 0.05, 1), set, {});
}

// A marker above a line: pixels row by row, which are packed, and points between whole numbers.
TEST(Points_curves_algm, groups_of_any_size_are_sorted_out_in_either_form) {
  for (const std::size_t size : {1U, 3U, 4U, 5U, 100U, 1000U}) {
    for (const double at : {0.0, 0.5}) {
      Pixels marker = block(50, 20, at, at);
      Pixels line = block(2, 500, 100 + at, 40 + at);
      for (Doubles* const values : {&marker.x, &marker.y, &line.x, &line.y}) values->resize(size);
      const Pixels both = joined({marker, line});
      for (const char* const method : {"fission", "horizontal"}) {
        for (const double step : {1.0, 0.3}) {
          const oracle::Points_curves want =
              oracle::points_curves(both.x, both.y, step, method, 0.05);
          const Points_curves_algm got = traced(both, method, 0.05, step);
          EXPECT_TRUE(same_points(got.x_get_points(), got.y_get_points(), want.points)) << size;
          EXPECT_TRUE(same_points(got.x_get_curves(), got.y_get_curves(), want.curves)) << size;
        }
      }
    }
  }
}

}  // namespace
}  // namespace chart_trace_test
