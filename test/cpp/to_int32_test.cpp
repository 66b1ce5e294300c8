#include "primitives/to_int32.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::count_of;
using chart_trace::to_int32;
using chart_trace::wrapping_product;

constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

// A container that claims a size no test can allocate.
struct Claims {
  std::size_t claimed;
  std::size_t size() const { return claimed; }
};

TEST(To_int32, truncates_towards_zero) {
  EXPECT_EQ(to_int32(2.0), 2);
  EXPECT_EQ(to_int32(2.9), 2);
  EXPECT_EQ(to_int32(-2.9), -2);
  EXPECT_EQ(to_int32(0.9999999999999999), 0);
  EXPECT_EQ(to_int32(-0.9999999999999999), 0);
  EXPECT_EQ(to_int32(-0.0), 0);
  EXPECT_EQ(to_int32(5e-324), 0);
}

TEST(To_int32, keeps_the_ends_of_the_range) {
  EXPECT_EQ(to_int32(2147483647.0), largest);
  EXPECT_EQ(to_int32(-2147483648.0), smallest);
  EXPECT_EQ(to_int32(-2147483647.0), -largest);
}

TEST(To_int32, truncates_before_it_judges_the_range) {
  EXPECT_EQ(to_int32(2147483647.9999998), largest);
  EXPECT_EQ(to_int32(-2147483648.9999995), smallest);
}

TEST(To_int32, too_large_or_too_small_is_the_smallest_integer) {
  EXPECT_EQ(to_int32(2147483648.0), smallest);
  EXPECT_EQ(to_int32(4294967297.0), smallest);
  EXPECT_EQ(to_int32(1e300), smallest);
  EXPECT_EQ(to_int32(-2147483649.0), smallest);
  EXPECT_EQ(to_int32(-1e300), smallest);
}

TEST(To_int32, nan_and_infinities_are_the_smallest_integer) {
  EXPECT_EQ(to_int32(not_a_number), smallest);
  EXPECT_EQ(to_int32(-not_a_number), smallest);
  EXPECT_EQ(to_int32(infinity), smallest);
  EXPECT_EQ(to_int32(-infinity), smallest);
}

TEST(Wrapping_product, is_the_plain_product_where_it_fits) {
  EXPECT_EQ(wrapping_product(3, -4), -12);
  EXPECT_EQ(wrapping_product(-3, -4), 12);
  EXPECT_EQ(wrapping_product(0, smallest), 0);
  EXPECT_EQ(wrapping_product(46340, 46340), 2147395600);
}

TEST(Wrapping_product, wraps_modulo_two_to_the_32) {
  EXPECT_EQ(wrapping_product(65536, 65536), 0);
  EXPECT_EQ(wrapping_product(65537, 65537), 131073);
  EXPECT_EQ(wrapping_product(46341, 46341), -2147479015);
  EXPECT_EQ(wrapping_product(largest, 2), -2);
  EXPECT_EQ(wrapping_product(smallest, 3), smallest);
  EXPECT_EQ(wrapping_product(smallest, -1), smallest);
  EXPECT_EQ(wrapping_product(smallest, smallest), 0);
}

TEST(Count_of, is_the_size_as_a_signed_32_bit_integer) {
  EXPECT_EQ(count_of(std::vector<double>{}), 0);
  EXPECT_EQ(count_of(std::vector<double>(7)), 7);
  EXPECT_EQ(count_of(Claims{2147483647U}), largest);
  EXPECT_EQ(count_of(Claims{2147483648U}), smallest);
  EXPECT_EQ(count_of(Claims{4294967295U}), -1);
  EXPECT_EQ(count_of(Claims{4294967301U}), 5);
}

}  // namespace
}  // namespace chart_trace_test
