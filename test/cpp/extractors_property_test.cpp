// Every extractor class, all its results, held against the oracle bit for bit.
#include <string>

#include "extractors/bar_algm.hpp"
#include "extractors/histogram_algm.hpp"
#include "extractors/points_curves_algm.hpp"
#include "extractors/step_size_graph_algm.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

// Mostly the two methods there are, sometimes a string that is neither.
std::string some_method(const Case& made) {
  static const std::vector<std::string> methods = {"fission", "horizontal", "fission", "horizontal",
                                                   "fission", "fission ",   "Fission", "fissio",
                                                   "fission", "",           "fission", "vertical"};
  return methods[static_cast<std::size_t>((made.seed + made.x.size()) % methods.size())];
}

TEST(Points_curves_algm_property, all_three_results_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const std::string method = some_method(made);
    const Points_curves_algm got(made.x, made.y, made.step, method, made.fraction);
    const oracle::Points_curves want =
        oracle::points_curves(made.x, made.y, made.step, method, made.fraction);
    return all_of(
        {same_points(got.x_get_points(), got.y_get_points(), want.points),
         same_points(got.x_get_curves(), got.y_get_curves(), want.curves),
         same_points(got.x_get_points_curves(), got.y_get_points_curves(), want.points_curves)});
  });
}

TEST(Bar_algm_property, both_readings_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const std::string method = some_method(made);
    const Bar_algm got(made.x, made.y, made.step, method);
    const oracle::Bars want = oracle::bars(made.x, made.y, made.step, method);
    return all_of({same_points(got.x_vertical_bar(), got.y_vertical_bar(), want.vertical),
                   same_points(got.x_horizontal_bar(), got.y_horizontal_bar(), want.horizontal)});
  });
}

TEST(Histogram_algm_property, bars_equal_the_oracle) {
  holds_on_all_bounded_cases([](const Case& made) {
    const Histogram_algm got(made.x, made.y, made.step);
    return same_points(got.x_hist_func(), got.y_hist_func(),
                       oracle::histogram(made.x, made.y, made.step));
  });
}

TEST(Step_size_graph_algm_property, polylines_equal_the_oracle) {
  holds_on_all_bounded_cases([](const Case& made) {
    const Step_size_graph_algm got(made.x, made.y, made.step);
    return same_points(got.x_step_func(), got.y_step_func(),
                       oracle::step_graph(made.x, made.y, made.step));
  });
}

}  // namespace
}  // namespace chart_trace_test
