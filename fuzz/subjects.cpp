#include "fuzz/subjects.hpp"

#include <cstddef>
#include <vector>

#include "dispatch/autotrace.hpp"
#include "extractors/bar_algm.hpp"
#include "extractors/histogram_algm.hpp"
#include "extractors/points_curves_algm.hpp"
#include "extractors/step_size_graph_algm.hpp"
#include "grouping/box_bubble.hpp"
#include "grouping/check_groups.hpp"
#include "grouping/fission_algm.hpp"
#include "grouping/horizontal_grouping_algm.hpp"
#include "grouping/vertical_compartments.hpp"
#include "primitives/check_solid_filled.hpp"
#include "primitives/cluster_algm.hpp"
#include "primitives/group_of_arrays.hpp"
#include "primitives/point_density.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"
#include "test/cpp/property_cases.hpp"
#include "test/cpp/shapes.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_fuzz {
namespace {

using chart_trace_test::all_of;
using chart_trace_test::same_bits;
using chart_trace_test::same_groups;
using chart_trace_test::same_points;
using chart_trace_test::values_of;
using testing::AssertionResult;

// A width with which the compartments are not too many for the oracle.
double width_of(const Drawing& d) { return chart_trace_test::bounded_width(d.x, d.step, 1000); }

AssertionResult same_answer(std::int64_t got, std::int64_t want) {
  if (got == want) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "got " << got << ", want " << want;
}

AssertionResult fission(const Drawing& d) {
  const Fission_algm got(d.x, d.y, d.step);
  return same_groups(got.x_groups_func(), got.y_groups_func(), oracle::fission(d.x, d.y, d.step));
}

AssertionResult horizontal(const Drawing& d) {
  const Horizontal_grouping_algm got(d.x, d.y, d.step);
  return same_groups(got.x_groups_func(), got.y_groups_func(),
                     oracle::horizontal(d.x, d.y, d.step));
}

AssertionResult compartments(const Drawing& d) {
  const Vertical_compartments got(d.x, d.y, width_of(d));
  return same_groups(got.x_groups_func(), got.y_groups_func(),
                     oracle::vertical_compartments(d.x, d.y, width_of(d)));
}

AssertionResult box_bubble(const Drawing& d) {
  const Box_bubble got(d.x, d.y, d.step * 3.0);
  const oracle::Bubble want = oracle::box_bubble(d.x, d.y, d.step * 3.0);
  return all_of({same_points(got.x_group_func(), got.y_group_func(), want.group),
                 same_points(got.x_remain_func(), got.y_remain_func(), want.remain)});
}

AssertionResult touching(const Drawing& d) {
  if (d.x.empty()) return testing::AssertionSuccess();
  return all_of(
      {same_answer(check_groups(d.x, d.y, d.step), oracle::check_groups(d.x, d.y, d.step)),
       same_answer(check_groups(d.y, d.x, d.step), oracle::check_groups(d.y, d.x, d.step))});
}

AssertionResult solid_fill(const Drawing& d) {
  if (d.x.empty()) return testing::AssertionSuccess();
  return same_answer(check_solid_filled(d.x, d.y, d.step),
                     oracle::check_solid_filled(d.x, d.y, d.step));
}

AssertionResult clusters(const Drawing& d) {
  const Cluster_algm got(d.x, d.y, d.fraction);
  const oracle::Clusters want = oracle::cluster(d.x, d.y, d.fraction);
  const std::int32_t left = oracle::count_of(want.remaining.x);
  return all_of({same_points(got.arr_x_centroid(), got.arr_y_centroid(), want.centroids),
                 same_bits(got.cluster_radius(left),
                           oracle::cluster_radius(want.remaining, left, d.fraction))});
}

AssertionResult density_chain(const Drawing& d) {
  return same_bits(values_of(point_density(d.x, d.y, d.fraction)),
                   oracle::point_density(d.x, d.y, d.fraction));
}

AssertionResult points_curves(const Drawing& d, const char* method) {
  const Points_curves_algm got(d.x, d.y, d.step, method, d.fraction);
  const oracle::Points_curves want = oracle::points_curves(d.x, d.y, d.step, method, d.fraction);
  return all_of(
      {same_points(got.x_get_points(), got.y_get_points(), want.points),
       same_points(got.x_get_curves(), got.y_get_curves(), want.curves),
       same_points(got.x_get_points_curves(), got.y_get_points_curves(), want.points_curves)});
}

AssertionResult bars(const Drawing& d, const char* method) {
  const Bar_algm got(d.x, d.y, d.step, method);
  const oracle::Bars want = oracle::bars(d.x, d.y, d.step, method);
  return all_of({same_points(got.x_vertical_bar(), got.y_vertical_bar(), want.vertical),
                 same_points(got.x_horizontal_bar(), got.y_horizontal_bar(), want.horizontal)});
}

AssertionResult histogram(const Drawing& d) {
  const Histogram_algm got(d.x, d.y, width_of(d));
  return same_points(got.x_hist_func(), got.y_hist_func(),
                     oracle::histogram(d.x, d.y, width_of(d)));
}

AssertionResult step_graph(const Drawing& d) {
  const Step_size_graph_algm got(d.x, d.y, width_of(d));
  return same_points(got.x_step_func(), got.y_step_func(),
                     oracle::step_graph(d.x, d.y, width_of(d)));
}

AssertionResult mode(const Drawing& d, const char* name) {
  const Autotrace got(d.x, d.y, width_of(d), name, d.fraction);
  return same_points(got.x_autotrace_func(), got.y_autotrace_func(),
                     oracle::trace(d.x, d.y, width_of(d), name, d.fraction));
}

// What is asked of two points in a row, and of the box between them.
AssertionResult pair(double x1, double y1, double x2, double y2, double step) {
  const std::vector<double> box_x = {x1, x2};
  const std::vector<double> box_y = {y2, y1};
  const std::int32_t got = chart_trace::to_int32(x1 / step);
  const std::int32_t want = oracle::to_int32(x1 / step);
  return all_of({same_bits(distance(x1, y1, x2, y2), oracle::distance(x1, y1, x2, y2)),
                 same_answer(check_point_in_box(x1, y2, box_x, box_y),
                             oracle::check_point_in_box(x1, y2, box_x, box_y)),
                 same_answer(check_point_in_box(step, x2, box_x, box_y),
                             oracle::check_point_in_box(step, x2, box_x, box_y)),
                 same_answer(got, want),
                 same_answer(chart_trace::wrapping_product(got, chart_trace::to_int32(y2)),
                             oracle::wrapping_product(want, oracle::to_int32(y2)))});
}

AssertionResult numbers(const Drawing& d) {
  for (std::size_t i = 1; i < d.x.size(); ++i) {
    const AssertionResult result = pair(d.x[i - 1], d.y[i - 1], d.x[i], d.y[i], d.step);
    if (!result) return result;
  }
  return all_of({same_bits(average_of_numbers(d.x), oracle::average_of_numbers(d.x)),
                 same_bits(average_of_numbers(d.y), oracle::average_of_numbers(d.y)),
                 same_bits(array_distances(d.x, d.y), oracle::array_distances(d.x, d.y)),
                 same_answer(min_index(d.x), oracle::min_index(d.x)),
                 same_answer(min_index(d.y), oracle::min_index(d.y)),
                 same_bits(replicate_vector(d.x), oracle::replicate_vector(d.x)),
                 same_bits(Group_of_arrays(d.y).array(), oracle::replicate_vector(d.y))});
}

struct Subject {
  const char* name;
  AssertionResult (*holds)(const Drawing&);
};

// Entries are only ever added at the end: their places are part of what the corpus means.
constexpr Subject subjects[] = {
    {"Fission_algm", fission},
    {"Horizontal_grouping_algm", horizontal},
    {"Vertical_compartments", compartments},
    {"Box_bubble", box_bubble},
    {"check_groups", touching},
    {"check_solid_filled", solid_fill},
    {"Cluster_algm", clusters},
    {"point_density", density_chain},
    {"Points_curves_algm, fission", [](const Drawing& d) { return points_curves(d, "fission"); }},
    {"Points_curves_algm, horizontal",
     [](const Drawing& d) { return points_curves(d, "horizontal"); }},
    {"Bar_algm, fission", [](const Drawing& d) { return bars(d, "fission"); }},
    {"Bar_algm, horizontal", [](const Drawing& d) { return bars(d, "horizontal"); }},
    {"Histogram_algm", histogram},
    {"Step_size_graph_algm", step_graph},
    {"point_density", [](const Drawing& d) { return mode(d, "point_density"); }},
    {"points_curves-fission", [](const Drawing& d) { return mode(d, "points_curves-fission"); }},
    {"points_curves-horizontal",
     [](const Drawing& d) { return mode(d, "points_curves-horizontal"); }},
    {"points-horizontal", [](const Drawing& d) { return mode(d, "points-horizontal"); }},
    {"points-fission", [](const Drawing& d) { return mode(d, "points-fission"); }},
    {"curves-horizontal", [](const Drawing& d) { return mode(d, "curves-horizontal"); }},
    {"curves-fission", [](const Drawing& d) { return mode(d, "curves-fission"); }},
    {"bar_horizontal-fission", [](const Drawing& d) { return mode(d, "bar_horizontal-fission"); }},
    {"bar_vertical-fission", [](const Drawing& d) { return mode(d, "bar_vertical-fission"); }},
    {"bar_horizontal-horizontal",
     [](const Drawing& d) { return mode(d, "bar_horizontal-horizontal"); }},
    {"bar_vertical-horizontal",
     [](const Drawing& d) { return mode(d, "bar_vertical-horizontal"); }},
    {"histogram", [](const Drawing& d) { return mode(d, "histogram"); }},
    {"step_size_graph", [](const Drawing& d) { return mode(d, "step_size_graph"); }},
    {"an unknown mode", [](const Drawing& d) { return mode(d, "points-fission "); }},
    {"numbers and lists of them", numbers},
};

}  // namespace

std::size_t subject_count() { return std::size(subjects); }

std::string difference(const Drawing& drawing) {
  const Subject& subject = subjects[drawing.subject % subject_count()];
  const AssertionResult result = subject.holds(drawing);
  if (result) return "";
  return std::string(subject.name) + " with step " + chart_trace_test::text_of(drawing.step) +
         " and fraction " + chart_trace_test::text_of(drawing.fraction) + ": " + result.message() +
         "\n  x " + chart_trace_test::text_of(drawing.x) + "\n  y " +
         chart_trace_test::text_of(drawing.y);
}

}  // namespace chart_trace_fuzz
