#include "dispatch/autotrace.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

// One picture for all modes, a U and a square of four pixels, in raster order:
//
//   #   #     ##
//   #####     ##
Pixels picture() {
  return joined(
      {pixels({{0, 0}, {4, 0}}), block(2, 1, 10, 0), block(5, 1, 0, 1), block(2, 1, 10, 1)});
}

struct Traced {
  std::string mode;
  Doubles x;
  Doubles y;
};

// What each mode makes of the picture, with a pixel step of 1 and a cluster fraction of 0.05.
// Fission sees the U as one group. Horizontal grouping leaves the right arm over, since the bottom
// row is the last one, and a single pixel is a marker. In the histogram the gap of empty
// compartments does not end a bar. In the step graph the empty compartments have NaN centres.
std::vector<Traced> all_modes() {
  return {
      {"point_density", picture().x, picture().y},
      {"points_curves-fission", {10.5, 0, 0, 1, 2, 3, 4, 4}, {0.5, 0, 1, 1, 1, 1, 1, 0}},
      {"points_curves-horizontal", {4, 10.5, 0, 0, 1, 2, 3, 4}, {0, 0.5, 0, 1, 1, 1, 1, 1}},
      {"points-horizontal", {4, 10.5}, {0, 0.5}},
      {"points-fission", {10.5}, {0.5}},
      {"curves-horizontal", {0, 0, 1, 2, 3, 4}, {0, 1, 1, 1, 1, 1}},
      {"curves-fission", {0, 0, 1, 2, 3, 4, 4}, {0, 1, 1, 1, 1, 1, 0}},
      {"bar_horizontal-fission", {4, 11}, {0.7142857142857143, 0.5}},
      {"bar_vertical-fission", {2, 10.5}, {0, 0}},
      {"bar_horizontal-horizontal", {4, 4, 11}, {0.8333333333333334, 0, 0.5}},
      {"bar_vertical-horizontal", {1.6666666666666667, 4, 10.5}, {0, 0, 0}},
      {"histogram", {0, 2.5, 7.5}, {0, 1, 0}},
      {"step_size_graph", {1, not_a_number}, {0, 1, 0}},
  };
}

void expect_result(const Autotrace& traced, const Doubles& x, const Doubles& y) {
  EXPECT_TRUE(same_bits(traced.x_autotrace_func(), x)) << "x";
  EXPECT_TRUE(same_bits(traced.y_autotrace_func(), y)) << "y";
}

void expect_nothing_for(const std::string& mode) {
  SCOPED_TRACE(mode);
  expect_result(Autotrace(picture().x, picture().y, 1, mode, 0.05), {}, {});
}

TEST(Autotrace, each_of_the_thirteen_modes_runs_its_extractor) {
  ASSERT_EQ(all_modes().size(), 13U);
  for (const Traced& want : all_modes()) {
    SCOPED_TRACE(want.mode);
    expect_result(Autotrace(picture().x, picture().y, 1, want.mode, 0.05), want.x, want.y);
  }
}

TEST(Autotrace, every_mode_of_nothing_is_empty) {
  for (const Traced& want : all_modes()) {
    SCOPED_TRACE(want.mode);
    expect_result(Autotrace({}, {}, 1, want.mode, 0.05), {}, {});
  }
}

// A prefix, a piece, another case, a character more: none of them is a mode.
TEST(Autotrace, a_mode_that_does_not_match_exactly_gives_empty_results) {
  for (const Traced& mode : all_modes()) {
    expect_nothing_for(mode.mode + " ");
    expect_nothing_for(" " + mode.mode);
    expect_nothing_for(mode.mode + std::string(1, '\0'));
    expect_nothing_for(mode.mode.substr(0, mode.mode.size() - 1));
  }
  for (const char* mode :
       {"", "undefined", "Histogram", "HISTOGRAM", "points", "curves", "points_curves", "bar",
        "bar_vertical", "bar_horizontal", "fission", "points-Fission", "points_fission",
        "step_size", "histogram-fission", "point_density-fission", "curves_points-fission"}) {
    expect_nothing_for(mode);
  }
}

TEST(Autotrace, the_pixel_step_reaches_every_extractor) {
  Pixels twice = picture();
  for (double& x : twice.x) x *= 2;
  for (double& y : twice.y) y *= 2;
  for (Traced want : all_modes()) {
    SCOPED_TRACE(want.mode);
    for (double& x : want.x) x *= 2;
    for (double& y : want.y) y *= 2;
    expect_result(Autotrace(twice.x, twice.y, 2, want.mode, 0.05), want.x, want.y);
  }
}

TEST(Autotrace, the_pixel_step_means_nothing_to_point_density) {
  for (const double step : {0.0, -1.0, 100.0, not_a_number}) {
    SCOPED_TRACE(step);
    expect_result(Autotrace(picture().x, picture().y, step, "point_density", 0.05), picture().x,
                  picture().y);
  }
}

TEST(Autotrace, the_cluster_fraction_means_nothing_to_bars_histograms_and_steps) {
  for (const Traced& want : all_modes()) {
    if (want.mode.find("point") == 0 || want.mode.find("curves") == 0) continue;
    SCOPED_TRACE(want.mode);
    for (const double fraction : {0.0, 0.06, 1.0, not_a_number}) {
      expect_result(Autotrace(picture().x, picture().y, 1, want.mode, fraction), want.x, want.y);
    }
  }
}

// Of the distances from (0,0), 1 and the root of 2 are taken: the radius is 1.21.
TEST(Autotrace, the_cluster_fraction_reaches_point_density) {
  expect_result(Autotrace(picture().x, picture().y, 1, "point_density", 0.2),
                {0, 4, 10.333333333333334, 1.5, 3, 11}, {0.5, 0.5, 0.3333333333333333, 1, 1, 1});
}

TEST(Autotrace, the_cluster_fraction_reaches_points_and_curves) {
  // Every second point of the chain.
  expect_result(Autotrace(picture().x, picture().y, 1, "curves-fission", 0.051), {0, 1, 3, 4},
                {0, 1, 1, 0});
  expect_result(Autotrace(picture().x, picture().y, 1, "points_curves-horizontal", 0.051),
                {4, 10.5, 0, 1, 3}, {0, 0.5, 0, 1, 1});
  // No valid code: no curve, the same points.
  expect_result(Autotrace(picture().x, picture().y, 1, "curves-horizontal", 0.06), {}, {});
  expect_result(Autotrace(picture().x, picture().y, 1, "points-horizontal", 0.06), {4, 10.5},
                {0, 0.5});
}

TEST(Autotrace, accessors_return_copies) {
  const Autotrace traced(picture().x, picture().y, 1, "points-fission", 0.05);
  traced.x_autotrace_func()[0] = 99;
  traced.y_autotrace_func()[0] = 99;
  expect_result(traced, {10.5}, {0.5});
}

}  // namespace
}  // namespace chart_trace_test
