// Every extractor class, all its results, held against the oracle bit for bit.
#include <cmath>
#include <limits>
#include <set>
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

// Three columns whose second height differs from the first by half a percent of all changes, give
// or take a few last bits, and a tall riser behind them: whether the line breaks there hangs on the
// order in which the share is divided and multiplied.
Case half_a_percent(std::uint64_t seed) {
  Random random(seed);
  const double infinity = std::numeric_limits<double>::infinity();
  const double change = 1.0 + random.fraction();
  double far = change * 200.0;
  for (std::int64_t bits = random.between(-3, 3); bits != 0; bits += bits < 0 ? 1 : -1) {
    far = std::nextafter(far, bits < 0 ? -infinity : infinity);
  }
  Case made;
  made.seed = seed;
  made.shape = "half a percent";
  made.x = {0.0, 1.0, 2.0};
  made.y = {0.0, change, far};
  if (random.one_in(2)) {
    for (double& height : made.y) height = -height;
  }
  for (int i = 0; i < 9; ++i) {
    made.x.push_back(3.0);
    made.y.push_back(made.y[2]);
  }
  made.step = 0.95;  // a compartment for each column
  return made;
}

TEST(Height_changes_property, jumps_of_about_half_a_percent_equal_the_oracle) {
  std::set<std::size_t> bar_counts;
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    const Case made = half_a_percent(seed);
    const Histogram_algm bars(made.x, made.y, made.step);
    const Step_size_graph_algm steps(made.x, made.y, made.step);
    ASSERT_TRUE(all_of({same_points(bars.x_hist_func(), bars.y_hist_func(),
                                    oracle::histogram(made.x, made.y, made.step)),
                        same_points(steps.x_step_func(), steps.y_step_func(),
                                    oracle::step_graph(made.x, made.y, made.step))}))
        << made.text();
    bar_counts.insert(bars.x_hist_func().size());
  }
  EXPECT_EQ(bar_counts, (std::set<std::size_t>{2, 3})) << "both sides of the edge must occur";
}

// A riser and a tread never share a compartment, so their x can only be equal where a mean leaves
// its compartment: here the sum of the tread's two x overflows, and the riser stands at infinity.
TEST(Step_size_graph_algm_property, a_riser_exactly_at_a_tread_counts_as_beside_it_at_both_ends) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> x = {1.5e308,  1.5e308,  infinity, infinity,
                                 infinity, infinity, infinity};
  const std::vector<double> y = {10, 10, 10, 8, 6, 4, 2};
  const oracle::Points want = {{infinity, infinity, infinity}, {2, 10}};
  const Step_size_graph_algm got(x, y, 2.0e307);
  EXPECT_TRUE(same_points(got.x_step_func(), got.y_step_func(), want));
  const oracle::Points literal = oracle::step_graph(x, y, 2.0e307);
  EXPECT_TRUE(same_points(literal.x, literal.y, want));
}

}  // namespace
}  // namespace chart_trace_test
