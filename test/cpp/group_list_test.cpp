#include "primitives/group_list.hpp"

#include <gtest/gtest.h>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::Group_list;

TEST(Group_list, cuts_its_values_into_groups) {
  const Group_list list({3, -0.0, not_a_number, 1, 5}, {1, 1, 4, 5});
  ASSERT_EQ(list.size(), 4U);
  EXPECT_EQ(list[0].size(), 1U);
  EXPECT_EQ(list[1].size(), 0U);
  EXPECT_EQ(list[2].size(), 3U);
  EXPECT_EQ(list[2][2], 1);
  EXPECT_TRUE(same_bits(values_of(list.groups()), {{3}, {}, {-0.0, not_a_number, 1}, {5}}));
}

TEST(Group_list, leaves_out_the_values_behind_the_last_group) {
  EXPECT_TRUE(same_bits(values_of(Group_list({7, 8, 9}, {2}).groups()), {{7, 8}}));
}

TEST(Group_list, joins_the_values_of_some_groups) {
  const auto joined = [](const std::vector<std::size_t>& kept) {
    return Group_list({3, -0.0, not_a_number, 1, 5, 7}, {1, 1, 4, 5}).joined(kept);
  };
  EXPECT_TRUE(joined({}).empty());
  EXPECT_TRUE(same_bits(joined({0, 2}), {3, -0.0, not_a_number, 1}));
  EXPECT_TRUE(same_bits(joined({1, 2, 3}), {-0.0, not_a_number, 1, 5}));
  EXPECT_TRUE(same_bits(joined({3}), {5}));
  EXPECT_TRUE(same_bits(joined({0, 1, 2, 3}), {3, -0.0, not_a_number, 1, 5}));
}

TEST(Group_list, may_be_empty) { EXPECT_TRUE(Group_list().groups().empty()); }

}  // namespace
}  // namespace chart_trace_test
