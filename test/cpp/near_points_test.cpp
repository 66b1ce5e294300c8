#include "indexing/near_points.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "test/cpp/pixels.hpp"
#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

std::uint64_t plain_near_points(const Pixels& set, std::size_t centre, double largest_square) {
  std::uint64_t near = 0;
  for (std::size_t k = 0; k < set.x.size(); ++k) {
    const double dy = set.y[centre] - set.y[k];
    const double dx = set.x[centre] - set.x[k];
    if (dy * dy + dx * dx <= largest_square) near |= std::uint64_t{1} << k;
  }
  return near;
}

// Whole numbers lie at just the largest distance here and there, tenths a rounding beside it.
TEST(near_points, of_any_number_equal_those_told_one_by_one) {
  for (const double step : {1.0, 0.1}) {
    for (const double special : {3.0, infinity, not_a_number}) {
      for (std::size_t count = 1; count <= 64; ++count) {
        Random random(count);
        Pixels set;
        for (std::size_t k = 0; k < count; ++k) {
          set.x.push_back(random.one_in(9) ? special : step * static_cast<double>(random.below(9)));
          set.y.push_back(random.one_in(9) ? special : step * static_cast<double>(random.below(9)));
        }
        const auto centre = static_cast<std::size_t>(random.below(count));
        for (const double square : {0.0, 25.0 * step * step, 1e300}) {
          const std::uint64_t got = chart_trace::near_points(set.x.data(), set.y.data(), count,
                                                             set.x[centre], set.y[centre], square);
          ASSERT_EQ(got, plain_near_points(set, centre, square))
              << count << " points, step " << step << ", with " << special << ", " << square;
        }
      }
    }
  }
}

}  // namespace
}  // namespace chart_trace_test
