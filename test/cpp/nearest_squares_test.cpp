#include "indexing/nearest_squares.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "indexing/near_pixels.hpp"
#include "indexing/packed_pixels.hpp"
#include "test/cpp/pixels.hpp"
#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

// All squares, sorted; then the first of them.
Doubles expected(const Pixels& set, std::size_t taken) {
  Doubles squares;
  for (std::size_t i = 1; i < set.x.size(); ++i) {
    const double dy = set.y[0] - set.y[i];
    const double dx = set.x[0] - set.x[i];
    squares.push_back(dy * dy + dx * dx);
  }
  std::sort(squares.begin(), squares.end(),
            [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
  squares.resize(taken);
  return squares;
}

// nearest(taken) gives the squares of the set that are tested.
template <class Nearest>
testing::AssertionResult are_the_nearest(const Pixels& set, Nearest nearest) {
  const std::size_t others = set.x.size() - 1;
  for (const double share : {0.0, 0.001, 0.05, 0.3, 0.9, 0.99, 1.0}) {
    const auto taken = static_cast<std::size_t>(std::ceil(share * static_cast<double>(others)));
    const auto result = same_bits(nearest(taken), expected(set, taken));
    if (!result) {
      return testing::AssertionFailure() << taken << " of " << others << ": " << result.message();
    }
  }
  return testing::AssertionSuccess();
}

testing::AssertionResult takes_the_nearest(const Pixels& set) {
  return are_the_nearest(set, [&](std::size_t taken) {
    return chart_trace::nearest_squares(set.x, set.y, set.x.size(), taken);
  });
}

testing::AssertionResult takes_the_nearest_packed(const Pixels& set) {
  const auto packed = chart_trace::packed_set(set.x, set.y);
  if (!packed || !chart_trace::are_near(packed->frame)) {
    return testing::AssertionFailure() << "the set is not packed";
  }
  return are_the_nearest(set, [&](std::size_t taken) {
    return chart_trace::nearest_squares(packed->pixels, set.x.size(), taken);
  });
}

Pixels cloud(std::uint64_t seed, std::size_t count, double side) {
  Random random(seed);
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    set.x.push_back(side * random.fraction());
    set.y.push_back(side * random.fraction());
  }
  return set;
}

TEST(Nearest_squares, are_those_of_the_nearest_points_in_ascending_order) {
  EXPECT_TRUE(same_bits(chart_trace::nearest_squares({0, 3, 1, 2}, {0, 4, 0, 0}, 4, 2), {1, 4}));
}

TEST(Nearest_squares, of_no_other_point_are_none) {
  EXPECT_TRUE(same_bits(chart_trace::nearest_squares({5}, {5}, 1, 0), Doubles{}));
}

TEST(Nearest_squares, look_at_the_first_points_only) {
  EXPECT_TRUE(same_bits(chart_trace::nearest_squares({0, 3, 1, 2}, {0, 4, 0, 0}, 3, 2), {1, 25}));
}

// Around the sizes from which a sample is looked at first, from which it is thinner, and from which
// digits are sorted.
TEST(Nearest_squares, of_sets_of_any_size_equal_a_plain_sort) {
  for (const std::size_t count : {2U, 64U, 65U, 66U, 499U, 500U, 501U, 1000U, 2047U, 2048U, 2049U,
                                  2050U, 2200U, 16383U, 16384U}) {
    EXPECT_TRUE(takes_the_nearest(cloud(1, count, 100.0))) << count;
  }
}

TEST(Nearest_squares, of_whole_numbers_equal_a_plain_sort) {
  EXPECT_TRUE(takes_the_nearest(block(90, 70)));
  EXPECT_TRUE(takes_the_nearest(block(6000, 1)));
  EXPECT_TRUE(takes_the_nearest(block(3, 2000, 5, 5)));
}

// Pixels strewn over a square whose left top corner is at (corner, corner).
Pixels strewn(std::uint64_t seed, std::size_t count, std::uint64_t side, double corner) {
  Random random(seed);
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    set.x.push_back(corner + static_cast<double>(random.below(side)));
    set.y.push_back(corner + static_cast<double>(random.below(side)));
  }
  return set;
}

// Around the same sizes, from the smallest squares to those that need all 32 bits.
TEST(Nearest_squares, of_packed_pixels_equal_a_plain_sort) {
  for (const std::size_t count : {1U, 2U, 16U, 17U, 18U, 64U, 65U, 66U, 499U, 500U, 501U, 2047U,
                                  2048U, 2049U, 2050U, 2200U, 16383U, 16384U}) {
    for (const std::uint64_t side : {1U, 40U, 3000U, 32768U}) {
      for (const double corner : {0.0, 65536.0 - static_cast<double>(side)}) {
        ASSERT_TRUE(takes_the_nearest_packed(strewn(1, count, side, corner)))
            << count << ' ' << side;
      }
    }
  }
}

TEST(Nearest_squares, of_packed_pixels_as_far_apart_as_may_be_are_exact) {
  for (const double corner : {0.0, 32768.0}) {
    Pixels set{Doubles(3000, corner), Doubles(3000, corner)};
    for (std::size_t i = 1; i < set.x.size(); i += 2) set.x[i] = set.y[i] = corner + 32767.0;
    EXPECT_TRUE(takes_the_nearest_packed(set));
    set.x[0] = set.y[0] = corner + 32767.0;
    EXPECT_TRUE(takes_the_nearest_packed(set));
  }
}

TEST(Nearest_squares, of_equal_points_equal_a_plain_sort) {
  EXPECT_TRUE(takes_the_nearest({Doubles(5000, 3.0), Doubles(5000, 4.0)}));
}

// Some points lie much nearer than the others, or much farther, and a sample sees only those.
TEST(Nearest_squares, do_not_hang_on_the_sample) {
  struct {
    std::size_t count, stride;
  } const samples[] = {{3000, 13}, {17000, 61}};
  for (const auto& [count, stride] : samples) {
    for (std::size_t phase = 0; phase < 3; ++phase) {
      for (const double factor : {1e-3, 1e3}) {
        Pixels set = cloud(2, count, 1.0);
        set.x[0] = set.y[0] = 0.0;
        for (std::size_t i = phase; i < set.x.size(); i += stride) {
          set.x[i] *= factor;
          set.y[i] *= factor;
        }
        ASSERT_TRUE(takes_the_nearest(set)) << stride << ' ' << phase << ' ' << factor;
      }
    }
  }
}

TEST(Nearest_squares, put_nan_after_infinity) {
  Pixels set = cloud(3, 5000, 10.0);
  for (std::size_t i = 1; i < set.x.size(); i += 3) set.x[i] = infinity;
  for (std::size_t i = 2; i < set.x.size(); i += 3) set.y[i] = not_a_number;
  EXPECT_TRUE(takes_the_nearest(set));
  set.x[0] = -infinity;
  EXPECT_TRUE(takes_the_nearest(set));
  set.x[0] = infinity;
  EXPECT_TRUE(takes_the_nearest(set));
  set.x[0] = not_a_number;
  EXPECT_TRUE(takes_the_nearest(set));
}

TEST(Nearest_squares, of_distances_of_every_size_equal_a_plain_sort) {
  Pixels set = cloud(4, 4000, 1.0);
  for (std::size_t i = 0; i < set.x.size(); ++i) {
    set.x[i] = std::ldexp(set.x[i], static_cast<int>(i % 2200) - 1100);
  }
  EXPECT_TRUE(takes_the_nearest(set));
}

}  // namespace
}  // namespace chart_trace_test
