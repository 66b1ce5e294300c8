// Each of the thirteen modes from end to end, held against the oracle bit for bit.
#include <algorithm>
#include <string>

#include "dispatch/autotrace.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

bool cuts_compartments(const std::string& mode) {
  return mode == "histogram" || mode == "step_size_graph";
}

class Autotrace_property : public testing::TestWithParam<std::string> {};

TEST_P(Autotrace_property, results_equal_the_oracle) {
  const std::string mode = GetParam();
  const Check check = [&mode](const Case& made) {
    const Autotrace got(made.x, made.y, made.step, mode, made.fraction);
    return same_points(got.x_autotrace_func(), got.y_autotrace_func(),
                       oracle::trace(made.x, made.y, made.step, mode, made.fraction));
  };
  if (cuts_compartments(mode)) {
    holds_on_all_bounded_cases(check);
  } else {
    holds_on_all_cases(check);
  }
}

INSTANTIATE_TEST_SUITE_P(every_mode, Autotrace_property,
                         testing::Values("point_density", "points_curves-fission",
                                         "points_curves-horizontal", "points-horizontal",
                                         "points-fission", "curves-horizontal", "curves-fission",
                                         "bar_horizontal-fission", "bar_vertical-fission",
                                         "bar_horizontal-horizontal", "bar_vertical-horizontal",
                                         "histogram", "step_size_graph"),
                         [](const testing::TestParamInfo<std::string>& mode) {
                           std::string name = mode.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace chart_trace_test
