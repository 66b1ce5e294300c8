#include "indexing/range.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "test/cpp/pixels.hpp"
#include "test/cpp/same_bits.hpp"
#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

// Value by value.
chart_trace::Range plain_range_of(const std::vector<double>& values) {
  chart_trace::Range range{values[0], values[0]};
  for (const double value : values) {
    if (value < range.low) range.low = value;
    if (value > range.high) range.high = value;
  }
  return range;
}

std::vector<double> values_with(std::uint64_t seed, std::size_t count, double special) {
  Random random(seed);
  std::vector<double> values;
  for (std::size_t i = 0; i < count; ++i) {
    values.push_back(random.one_in(3) ? special : random.fraction() * 200.0 - 100.0);
  }
  return values;
}

TEST(range_of, values_of_any_number_equals_one_that_looks_at_each) {
  for (const double special : {0.5, 200.0, -200.0, infinity, -infinity, not_a_number}) {
    for (std::size_t count = 1; count <= 40; ++count) {
      for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const std::vector<double> values = values_with(seed, count, special);
        const chart_trace::Range got = chart_trace::range_of(values);
        const chart_trace::Range want = plain_range_of(values);
        ASSERT_TRUE(same_bits({got.low, got.high}, {want.low, want.high}))
            << count << " values with " << special << ", seed " << seed;
      }
    }
  }
}

}  // namespace
}  // namespace chart_trace_test
