// What the lists of runs in any order and by columns are built on, held against plain walks: where
// a search stops, and which runs it may pass over.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "indexing/lower_runs.hpp"
#include "indexing/run_pairs.hpp"
#include "indexing/runs_left.hpp"
#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::Lower_runs;
using chart_trace::Run_extent;
using chart_trace::Run_pairs;
using chart_trace::Runs_left;

using Place = chart_trace::Run;  // inside a test, Run is something else

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();

// Runs of one point on rows that fall and rise at random, some on rows that are no numbers.
struct Runs {
  Runs(Random& random, std::size_t count, double step) : step(step) {
    const std::vector<double> specials = {nan_value, infinity, -infinity, -0.0, 1e300, -1e300};
    constexpr float far = std::numeric_limits<float>::infinity();
    constexpr float nan_extent = std::numeric_limits<float>::quiet_NaN();
    const std::vector<Run_extent> special_extents = {
        {-far, -far}, {far, far}, {-far, 3}, {3, far}, {-far, far}, {nan_extent, nan_extent}};
    const bool is_special = random.one_in(3);
    const double height = static_cast<double>(random.between(1, 40));
    double row = 0;
    for (std::size_t k = 0; k < count; ++k) {
      // Stretches that fall, as columns do, among rows anywhere.
      row = random.one_in(4) ? std::floor(height * random.fraction()) : row + 0.5;
      rows.push_back(is_special && random.one_in(9) ? random.pick(specials) : row);
      const float x = static_cast<float>(random.between(0, 6));
      extents.push_back(is_special && random.one_in(5)
                            ? random.pick(special_extents)
                            : Run_extent{x, x + static_cast<float>(random.below(2))});
    }
  }

  Run_pairs pairs() const {
    return {extents.data(), rows.data(), static_cast<Place>(rows.size()), step, step * 1.5};
  }

  std::vector<Run_extent> extents;
  std::vector<double> rows;
  double step;
};

const std::vector<double> steps = {1.0, 0.3, 4.0, 0.0, -1.0, infinity, -infinity, nan_value};

TEST(Runs_left, a_search_stops_where_a_walk_does) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    Random random(seed);
    const Runs runs(random, static_cast<std::size_t>(random.between(1, 150)),
                    steps[static_cast<std::size_t>(seed % steps.size())]);
    const Run_pairs pairs = runs.pairs();
    Runs_left left(pairs);
    Place earliest = 0;
    while (left.count() > 0) {
      const Place reference = static_cast<Place>(random.below(pairs.count));
      earliest = std::max(earliest, left.first());
      if (random.one_in(4) && earliest < pairs.count) ++earliest;
      const Place from = earliest;
      Place stop = from;
      while (stop < pairs.count && !(left.is_left(stop) && pairs.is_below(reference, stop))) ++stop;
      const Runs_left::Stop got = left.stop_of(reference, from);
      ASSERT_EQ(got.stops, stop < pairs.count) << "seed " << seed;
      if (random.one_in(8)) left.forget_passed();
      ASSERT_EQ(left.is_any_below(reference, from), stop < pairs.count) << "seed " << seed;
      for (Place run = from; run < pairs.count; ++run) {
        if (!pairs.is_near(reference, run)) continue;
        ASSERT_EQ(run < got.place, run < stop) << "seed " << seed;
        if (random.one_in(4)) {
          ASSERT_TRUE(run < stop || left.may_stop_before(run, reference, from)) << "seed " << seed;
        }
      }
      for (std::uint64_t k = random.below(5); k > 0; --k) {
        const Place taken = static_cast<Place>(random.below(pairs.count));
        if (left.is_left(taken)) left.take(taken);
      }
      if (random.one_in(2) && left.count() > 0) left.take(left.first());
    }
    EXPECT_EQ(left.first(), pairs.count);
  }
}

// A line that moves down among runs that lie higher: nothing stops before what touches it, and this
// is known without a search.
TEST(Runs_left, what_lies_higher_is_passed) {
  Random random(1);
  Runs runs(random, 0, 1.0);
  for (int column = 0; column < 50; ++column) {
    runs.rows.insert(runs.rows.end(), {3.0 + column % 2, 20.0 + column});
    runs.extents.insert(runs.extents.end(), 2,
                        {static_cast<float>(column), static_cast<float>(column)});
  }
  Runs_left left(runs.pairs());
  EXPECT_TRUE(left.may_stop_before(99, 1, 1)) << "the line itself, which is left";
  left.forget_passed();
  for (Place run = 1; run + 2 < runs.rows.size(); run += 2) {
    left.take(run);
    EXPECT_FALSE(left.may_stop_before(run + 2, run, 1));
  }
  EXPECT_FALSE(left.is_any_below(97, 1));
}

TEST(Lower_runs, no_run_is_passed_over_that_touches_or_stops) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    Random random(seed);
    const std::size_t count = seed % 3 == 0 ? 255 + seed % 4 : 300 + random.below(3000);
    const Runs runs(random, count, steps[static_cast<std::size_t>(seed % steps.size())]);
    const Run_pairs pairs = runs.pairs();
    Lower_runs lower(pairs);
    Place from = 0;
    for (int search = 0; search < 30; ++search) {
      const Place reference = static_cast<Place>(random.below(count));
      from = std::min(static_cast<Place>(count), from + static_cast<Place>(random.below(40)));
      const std::size_t most = random.below(20);
      const auto matters = [&](Place run) {
        return pairs.is_below(reference, run) || pairs.touch(reference, run);
      };
      std::vector<Place> want;
      for (Place run = from; run < count && want.size() < most; ++run) {
        if (matters(run)) want.push_back(run);
      }
      std::vector<Place> got;
      const bool is_ended = lower.visit_until(reference, from, [&](Place run) {
        if (got.size() < most && matters(run)) got.push_back(run);
        return got.size() == most;
      });
      ASSERT_EQ(got, want) << "seed " << seed;
      if (most > 0) {
        ASSERT_EQ(is_ended, want.size() == most) << "seed " << seed;
      }
    }
  }
}

TEST(Lower_runs, a_search_low_down_goes_through_a_part_of_the_runs) {
  Random random(1);
  Runs runs(random, 0, 1.0);
  for (int k = 0; k < 10000; ++k) {
    runs.rows.push_back(static_cast<double>(random.below(1000)));
    runs.extents.push_back({0, 0});
  }
  runs.rows[77] = 999;
  Lower_runs lower(runs.pairs());
  EXPECT_FALSE(lower.visit_until(77, 0, [](Place) { return false; }));
  EXPECT_LT(lower.walked(), 300U);
  EXPECT_GT(lower.walked(), 0U);
}

}  // namespace
}  // namespace chart_trace_test
