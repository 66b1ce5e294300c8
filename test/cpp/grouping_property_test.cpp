// Every grouping class, held against the oracle bit for bit, order included.
#include "grouping/box_bubble.hpp"
#include "grouping/check_groups.hpp"
#include "grouping/fission_algm.hpp"
#include "grouping/horizontal_grouping_algm.hpp"
#include "grouping/vertical_compartments.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

testing::AssertionResult same_bubble(const Case& made, double box_size) {
  const Box_bubble got(made.x, made.y, box_size);
  const oracle::Bubble want = oracle::box_bubble(made.x, made.y, box_size);
  return all_of({same_points(got.x_group_func(), got.y_group_func(), want.group),
                 same_points(got.x_remain_func(), got.y_remain_func(), want.remain)});
}

TEST(Box_bubble_property, group_and_remainder_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    return all_of({same_bubble(made, made.step * 3.0), same_bubble(made, made.step),
                   same_bubble(made, made.step * 20.0)});
  });
}

TEST(Fission_algm_property, groups_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const Fission_algm got(made.x, made.y, made.step);
    return same_groups(got.x_groups_func(), got.y_groups_func(),
                       oracle::fission(made.x, made.y, made.step));
  });
}

TEST(Horizontal_grouping_algm_property, groups_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const Horizontal_grouping_algm got(made.x, made.y, made.step);
    return same_groups(got.x_groups_func(), got.y_groups_func(),
                       oracle::horizontal(made.x, made.y, made.step));
  });
}

TEST(Vertical_compartments_property, compartments_equal_the_oracle) {
  holds_on_all_bounded_cases([](const Case& made) {
    const Vertical_compartments got(made.x, made.y, made.step);
    return same_groups(got.x_groups_func(), got.y_groups_func(),
                       oracle::vertical_compartments(made.x, made.y, made.step));
  });
}

testing::AssertionResult same_touch(const std::vector<double>& a, const std::vector<double>& b,
                                    double step) {
  const bool got = check_groups(a, b, step);
  const bool want = oracle::check_groups(a, b, step);
  if (got == want) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "step " << text_of(step) << ", got " << got << ", want " << want << " for\n  a "
         << text_of(a) << "\n  b " << text_of(b);
}

TEST(Check_groups_property, touching_of_any_two_parts_equals_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    Random random(made.seed);
    for (int attempt = 0; attempt < 4 && made.x.size() >= 2; ++attempt) {
      const auto cut = random.between(1, static_cast<std::int64_t>(made.x.size()) - 1);
      const std::vector<double> a(made.x.begin(), made.x.begin() + cut);
      const std::vector<double> b(made.x.begin() + cut, made.x.end());
      const auto result = all_of({same_touch(a, b, made.step), same_touch(b, a, made.step),
                                  same_touch({a.back()}, {b.front()}, made.step),
                                  same_touch({b.front()}, {a.back()}, made.step)});
      if (!result) return result;
    }
    return testing::AssertionSuccess();
  });
}

}  // namespace
}  // namespace chart_trace_test
