#include "indexing/runs.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace {

using Ranges = std::vector<std::pair<std::size_t, std::size_t>>;

Ranges runs_of(const std::vector<double>& x, const std::vector<double>& y, double step) {
  Ranges runs;
  chart_trace::for_each_run(
      x.data(), y.data(), x.size(), step,
      [&](std::size_t first, std::size_t last) { runs.emplace_back(first, last); });
  return runs;
}

TEST(for_each_run, no_points_have_no_runs) { EXPECT_TRUE(runs_of({}, {}, 1).empty()); }

TEST(for_each_run, one_point_is_a_run) { EXPECT_EQ(runs_of({7}, {3}, 1), (Ranges{{0, 1}})); }

TEST(for_each_run, a_gap_a_new_row_and_a_step_back_each_begin_a_run) {
  const std::vector<double> x{0, 1, 2, 4, 5, 6, 6, 5};
  const std::vector<double> y{0, 0, 0, 0, 0, 1, 1, 1};
  EXPECT_EQ(runs_of(x, y, 1), (Ranges{{0, 3}, {3, 5}, {5, 6}, {6, 7}, {7, 8}}));
}

TEST(for_each_run, neighbours_are_told_by_the_difference_from_the_right) {
  // 2.9 - 0.7 is 2.2, but 2.2 + 0.7 is not 2.9 and 2.9 - 2.2 is not 0.7.
  EXPECT_EQ(runs_of({2.2, 2.9}, {0, 0}, 0.7), (Ranges{{0, 2}}));
  // 1.0 - 0.7 is not 0.3, but 0.3 + 0.7 is 1.0 and 1.0 - 0.3 is 0.7.
  EXPECT_EQ(runs_of({0.3, 1.0}, {0, 0}, 0.7), (Ranges{{0, 1}, {1, 2}}));
}

TEST(for_each_run, nan_is_a_run_of_its_own_and_zeros_of_either_sign_are_equal) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(runs_of({0, nan, 1, 2}, {0, 0, 0, 0}, 1), (Ranges{{0, 1}, {1, 2}, {2, 4}}));
  EXPECT_EQ(runs_of({0, 1}, {nan, nan}, 1), (Ranges{{0, 1}, {1, 2}}));
  EXPECT_EQ(runs_of({-0.0, 1}, {0.0, -0.0}, 1), (Ranges{{0, 2}}));
}

}  // namespace
