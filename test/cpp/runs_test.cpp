#include "indexing/runs.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

#include "indexing/range.hpp"
#include "test/cpp/pixels.hpp"
#include "test/cpp/same_bits.hpp"
#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

using Ranges = std::vector<std::pair<std::size_t, std::size_t>>;

Ranges runs_of(const std::vector<double>& x, const std::vector<double>& y, double step) {
  Ranges runs;
  chart_trace::for_each_run(
      x.data(), y.data(), x.size(), step,
      [&](std::size_t first, std::size_t last) { runs.emplace_back(first, last); });
  return runs;
}

// The range is told with the runs; a NaN that comes first stays, as in range_of().
TEST(Found_runs, the_range_of_x_is_that_of_all_points) {
  Random random(3);
  for (std::size_t size = 1; size <= 200; ++size) {
    for (const double special : {0.5, infinity, not_a_number}) {
      std::vector<double> x;
      for (std::size_t k = 0; k < size; ++k) {
        x.push_back(random.one_in(size / 2 + 1) ? special : random.fraction() * 200.0 - 100.0);
      }
      const chart_trace::Range got =
          chart_trace::Found_runs(x.data(), x.data(), size, 1.0).range_of_x();
      const chart_trace::Range want = chart_trace::range_of(x);
      ASSERT_TRUE(same_bits({got.low, got.high}, {want.low, want.high}))
          << size << " points with " << special;
    }
  }
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

// The definition, point by point.
Ranges runs_one_by_one(const Case& made) {
  Ranges runs;
  for (std::size_t k = 0; k < made.x.size(); ++k) {
    const bool begins =
        k == 0 || !(made.y[k - 1] == made.y[k]) || !(made.x[k - 1] == made.x[k] - made.step);
    if (begins) runs.emplace_back(k, k);
    runs.back().second = k + 1;
  }
  return runs;
}

TEST(for_each_run, a_block_of_64_points_and_what_is_left_of_one_are_cut_alike) {
  for (std::size_t size = 0; size <= 200; ++size) {
    for (std::uint64_t seed = 0; seed < 30; ++seed) {
      const Case made = make_case(seed, size);
      ASSERT_EQ(runs_of(made.x, made.y, made.step), runs_one_by_one(made)) << made.text();
    }
  }
}

TEST(for_each_run, a_run_may_go_on_over_many_blocks) {
  std::vector<double> x(1000);
  std::iota(x.begin(), x.end(), -7.0);
  const std::vector<double> y(1000, 5);
  EXPECT_EQ(runs_of(x, y, 1), (Ranges{{0, 1000}}));
  EXPECT_EQ(runs_of(x, y, 2).size(), 1000U);
  for (const std::size_t gap : std::vector<std::size_t>{1, 63, 64, 65, 128, 129, 999}) {
    std::vector<double> with_gap = x;
    for (std::size_t k = gap; k < x.size(); ++k) with_gap[k] += 1;
    EXPECT_EQ(runs_of(with_gap, y, 1), (Ranges{{0, gap}, {gap, 1000}}));
  }
}

}  // namespace
}  // namespace chart_trace_test
