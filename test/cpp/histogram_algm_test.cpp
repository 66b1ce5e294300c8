#include "extractors/histogram_algm.hpp"

#include <gtest/gtest.h>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

void expect_bars(const Pixels& set, double width, const Doubles& x, const Doubles& y) {
  const Histogram_algm histogram(set.x, set.y, width);
  EXPECT_TRUE(same_bits(histogram.x_hist_func(), x)) << "x";
  EXPECT_TRUE(same_bits(histogram.y_hist_func(), y)) << "y";
}

// One pixel in each compartment, at x = 0, 1, 2, ...: with a width of 0.9 the borders stay just
// left of the pixels.
void expect_bars_of_tops(const Doubles& tops, const Doubles& x, const Doubles& y) {
  Pixels set;
  for (const double top : tops) {
    set.x.push_back(static_cast<double>(set.x.size()));
    set.y.push_back(top);
  }
  expect_bars(set, 0.9, x, y);
}

TEST(Histogram_algm, of_nothing_has_no_bars) { expect_bars({}, 1, {}, {}); }

TEST(Histogram_algm, of_one_pixel_is_that_pixel) { expect_bars(pixels({{3, 4}}), 1, {3}, {4}); }

TEST(Histogram_algm, of_one_compartment_is_its_top_pixel) {
  expect_bars(pixels({{0, 9}, {0.25, 8}, {0.5, 7}, {0.75, 8}, {1, 9}}), 1, {0.5}, {7});
}

TEST(Histogram_algm, of_two_top_pixels_takes_the_one_stored_first) {
  expect_bars(pixels({{0, 9}, {0.75, 7}, {0.25, 7}}), 1, {0.75}, {7});
  expect_bars(pixels({{0, 9}, {0.25, 7}, {0.75, 7}}), 1, {0.25}, {7});
  expect_bars(pixels({{0, 0.0}, {0.5, -0.0}}), 1, {0}, {0.0});
  expect_bars(pixels({{0, 9}, {0.5, -0.0}, {0.25, 0.0}, {2.5, 9}}), 1, {0.5, 2.5}, {0.0, 9});
}

TEST(Histogram_algm, tops_of_one_height_are_one_bar) {
  expect_bars_of_tops({7, 7, 7, 7}, {1.5}, {7});
}

TEST(Histogram_algm, a_jump_in_height_ends_a_bar) {
  expect_bars_of_tops({10, 10, 50, 50}, {0.5, 2.5}, {10, 50});
  expect_bars_of_tops({50, 50, 10, 10}, {0.5, 2.5}, {50, 10});
  expect_bars_of_tops({10, 50, 10}, {0, 1, 2}, {10, 50, 10});
}

TEST(Histogram_algm, a_change_of_exactly_half_a_percent_does_not_end_a_bar) {
  // Changes of 1 and 199 sum up to 200.
  expect_bars_of_tops({0, 1, 200}, {0.5, 2}, {0.5, 200});
  expect_bars_of_tops({200, 199, 0}, {0.5, 2}, {199.5, 0});
}

TEST(Histogram_algm, a_change_above_half_a_percent_ends_a_bar_up_or_down) {
  expect_bars_of_tops({0, 1, 199}, {0, 1, 2}, {0, 1, 199});
  expect_bars_of_tops({199, 198, 0}, {0, 1, 2}, {199, 198, 0});
}

TEST(Histogram_algm, rises_and_falls_both_count_to_the_sum_of_changes) {
  // Changes of 1, 150 and -149: the sum of their sizes is 300, and 1 is a third of a percent.
  expect_bars_of_tops({0, 1, 151, 2}, {0.5, 2, 3}, {0.5, 151, 2});
}

// The quotient comes first. 0.8999999999999998 / 179.99999999999994 is just below 0.005 and gives
// 0.5; multiplied first it would be 0.5000000000000001.
TEST(Histogram_algm, a_change_is_divided_by_the_sum_before_it_is_made_a_percentage) {
  expect_bars_of_tops({0, 0.8999999999999998, 179.99999999999994}, {0.5, 2},
                      {0.4499999999999999, 179.99999999999994});
  // The other way round: 0.5000000000000001 as it is, 0.5 multiplied first.
  expect_bars_of_tops({0, 1.3000000000000007, 260.0000000000001}, {0, 1, 2},
                      {0, 1.3000000000000007, 260.0000000000001});
}

TEST(Histogram_algm, the_height_of_a_bar_is_the_mean_of_its_tops) {
  expect_bars_of_tops({100, 100.5, 99.75, 400}, {1, 3}, {100.08333333333333, 400});
}

TEST(Histogram_algm, the_x_of_a_bar_is_the_middle_of_its_tops_and_not_their_mean) {
  // Tops at 0, 1.5 and 5.5: the middle is 2.75, the mean 2.33.
  expect_bars(pixels({{0, 7}, {1.5, 7}, {5.5, 7}}), 1, {2.75}, {7});
}

TEST(Histogram_algm, the_x_of_a_top_is_that_of_its_pixel) {
  expect_bars(pixels({{0, 9}, {1, 5}, {1.5, 9}, {1.25, 5}}), 1, {1.125}, {5});
}

TEST(Histogram_algm, an_empty_compartment_does_not_end_a_bar) {
  expect_bars(pixels({{0, 7}, {10, 7}}), 1, {5}, {7});
  expect_bars(pixels({{0, 7}, {10, 7}, {11.5, 90}}), 1, {5, 11.5}, {7, 90});
}

TEST(Histogram_algm, bars_come_from_left_to_right) {
  expect_bars(pixels({{5.5, 1}, {0, 50}, {3.5, 9}}), 1, {0, 3.5, 5.5}, {50, 9, 1});
}

TEST(Histogram_algm, a_pixel_on_a_border_counts_to_the_left) {
  // (1, 2) is the top of the first compartment.
  expect_bars(pixels({{0, 9}, {1, 2}, {1.5, 9}}), 1, {1, 1.5}, {2, 9});
}

TEST(Histogram_algm, a_nan_share_never_ends_a_bar) {
  // An infinite top makes the sum infinite: its own changes become NaN, all others 0.
  expect_bars_of_tops({1, 2, -infinity, 4}, {1.5}, {-infinity});
}

TEST(Histogram_algm, a_pixel_with_a_nan_coordinate_is_left_out) {
  expect_bars(pixels({{0, 7}, {0.5, not_a_number}, {not_a_number, 1}, {1.5, 7}}), 1, {0.75}, {7});
}

TEST(Histogram_algm, without_any_top_there_are_no_bars) {
  expect_bars(pixels({{not_a_number, 1}, {0, 1}}), 1, {}, {});
  expect_bars(pixels({{0, not_a_number}, {1, 1}}), 1, {}, {});
  expect_bars(pixels({{0, 1}, {1, 1}}), -1, {}, {});
  expect_bars(pixels({{0, 1}, {1, 1}}), not_a_number, {}, {});
}

TEST(Histogram_algm, a_width_of_zero_reads_the_leftmost_pixels_alone) {
  expect_bars(pixels({{1, 1}, {0, 5}, {0, 4}}), 0, {0}, {4});
}

}  // namespace
}  // namespace chart_trace_test
