// The comparison every other test stands on can itself fail.
#include "test/cpp/same_bits.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace chart_trace_test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Same_bits, every_nan_equals_every_nan) {
  EXPECT_TRUE(same_bits(nan, -nan));
  EXPECT_FALSE(same_bits(nan, 0.0));
  EXPECT_FALSE(same_bits(0.0, nan));
}

TEST(Same_bits, minus_zero_differs_from_zero) {
  EXPECT_FALSE(same_bits(-0.0, 0.0));
  EXPECT_TRUE(same_bits(-0.0, -0.0));
}

TEST(Same_bits, the_last_bit_counts) {
  EXPECT_FALSE(same_bits(1.0, 1.0 + std::numeric_limits<double>::epsilon()));
}

TEST(Same_bits, vectors_differ_in_length_and_in_any_element) {
  EXPECT_TRUE(same_bits(Doubles{1, nan, -0.0}, {1, nan, -0.0}));
  EXPECT_FALSE(same_bits(Doubles{1, 2}, {1, 2, 3}));
  EXPECT_FALSE(same_bits(Doubles{1, 2, 3}, {1, 2}));
  EXPECT_FALSE(same_bits(Doubles{1, 2}, {1, 3}));
  EXPECT_FALSE(same_bits(Doubles{1, 2}, {2, 1}));
}

TEST(Same_bits, groups_differ_in_number_and_in_any_group) {
  EXPECT_TRUE(same_bits(Groups_of_doubles{{1}, {}}, {{1}, {}}));
  EXPECT_FALSE(same_bits(Groups_of_doubles{{1}}, {{1}, {}}));
  EXPECT_FALSE(same_bits(Groups_of_doubles{{1}, {2}}, {{1}, {3}}));
  EXPECT_FALSE(same_bits(Groups_of_doubles{{1, 2}}, {{1}, {2}}));
}

TEST(Same_bits, a_failure_names_the_first_difference) {
  const testing::AssertionResult result =
      same_bits(Groups_of_doubles{{7}, {1, -0.0}}, {{7}, {1, 0}});
  EXPECT_STREQ(result.message(),
               "group 1 of 2 (want 2 groups): first difference at index 1: got -0, want 0\n"
               "  got  [1, -0] (2 values)\n  want [1, 0] (2 values)");
}

}  // namespace
}  // namespace chart_trace_test
