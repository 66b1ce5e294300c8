#include "extractors/bar_algm.hpp"

#include <gtest/gtest.h>

#include <string>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

void expect_bars(const Bar_algm& bars, const Pixels& vertical, const Pixels& horizontal) {
  EXPECT_TRUE(same_bits(bars.x_vertical_bar(), vertical.x)) << "x of vertical bars";
  EXPECT_TRUE(same_bits(bars.y_vertical_bar(), vertical.y)) << "y of vertical bars";
  EXPECT_TRUE(same_bits(bars.x_horizontal_bar(), horizontal.x)) << "x of horizontal bars";
  EXPECT_TRUE(same_bits(bars.y_horizontal_bar(), horizontal.y)) << "y of horizontal bars";
}

Bar_algm bars_of(const Pixels& set, const std::string& method, double pixel_step = 1) {
  return Bar_algm(set.x, set.y, pixel_step, method);
}

// Two arms and the bar below them. Fission takes it as one group; horizontal grouping leaves the
// right arm over, because the bar is the last row.
Pixels u_shape() { return joined({pixels({{0, 0}, {4, 0}}), block(5, 1, 0, 1)}); }

void expect_u_shape_by_rows(const Bar_algm& bars) {
  expect_bars(bars, pixels({{1.6666666666666667, 0}, {4, 0}}),
              pixels({{4, 0.8333333333333334}, {4, 0}}));
}

TEST(Bar_algm, of_nothing_has_four_empty_results) {
  expect_bars(bars_of({}, "fission"), {}, {});
  expect_bars(bars_of({}, "horizontal"), {}, {});
}

TEST(Bar_algm, of_one_pixel_is_that_pixel_both_ways) {
  expect_bars(bars_of(pixels({{3, 4}}), "fission"), pixels({{3, 4}}), pixels({{3, 4}}));
  expect_bars(bars_of(pixels({{3, 4}}), "horizontal"), pixels({{3, 4}}), pixels({{3, 4}}));
}

TEST(Bar_algm, a_filled_bar_is_the_middle_of_its_top_and_of_its_right_end) {
  const Pixels bar = block(5, 40, 10, 20);
  expect_bars(bars_of(bar, "fission"), pixels({{12, 20}}), pixels({{14, 39.5}}));
  expect_bars(bars_of(bar, "horizontal"), pixels({{12, 20}}), pixels({{14, 39.5}}));
}

TEST(Bar_algm, fission_takes_connected_pixels_as_one_bar) {
  expect_bars(bars_of(u_shape(), "fission"), pixels({{2, 0}}), pixels({{4, 0.7142857142857143}}));
}

TEST(Bar_algm, horizontal_groups_by_rows) {
  expect_u_shape_by_rows(bars_of(u_shape(), "horizontal"));
}

TEST(Bar_algm, every_method_but_exactly_fission_is_horizontal) {
  for (const char* method :
       {"Fission", "FISSION", "fission ", " fission", "fissio", "fissions", "", "unknown"}) {
    SCOPED_TRACE(method);
    expect_u_shape_by_rows(bars_of(u_shape(), method));
  }
  SCOPED_TRACE("fission and a NUL");
  expect_u_shape_by_rows(bars_of(u_shape(), std::string("fission\0", 8)));
}

TEST(Bar_algm, bars_come_in_the_order_of_their_groups) {
  const Pixels bars = joined({block(1, 3, 50, 7), block(3, 1, 0, 0), block(2, 2, 20, 5)});
  expect_bars(bars_of(bars, "fission"), pixels({{50, 7}, {1, 0}, {20.5, 5}}),
              pixels({{50, 8}, {2, 0}, {21, 5.5}}));
}

TEST(Bar_algm, the_extremes_may_stand_anywhere_in_the_group) {
  const Pixels bar = pixels({{5, 5}, {6, 4}, {5, 4}, {6, 5}, {7, 5}, {6, 6}});
  expect_bars(bars_of(bar, "fission"), pixels({{5.833333333333333, 4}}),
              pixels({{7, 4.833333333333333}}));
}

TEST(Bar_algm, of_equal_extremes_takes_the_first) {
  expect_bars(bars_of(pixels({{0, 0.0}, {1, -0.0}}), "fission"), pixels({{0.5, 0.0}}),
              pixels({{1, 0.0}}));
  expect_bars(bars_of(pixels({{0, -0.0}, {1, 0.0}}), "fission"), pixels({{0.5, -0.0}}),
              pixels({{1, 0.0}}));
  expect_bars(bars_of(pixels({{0.0, 0}, {-0.0, 1}}), "fission"), pixels({{0.0, 0}}),
              pixels({{0.0, 0.5}}));
  expect_bars(bars_of(pixels({{-0.0, 0}, {0.0, 1}}), "fission"), pixels({{0.0, 0}}),
              pixels({{-0.0, 0.5}}));
}

TEST(Bar_algm, a_nan_point_is_a_bar_of_its_own) {
  const Pixels set = pixels({{0, 0}, {not_a_number, 5}, {1, 0}, {3, not_a_number}});
  const Pixels vertical = pixels({{0.5, 0}, {not_a_number, 5}, {3, not_a_number}});
  expect_bars(bars_of(set, "fission"), vertical,
              pixels({{1, 0}, {not_a_number, 5}, {3, not_a_number}}));
}

TEST(Bar_algm, the_pixel_step_sets_what_belongs_together) {
  const Pixels bar = block(3, 3, 0, 0, 2);
  expect_bars(bars_of(bar, "fission", 2), pixels({{2, 0}}), pixels({{4, 2}}));
  expect_bars(bars_of(bar, "horizontal", 2), pixels({{2, 0}}), pixels({{4, 2}}));
  expect_bars(bars_of(bar, "fission", 1), bar, bar);
}

}  // namespace
}  // namespace chart_trace_test
