#include "indexing/max_tree.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <vector>

#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::Max_tree;

constexpr double none = -std::numeric_limits<double>::infinity();

std::size_t first_above(const std::vector<double>& values, std::size_t from, double bound) {
  while (from < values.size() && !(values[from] > bound)) ++from;
  return from;
}

std::size_t last_of_the_largest(const std::vector<double>& values) {
  std::size_t largest = 0;
  for (std::size_t k = 0; k < values.size(); ++k) {
    if (values[k] >= values[largest]) largest = k;
  }
  return largest;
}

TEST(Max_tree, an_empty_tree_finds_nothing) {
  Max_tree<double> tree({});
  EXPECT_EQ(tree.first_from(0, [](double) { return true; }), 0U);
  EXPECT_EQ(tree.largest(), 0U);
}

TEST(Max_tree, finds_what_a_walk_finds_while_values_fall) {
  for (const std::size_t size : std::vector<std::size_t>{1, 8, 9, 65, 513}) {
    Random random(size);
    std::vector<double> values(size, 20);
    Max_tree<double> tree(values);
    for (int round = 0; round < 500; ++round) {
      const auto fallen = static_cast<std::size_t>(random.below(size));
      values[fallen] -= static_cast<double>(random.below(5));
      tree.lower(fallen, values[fallen]);
      const auto from = static_cast<std::size_t>(random.below(size));
      const auto bound = static_cast<double>(random.between(0, 21));
      ASSERT_EQ(tree.first_from(from, [=](double value) { return value > bound; }),
                first_above(values, from, bound));
      if (random.one_in(4)) {
        ASSERT_EQ(tree.largest(), last_of_the_largest(values));
      }
    }
  }
}

TEST(Max_tree, finds_what_a_walk_finds_while_values_are_taken_out) {
  for (const std::size_t size : std::vector<std::size_t>{1, 7, 8, 9, 63, 64, 65, 511, 512, 513}) {
    Random random(size);
    std::vector<double> values(size);
    for (double& value : values) value = static_cast<double>(random.between(-20, 20));
    Max_tree<double> tree(values);
    for (std::size_t left = size; left > 0; --left) {
      // Often none: then several values are taken out between one search and the next.
      const bool is_searched = random.below(2) == 0;
      for (int query = 0; is_searched && query < 20; ++query) {
        const auto from = static_cast<std::size_t>(random.below(size + 1));
        const auto bound = static_cast<double>(random.between(-21, 21));
        ASSERT_EQ(tree.first_from(from, [=](double value) { return value > bound; }),
                  first_above(values, from, bound));
        ASSERT_EQ(tree.largest(), last_of_the_largest(values));
      }
      std::size_t taken = static_cast<std::size_t>(random.below(size));
      while (values[taken] == none) taken = (taken + 1) % size;
      values[taken] = none;
      tree.remove(taken);
    }
    EXPECT_EQ(tree.first_from(0, [](double value) { return value > -100; }), size);
    EXPECT_EQ(tree.largest(), size);
  }
}

}  // namespace
}  // namespace chart_trace_test
