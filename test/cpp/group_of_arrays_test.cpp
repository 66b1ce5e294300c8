#include "primitives/group_of_arrays.hpp"

#include <gtest/gtest.h>

#include <utility>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {
namespace {

TEST(Group_of_arrays, holds_the_values_in_order) {
  const Group_of_arrays group({3, -0.0, not_a_number, 1});
  EXPECT_TRUE(same_bits(group.array(), {3, -0.0, not_a_number, 1}));
}

TEST(Group_of_arrays, may_be_empty) { EXPECT_TRUE(same_bits(Group_of_arrays({}).array(), {})); }

TEST(Group_of_arrays, array_is_a_copy_whose_change_leaves_the_group_unchanged) {
  const Group_of_arrays group({1, 2, 3});
  Doubles values = group.array();
  values[1] = 99;
  values.push_back(4);
  EXPECT_TRUE(same_bits(group.array(), {1, 2, 3}));
}

TEST(Group_of_arrays, does_not_follow_the_vector_it_was_made_from) {
  Doubles values = {1, 2, 3};
  const Group_of_arrays group(values);
  values[0] = 99;
  EXPECT_TRUE(same_bits(group.array(), {1, 2, 3}));
}

TEST(Group_of_arrays, copies_are_independent) {
  Group_of_arrays group({1, 2});
  const Group_of_arrays copy = group;
  group = Group_of_arrays({7});
  EXPECT_TRUE(same_bits(copy.array(), {1, 2}));
  EXPECT_TRUE(same_bits(group.array(), {7}));
}

TEST(Group_of_arrays, thrown_away_gives_its_values_up) {
  Group_of_arrays group({1, 2});
  const Doubles values = std::move(group).array();
  EXPECT_TRUE(same_bits(values, {1, 2}));
}

}  // namespace
}  // namespace chart_trace_test
