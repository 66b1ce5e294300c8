// Compartments and the two extractors that read them take one of several ways to the same result:
// pixels are packed, other points are taken as they are; points are sorted four at a time, the last
// few one by one; a compartment is proposed by a division or, when that misses, searched for. Each
// way, and each reason to leave it, is driven here on purpose and held against the oracle.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include "extractors/histogram_algm.hpp"
#include "extractors/step_size_graph_algm.hpp"
#include "grouping/compartment_index.hpp"
#include "grouping/vertical_compartments.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct Set {
  std::vector<double> x;
  std::vector<double> y;
};

testing::AssertionResult equal_the_oracle(const Set& set, double width) {
  const Vertical_compartments compartments(set.x, set.y, width);
  const Histogram_algm histogram(set.x, set.y, width);
  const Step_size_graph_algm steps(set.x, set.y, width);
  const testing::AssertionResult result =
      all_of({same_groups(compartments.x_groups_func(), compartments.y_groups_func(),
                          oracle::vertical_compartments(set.x, set.y, width)),
              same_points(histogram.x_hist_func(), histogram.y_hist_func(),
                          oracle::histogram(set.x, set.y, width)),
              same_points(steps.x_step_func(), steps.y_step_func(),
                          oracle::step_graph(set.x, set.y, width))});
  if (result) return result;
  return testing::AssertionFailure() << "width " << text_of(width) << "\n  x " << text_of(set.x)
                                     << "\n  y " << text_of(set.y) << "\n"
                                     << result.message();
}

enum class Order { raster, columns, shuffled };
constexpr Order orders[] = {Order::raster, Order::columns, Order::shuffled};

// `size` pixels of a picture `columns` wide, a few of them twice.
Set picture(Random& random, std::size_t size, std::size_t columns, Order order) {
  struct Pixel {
    double x;
    double y;
  };
  std::vector<Pixel> pixels;
  for (std::size_t i = 0; i < size; ++i) {
    pixels.push_back({static_cast<double>(random.below(columns)),
                      static_cast<double>(random.below(4 * size / columns + 2))});
  }
  if (order != Order::shuffled) {
    std::sort(pixels.begin(), pixels.end(), [&](const Pixel& a, const Pixel& b) {
      if (order == Order::columns) return a.x != b.x ? a.x < b.x : a.y < b.y;
      return a.y != b.y ? a.y < b.y : a.x < b.x;
    });
  }
  Set set;
  for (const Pixel& pixel : pixels) {
    set.x.push_back(pixel.x);
    set.y.push_back(pixel.y);
  }
  return set;
}

// Calls check(random, set) for pictures around every size at which another way is taken: points go
// by four, and columns may be as many as points.
template <class Check>
void for_each_picture(Check check) {
  const std::vector<std::size_t> sizes = {1, 2, 3, 7, 31, 62, 63, 64, 65, 66, 150};
  for (const std::size_t size : sizes) {
    const std::vector<std::size_t> widths = {2,        size / 8 + 1, size,        size + 1,
                                             size + 3, 2 * size,     2 * size + 3};
    for (const std::size_t columns : widths) {
      for (const Order order : orders) {
        Random random(size * 1000 + columns * 10 + static_cast<std::uint64_t>(order));
        check(random, picture(random, size, columns, order));
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(Compartment_paths, pixels_in_any_order_with_any_width_equal_the_oracle) {
  for_each_picture([](Random&, const Set& set) {
    for (const double width : {1.0, 2.0, 3.0, 0.5, 0.3, 1.0 / 3.0, 1.7, 64.0, 1e9, infinity}) {
      ASSERT_TRUE(equal_the_oracle(set, width));
    }
  });
}

TEST(Compartment_paths, a_width_that_moves_no_border_leaves_pixels_over) {
  for_each_picture([](Random&, const Set& set) {
    for (const double width : {0.0, -0.0, -1.0, -1e300, -infinity, nan}) {
      ASSERT_TRUE(equal_the_oracle(set, width));
    }
    Set off_zero = set;
    for (double& x : off_zero.x) x += 10.0;
    ASSERT_TRUE(equal_the_oracle(off_zero, 1e-300));
  });
}

TEST(Compartment_paths, one_coordinate_that_is_no_pixel_changes_nothing_for_the_others) {
  for_each_picture([](Random& random, const Set& set) {
    for (const double odd : {-0.0, 0.5, -1.0, 65535.0, 65536.0, 65535.5, 1e-320, nan}) {
      const std::size_t last = set.x.size() - 1;
      const std::size_t at = random.pick<std::size_t>({0, last, random.below(last + 1)});
      Set bent = set;
      bent.x[at] = odd;
      ASSERT_TRUE(equal_the_oracle(bent, odd > 1000.0 ? 250.0 : 1.0));
      bent = set;
      bent.y[at] = odd;
      ASSERT_TRUE(equal_the_oracle(bent, 1.0));
    }
  });
}

TEST(Compartment_paths, coordinates_too_large_for_pixels_equal_the_oracle) {
  for_each_picture([](Random& random, Set set) {
    const double odd = random.pick<double>({infinity, -infinity, 1e308, -1e308, 4e9, 1e19});
    set.y[random.below(set.y.size())] = odd;
    ASSERT_TRUE(equal_the_oracle(set, 1.0));
    set.x[random.below(set.x.size())] = odd;
    for (const double width : {infinity, 1e307, 1.7e308}) {
      ASSERT_TRUE(equal_the_oracle(set, width));
    }
    set.x[0] = -infinity;
    ASSERT_TRUE(equal_the_oracle(set, 1.0));
  });
}

TEST(Compartment_paths, points_left_over_make_compartments_up_to_the_largest_x) {
  for_each_picture([](Random& random, Set set) {
    for (const std::size_t at : {random.below(set.x.size()), set.x.size() - 1}) {
      set.y[at] = nan;  // at the end of a stretch, within one, and the largest x in column order
      ASSERT_TRUE(equal_the_oracle(set, 1.0));
      ASSERT_TRUE(equal_the_oracle(set, 0.7));
    }
    set.x[random.below(set.x.size())] = nan;
    ASSERT_TRUE(equal_the_oracle(set, 1.0));
    ASSERT_TRUE(equal_the_oracle(set, 2.0));
  });
}

TEST(Compartment_paths, points_on_and_next_to_accumulated_borders_equal_the_oracle) {
  for (const double left : {0.0, -3.0, 0.1, 1e6, -1e6, 12345.678, 4503599627370495.5}) {
    for (const double width : {1.0, 0.1, 1.0 / 3.0, 0.7, 1e-3, 2.5}) {
      Set set;
      double border = left;
      for (int k = 0; k < 300; ++k) {
        for (const double x : {border, std::nextafter(border, infinity),
                               std::nextafter(border, -infinity), left + k * width}) {
          set.x.push_back(std::max(x, left));
          set.y.push_back(static_cast<double>((k * 7) % 11));
        }
        border += width;
      }
      ASSERT_TRUE(equal_the_oracle(set, width));
    }
  }
}

// Beyond 2^53 a border moves by more or less than the width, and by more once it has passed a power
// of two, so that a division proposes compartments far from the right one.
TEST(Compartment_paths, borders_that_move_unevenly_equal_the_oracle) {
  const double power = 9007199254740992.0;  // 2^53
  for (const double left : {power - 400.0, 2.0 * power - 700.0, -power - 300.0}) {
    for (const double width : {0.6, 1.0, 1.3, 1.5, 2.6, 3.0}) {
      Set set;
      for (int k = 0; k < 500; ++k) {
        set.x.push_back(left + 2.0 * static_cast<double>((k * 89) % 500));
        set.y.push_back(static_cast<double>((k * 7) % 11));
      }
      ASSERT_TRUE(equal_the_oracle(set, width));
    }
  }
}

// Points in clumps far from each other, some of them on borders, some without a y.
Set clumps(Random& random, double width) {
  Set set;
  double border = random.pick<double>({0.0, -30.0, 0.7, 9007199254740992.0 - 500.0});
  for (std::uint64_t k = 1 + random.below(6); k > 0; --k) {
    for (std::uint64_t n = 1 + random.below(5); n > 0; --n) {
      set.x.push_back(border + width * random.pick<double>({0.0, 0.0, 0.5, 1.0, 3.0}));
      set.y.push_back(random.one_in(12) ? nan : static_cast<double>(random.below(9)));
    }
    for (std::uint64_t n = random.below(400); n > 0; --n) border += width;
  }
  if (random.one_in(8)) set.x[random.below(set.x.size())] = nan;
  return set;
}

TEST(Compartment_paths, few_points_in_many_compartments_equal_the_oracle) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    Random random(seed);
    const double width = random.pick<double>({1.0, 0.1, 1.0 / 3.0, 2.5});
    const Set set = clumps(random, width);
    ASSERT_TRUE(equal_the_oracle(set, width)) << "seed " << seed;
  }
}

TEST(Compartment_paths, a_gap_as_one_needs_no_more_compartments_than_two_a_point) {
  const Set set{{5e6, 0.0, 1e7, 5e6}, {1.0, 2.0, nan, 4.0}};
  const chart_trace::Compartment_index index(set.x, set.y, 1.0,
                                             chart_trace::Compartment_index::Empty::gap_as_one);
  // One more than ten million: a point was left over, and the largest x lies on a border.
  EXPECT_EQ(index.total(), 10'000'001U);
  EXPECT_EQ(index.count(), 6U);  // three that points lie in and three gaps
  // So few points make every compartment with one a riser, and every other a tread without centre.
  const Step_size_graph_algm steps(set.x, set.y, 1.0);
  EXPECT_TRUE(same_bits(steps.x_step_func(), {nan, nan}));
  EXPECT_TRUE(same_bits(steps.y_step_func(), {nan, nan, 1.0}));
}

TEST(Compartment_paths, more_compartments_than_can_be_counted_are_refused_at_once) {
  const std::vector<double> y{0.0, 0.0};
  EXPECT_THROW(Vertical_compartments({0.0, 1e12}, y, 1.0), std::length_error);
  EXPECT_THROW(Histogram_algm({0.0, 1000.0}, y, 1e-9), std::length_error);
  EXPECT_THROW(Step_size_graph_algm({-5.0, infinity}, y, 1.0), std::length_error);
  // A border that stops moving before it gets there ends the run instead.
  EXPECT_TRUE(equal_the_oracle({{9007199254740992.0 - 300.0, 1e300}, y}, 1.0));
  EXPECT_TRUE(equal_the_oracle({{-1e300, 1e300}, y}, 1.0));
}

TEST(Compartment_paths, zeros_keep_their_sign) {
  for (const Order order : orders) {
    Random random(7);
    Set set = picture(random, 100, 10, order);
    for (std::size_t i = 0; i < set.x.size(); i += 3) {
      if (set.x[i] == 0.0) set.x[i] = -0.0;
      if (set.y[i] == 0.0) set.y[i] = -0.0;
    }
    ASSERT_TRUE(equal_the_oracle(set, 1.0));
    ASSERT_TRUE(equal_the_oracle(set, 3.0));
  }
}

}  // namespace
}  // namespace chart_trace_test
