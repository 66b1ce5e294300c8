// Groups of points in both of their forms: as two lists of coordinates, and packed.
#include "primitives/groups.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "test/cpp/pixels.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::Groups;
using chart_trace::packed_set;
using chart_trace::Point_list;
using Ends = std::vector<std::uint32_t>;
using Kept = std::vector<std::size_t>;

Groups of_points(const Pixels& set, Ends ends) { return {set.x, set.y, std::move(ends)}; }
Groups of_packed(const Pixels& set, Ends ends) {
  auto pixels = packed_set(set.x, set.y);
  return {std::move(pixels->pixels), std::move(ends)};
}

// The points of a list in either form.
Pixels unpacked(const Point_list& points) {
  Pixels set{points.x, points.y};
  if (!points.pixels) return set;
  EXPECT_TRUE(set.x.empty() && set.y.empty());
  set = {Doubles(points.size()), Doubles(points.size())};
  points.pixels->unpack(set.x, set.y);
  return set;
}

testing::AssertionResult are_groups(const Groups& got, const Groups_of_doubles& x,
                                    const Groups_of_doubles& y) {
  return all_of({same_bits(values_of(got.x_groups()), x), same_bits(values_of(got.y_groups()), y)});
}

const Pixels six = pixels({{3, 9}, {0, 8}, {65535, 7}, {1, 6}, {5, 65535}, {2, 0}});

TEST(Groups, points_are_cut_into_groups_in_either_form) {
  for (const auto& form : {of_points, of_packed}) {
    const Groups groups = form(six, {1, 1, 4, 5});
    ASSERT_EQ(groups.size(), 4U);
    EXPECT_EQ(groups.count(0), 1U);
    EXPECT_EQ(groups.count(1), 0U);
    EXPECT_EQ(groups.count(2), 3U);
    EXPECT_EQ(groups.count(3), 1U);
    // The last point belongs to no group.
    EXPECT_TRUE(are_groups(groups, {{3}, {}, {0, 65535, 1}, {5}}, {{9}, {}, {8, 7, 6}, {65535}}));
  }
}

TEST(Groups, points_that_are_no_pixels_keep_their_bits) {
  const Groups groups({-0.0, not_a_number, 0.5}, {infinity, -0.0, 1e-320}, {2, 3});
  EXPECT_TRUE(are_groups(groups, {{-0.0, not_a_number}, {0.5}}, {{infinity, -0.0}, {1e-320}}));
}

TEST(Groups, the_points_of_some_groups_are_joined_in_either_form) {
  for (const auto& form : {of_points, of_packed}) {
    const auto joined = [&](const Kept& kept) {
      return unpacked(form(six, {1, 1, 4, 5}).joined(kept));
    };
    EXPECT_TRUE(same_points(joined({}).x, joined({}).y, {}));
    EXPECT_TRUE(same_points(joined({0, 2}).x, joined({0, 2}).y, {{3, 0, 65535, 1}, {9, 8, 7, 6}}));
    EXPECT_TRUE(same_points(joined({1, 2, 3}).x, joined({1, 2, 3}).y,
                            {{0, 65535, 1, 5}, {8, 7, 6, 65535}}));
    EXPECT_TRUE(same_points(joined({3}).x, joined({3}).y, {{5}, {65535}}));
    EXPECT_TRUE(same_points(joined({0, 1, 2, 3}).x, joined({0, 1, 2, 3}).y,
                            {{3, 0, 65535, 1, 5}, {9, 8, 7, 6, 65535}}));
  }
}

TEST(Groups, there_may_be_none) {
  EXPECT_EQ(Groups().size(), 0U);
  EXPECT_TRUE(are_groups(Groups(), {}, {}));
}

testing::AssertionResult has_figures(const chart_trace::Group_figures& got, const Doubles& x,
                                     const Doubles& y) {
  // Literally: summed from 0.0 in index order, divided once; the first of equals.
  const auto want = [](const Doubles& values) {
    double sum = 0.0;
    double min = values[0];
    double max = values[0];
    for (const double value : values) {
      sum += value;
      if (value < min) min = value;
      if (value > max) max = value;
    }
    return Doubles{sum / static_cast<std::int32_t>(values.size()), min, max};
  };
  return all_of({same_bits(Doubles{got.mean_x, got.x.min, got.x.max}, want(x)),
                 same_bits(Doubles{got.mean_y, got.y.min, got.y.max}, want(y))});
}

// A group between two others, from every place of four on and of every size around four; the
// others hold what must not count.
TEST(Groups, the_figures_of_a_group_are_its_own_in_either_form) {
  Random random(1);
  for (std::uint32_t before = 0; before < 5; ++before) {
    for (std::uint32_t size = 1; size < 14; ++size) {
      Pixels all{Doubles(before + size + 5, 0.0), Doubles(before + size + 5, 65535.0)};
      Pixels own;
      for (std::size_t i = before; i < before + size; ++i) {
        own.x.push_back(all.x[i] = static_cast<double>(1 + random.below(65535)));
        own.y.push_back(all.y[i] = static_cast<double>(random.below(65535)));
      }
      const Ends ends{before, before + size, before + size + 5};
      for (const auto& form : {of_points, of_packed}) {
        EXPECT_TRUE(has_figures(form(all, ends).figures(1), own.x, own.y))
            << size << " behind " << before;
      }
    }
  }
}

// So many that the columns of every fourth one add up to more than 32 bits hold.
TEST(Groups, the_figures_of_a_large_group_are_exact_in_either_form) {
  for (const std::size_t size : {262'143U, 262'144U, 262'148U, 262'151U, 600'001U}) {
    Pixels all{Doubles(size, 65535.0), Doubles(size, 65535.0)};
    all.x.back() = 7.0;
    all.y[size / 2] = 3.0;
    for (const auto& form : {of_points, of_packed}) {
      const Groups groups = form(all, {static_cast<std::uint32_t>(size)});
      EXPECT_TRUE(has_figures(groups.figures(0), all.x, all.y)) << size;
    }
  }
}

TEST(Groups, the_figures_of_points_that_are_no_pixels_pass_over_nan) {
  const Doubles x{2.5, not_a_number, -1.0};
  const Doubles y{not_a_number, 1.0, 2.0};
  EXPECT_TRUE(has_figures(Groups(x, y, {3}).figures(0), x, y));
}

}  // namespace
}  // namespace chart_trace_test
