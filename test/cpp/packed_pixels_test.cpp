// Pixels are packed and unpacked four at a time, the last few one by one: every place in a set of
// every size around four is tried with each kind of number that is no coordinate of a pixel.
#include "indexing/packed_pixels.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include "test/cpp/same_bits.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::column_of;
using chart_trace::packed_set;
using chart_trace::row_of;

// `size` numbers from 0 to 65535, both included.
std::vector<double> coordinates(std::size_t size, std::size_t seed) {
  std::vector<double> numbers{0.0, 65535.0};
  for (std::size_t i = 2; i < size; ++i) {
    numbers.push_back(static_cast<double>((i * 40503 + seed) % 65536));
  }
  numbers.resize(size);
  return numbers;
}

TEST(Packed_pixels, pixels_come_back_as_they_were) {
  for (std::size_t size = 0; size < 14; ++size) {
    const std::vector<double> x = coordinates(size, 1);
    const std::vector<double> y = coordinates(size, 2);
    const auto set = packed_set(x, y);
    ASSERT_TRUE(set);
    std::vector<double> x_again(size);
    std::vector<double> y_again(size);
    set->pixels.unpack(x_again, y_again);
    EXPECT_TRUE(same_bits(x_again, x));
    EXPECT_TRUE(same_bits(y_again, y));
  }
}

TEST(Packed_pixels, the_column_and_the_row_of_a_pixel_are_its_coordinates) {
  const auto set = packed_set({1.0, 2.0, 3.0, 65535.0, 5.0}, {6.0, 65535.0, 8.0, 9.0, 10.0});
  ASSERT_TRUE(set);
  EXPECT_EQ(column_of(set->pixels[3]), 65535U);
  EXPECT_EQ(row_of(set->pixels[3]), 9U);
  EXPECT_EQ(column_of(set->pixels[4]), 5U);
  EXPECT_EQ(row_of(set->pixels[4]), 10U);
}

TEST(Packed_pixels, the_outermost_columns_and_rows_are_found_wherever_they_stand) {
  for (std::size_t size = 1; size < 14; ++size) {
    for (std::size_t first = 0; first < size; ++first) {
      for (std::size_t last = 0; last < size; ++last) {
        std::vector<double> numbers(size, 32768.0);
        numbers[last] = 40000.0;
        numbers[first] = 32767.0;
        const std::int32_t largest = last != first ? 40000 : size == 1 ? 32767 : 32768;
        const std::vector<double> same(size, 5.0);
        const auto columns = packed_set(numbers, same);
        ASSERT_TRUE(columns);
        EXPECT_EQ(columns->frame.left, 32767);
        EXPECT_EQ(columns->frame.right, largest);
        EXPECT_EQ(columns->frame.top, 5);
        EXPECT_EQ(columns->frame.bottom, 5);
        const auto rows = packed_set(same, numbers);
        ASSERT_TRUE(rows);
        EXPECT_EQ(rows->frame.top, 32767);
        EXPECT_EQ(rows->frame.bottom, largest);
      }
    }
  }
}

TEST(Packed_pixels, the_frame_and_the_sums_of_pixels_are_found_for_any_number_of_them) {
  for (std::size_t size = 1; size < 14; ++size) {
    for (std::size_t odd = 0; odd < size; ++odd) {
      std::vector<double> x(size, 60000.0);
      std::vector<double> y(size, 7.0);
      x[odd] = 3.0;
      y[odd] = 65535.0;
      auto set = packed_set(x, y);
      ASSERT_TRUE(set);
      const auto totals = chart_trace::totals_of(set->pixels.data(), size);
      EXPECT_EQ(totals.columns, 60000 * (size - 1) + 3);
      EXPECT_EQ(totals.rows, 7 * (size - 1) + 65535);
      const chart_trace::Pixel_frame want = set->frame;
      const chart_trace::Packed_set again = chart_trace::framed(std::move(set->pixels));
      EXPECT_EQ(again.pixels.size(), size);
      for (const chart_trace::Pixel_frame& frame : {totals.frame, again.frame}) {
        EXPECT_EQ(frame.left, want.left);
        EXPECT_EQ(frame.right, want.right);
        EXPECT_EQ(frame.top, want.top);
        EXPECT_EQ(frame.bottom, want.bottom);
      }
    }
  }
}

TEST(Packed_pixels, one_number_that_is_no_coordinate_makes_all_points_no_pixels) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<double> odd_numbers = {
      -0.0, -1.0,  -65536.0,     0.5,           65535.5,  65536.0,   131072.0, 1e-320, 1e10,
      1e19, 1e308, 4294967296.0, -2147483648.0, infinity, -infinity, nan,      -nan};
  for (std::size_t size = 1; size < 14; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (const double odd : odd_numbers) {
        const std::vector<double> good = coordinates(size, 3);
        std::vector<double> bad = good;
        bad[at] = odd;
        EXPECT_FALSE(packed_set(bad, good)) << odd << " as x " << at << " of " << size;
        EXPECT_FALSE(packed_set(good, bad)) << odd << " as y " << at << " of " << size;
      }
    }
  }
}

}  // namespace
}  // namespace chart_trace_test
