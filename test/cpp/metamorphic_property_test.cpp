// Relations between two runs of the core that must hold whatever the results are. They need no
// oracle, so a mistake made twice would still show here.
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <string>
#include <utility>

#include "dispatch/autotrace.hpp"
#include "grouping/box_bubble.hpp"
#include "grouping/check_groups.hpp"
#include "grouping/fission_algm.hpp"
#include "grouping/horizontal_grouping_algm.hpp"
#include "grouping/vertical_compartments.hpp"
#include "primitives/check_solid_filled.hpp"
#include "primitives/cluster_algm.hpp"
#include "primitives/point_density.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

const std::vector<std::string>& all_modes() {
  static const std::vector<std::string> modes = {"point_density",
                                                 "points_curves-fission",
                                                 "points_curves-horizontal",
                                                 "points-horizontal",
                                                 "points-fission",
                                                 "curves-horizontal",
                                                 "curves-fission",
                                                 "bar_horizontal-fission",
                                                 "bar_vertical-fission",
                                                 "bar_horizontal-horizontal",
                                                 "bar_vertical-horizontal",
                                                 "histogram",
                                                 "step_size_graph"};
  return modes;
}

oracle::Points traced(const Case& made, const std::string& mode) {
  const Autotrace run(made.x, made.y, made.step, mode, made.fraction);
  return {run.x_autotrace_func(), run.y_autotrace_func()};
}

testing::AssertionResult same_trace(const oracle::Points& got, const oracle::Points& want) {
  return same_points(got.x, got.y, want);
}

Doubles times(Doubles values, double factor) {
  for (double& value : values) value *= factor;
  return values;
}

oracle::Groups groups_of(const Fission_algm& fission) {
  return {values_of(fission.x_groups_func()), values_of(fission.y_groups_func())};
}

// Far enough from overflow and underflow for a power of two to scale every intermediate exactly,
// the single-precision ones included.
bool scales_exactly(double value) {
  return value == 0.0 || (std::fabs(value) > 1.0e-9 && std::fabs(value) < 1.0e17);
}

bool scales_exactly(const Case& made) {
  const auto check = [](double value) { return scales_exactly(value); };
  return check(made.step) && std::all_of(made.x.begin(), made.x.end(), check) &&
         std::all_of(made.y.begin(), made.y.end(), check);
}

TEST(Metamorphic, doubling_coordinates_and_step_doubles_every_result) {
  int scaled = 0;
  holds_on_all_bounded_cases([&scaled](const Case& made) {
    if (!scales_exactly(made)) return testing::AssertionSuccess();
    ++scaled;
    Case doubled = made;
    doubled.x = times(made.x, 2.0);
    doubled.y = times(made.y, 2.0);
    doubled.step = made.step * 2.0;
    const std::string& mode = all_modes()[(made.seed + made.x.size()) % all_modes().size()];
    oracle::Points want = traced(made, mode);
    want = {times(want.x, 2.0), times(want.y, 2.0)};
    return same_trace(traced(doubled, mode), want);
  });
  EXPECT_GT(scaled, 0);
}

TEST(Metamorphic, turning_the_picture_by_half_a_turn_turns_the_connected_groups) {
  holds_on_all_cases([](const Case& made) {
    const Fission_algm turned(times(made.x, -1.0), times(made.y, -1.0), made.step);
    oracle::Groups want = groups_of(Fission_algm(made.x, made.y, made.step));
    for (Doubles& group : want.x) group = times(group, -1.0);
    for (Doubles& group : want.y) group = times(group, -1.0);
    return same_groups(turned.x_groups_func(), turned.y_groups_func(), want);
  });
}

TEST(Metamorphic, swapping_x_and_y_swaps_connected_groups_clusters_and_chains) {
  holds_on_all_cases([](const Case& made) {
    const Fission_algm fission(made.x, made.y, made.step);
    const Fission_algm swapped_fission(made.y, made.x, made.step);
    const Cluster_algm cluster(made.x, made.y, made.fraction);
    const Cluster_algm swapped_cluster(made.y, made.x, made.fraction);
    const Groups_of_doubles chain = values_of(point_density(made.x, made.y, made.fraction));
    Groups_of_doubles swapped_chain = values_of(point_density(made.y, made.x, made.fraction));
    std::reverse(swapped_chain.begin(), swapped_chain.end());
    return all_of({same_groups(swapped_fission.y_groups_func(), swapped_fission.x_groups_func(),
                               groups_of(fission)),
                   same_bits(swapped_cluster.arr_y_centroid(), cluster.arr_x_centroid()),
                   same_bits(swapped_cluster.arr_x_centroid(), cluster.arr_y_centroid()),
                   same_bits(swapped_chain, chain)});
  });
}

TEST(Metamorphic, swapping_x_and_y_does_not_change_whether_a_group_is_solid) {
  holds_on_all_cases([](const Case& made) {
    if (made.x.empty()) return testing::AssertionSuccess();
    if (check_solid_filled(made.x, made.y, made.step) ==
        check_solid_filled(made.y, made.x, made.step)) {
      return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "one is solid, the other is not";
  });
}

// With a negative step, or where two infinities are subtracted, the order does matter.
TEST(Metamorphic, whether_runs_touch_does_not_depend_on_their_order) {
  int compared = 0;
  holds_on_all_cases([&compared](const Case& made) {
    if (made.x.empty() || !scales_exactly(made) || made.step < 0.0) {
      return testing::AssertionSuccess();
    }
    ++compared;
    if (check_groups(made.x, made.y, made.step) == check_groups(made.y, made.x, made.step)) {
      return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "one touches, the other does not";
  });
  EXPECT_GT(compared, 0);
}

// The bits of all points of all groups, sorted: equal for two lists with the same points.
using Point_bits = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

std::uint64_t bits_with_one_nan(double value) {
  return bits_of(std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value);
}

Point_bits sorted_bits(const Groups_of_doubles& x, const Groups_of_doubles& y) {
  Point_bits bits;
  for (std::size_t k = 0; k < x.size(); ++k) {
    for (std::size_t i = 0; i < x[k].size(); ++i) {
      bits.emplace_back(bits_with_one_nan(x[k][i]), bits_with_one_nan(y[k].at(i)));
    }
  }
  std::sort(bits.begin(), bits.end());
  return bits;
}

TEST(Metamorphic, every_point_is_in_exactly_one_group_and_no_group_is_empty) {
  holds_on_all_cases([](const Case& made) {
    const Fission_algm fission(made.x, made.y, made.step);
    const Horizontal_grouping_algm horizontal(made.x, made.y, made.step);
    const oracle::Groups connected = groups_of(fission);
    const oracle::Groups rows = {values_of(horizontal.x_groups_func()),
                                 values_of(horizontal.y_groups_func())};
    for (const oracle::Groups& groups : {connected, rows}) {
      if (groups.x.size() != groups.y.size()) return testing::AssertionFailure() << "not parallel";
      for (const Doubles& group : groups.x) {
        if (group.empty()) return testing::AssertionFailure() << "an empty group";
      }
      if (sorted_bits(groups.x, groups.y) != sorted_bits({made.x}, {made.y})) {
        return testing::AssertionFailure() << "points lost, doubled or changed";
      }
    }
    return testing::AssertionSuccess();
  });
}

// The number of connected components by union and find over all pairs: another algorithm, without
// any order in it.
std::size_t component_count(const Case& made) {
  std::vector<std::size_t> parent(made.x.size());
  std::iota(parent.begin(), parent.end(), std::size_t{0});
  const auto root = [&parent](std::size_t i) {
    while (parent[i] != i) i = parent[i] = parent[parent[i]];
    return i;
  };
  for (std::size_t i = 0; i < parent.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const bool near =
          std::fabs(made.x[i] - made.x[j]) <= 1.5 && std::fabs(made.y[i] - made.y[j]) <= 1.5;
      if (near) parent[root(i)] = root(j);
    }
  }
  std::size_t count = 0;
  for (std::size_t i = 0; i < parent.size(); ++i) {
    if (parent[i] == i) ++count;
  }
  return count;
}

TEST(Metamorphic, fission_makes_as_many_groups_as_there_are_connected_components) {
  int counted = 0;
  holds_on_all_cases([&counted](const Case& made) {
    // Differences of whole and half pixels of this size are exact.
    const auto whole_or_half = [](double value) {
      return std::fabs(value) < 1.0e12 && std::floor(value * 2.0) == value * 2.0;
    };
    if (!std::all_of(made.x.begin(), made.x.end(), whole_or_half) ||
        !std::all_of(made.y.begin(), made.y.end(), whole_or_half)) {
      return testing::AssertionSuccess();
    }
    ++counted;
    const std::size_t got = Fission_algm(made.x, made.y, 1.0).x_groups_func().size();
    const std::size_t want = component_count(made);
    if (got == want) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "got " << got << " groups, want " << want;
  });
  EXPECT_GT(counted, 0);
}

TEST(Metamorphic, points_with_curves_are_the_points_followed_by_the_curves) {
  holds_on_all_cases([](const Case& made) {
    for (const std::string method : {"-fission", "-horizontal"}) {
      oracle::Points want = traced(made, "points" + method);
      const oracle::Points curves = traced(made, "curves" + method);
      want.x.insert(want.x.end(), curves.x.begin(), curves.x.end());
      want.y.insert(want.y.end(), curves.y.begin(), curves.y.end());
      const auto result = same_trace(traced(made, "points_curves" + method), want);
      if (!result) return result;
    }
    return testing::AssertionSuccess();
  });
}

TEST(Metamorphic, a_parameter_that_a_mode_does_not_use_has_no_effect) {
  holds_on_all_bounded_cases([](const Case& made) {
    Case other_step = made;
    other_step.step = made.step * 3.0 + 1.0;
    Case other_fraction = made;
    other_fraction.fraction = made.fraction == 0.05 ? 0.5 : 0.05;
    const std::size_t last = all_modes().size() - 1;
    const std::string& no_fraction = all_modes()[last - (made.seed + made.x.size()) % 6];
    return all_of({same_trace(traced(other_step, "point_density"), traced(made, "point_density")),
                   same_trace(traced(other_fraction, no_fraction), traced(made, no_fraction))});
  });
}

TEST(Metamorphic, a_mode_that_is_not_in_the_table_gives_nothing) {
  holds_on_all_cases([](const Case& made) {
    // One letter of a known mode changed, dropped or added.
    Random random(made.seed);
    std::string mode = random.pick(all_modes());
    const auto at = static_cast<std::size_t>(random.below(mode.size()));
    switch (random.below(4)) {
      case 0:
        mode[at] = static_cast<char>(mode[at] ^ 0x20);
        break;
      case 1:
        mode.erase(at, 1);
        break;
      case 2:
        mode.insert(at, 1, '\0');
        break;
      default:
        mode += ' ';
    }
    return same_trace(traced(made, mode), {});
  });
}

}  // namespace
}  // namespace chart_trace_test
