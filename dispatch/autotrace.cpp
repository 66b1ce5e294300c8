#include "dispatch/autotrace.hpp"

#include <string_view>

#include "extractors/bar_algm.hpp"
#include "extractors/histogram_algm.hpp"
#include "extractors/points_curves_algm.hpp"
#include "extractors/step_size_graph_algm.hpp"
#include "primitives/cluster_algm.hpp"

namespace {

struct Input {
  std::vector<double> x;
  std::vector<double> y;
  double pixel_step;
  double cluster_fraction;
};

struct Output {
  std::vector<double> x;
  std::vector<double> y;
};

Output cluster_centroids(Input in) {
  Cluster_algm clusters(std::move(in.x), std::move(in.y), in.cluster_fraction);
  return {std::move(clusters).arr_x_centroid(), std::move(clusters).arr_y_centroid()};
}

// The grouping methods that modes name; the text after the hyphen of a mode is never parsed.
constexpr char fission[] = "fission";
constexpr char horizontal[] = "horizontal";

// A result vector of an extractor, by the accessor that copies it out.
template <typename Extractor>
using Result = std::vector<double> (Extractor::*)() const&;

using Points = Points_curves_algm;
template <const char* method, Result<Points> x_of, Result<Points> y_of>
Output points_curves(Input in) {
  const Points traced(std::move(in.x), std::move(in.y), in.pixel_step, method, in.cluster_fraction);
  return {(traced.*x_of)(), (traced.*y_of)()};
}

using Bars = Bar_algm;
template <const char* method, Result<Bars> x_of, Result<Bars> y_of>
Output bars(Input in) {
  const Bars traced(std::move(in.x), std::move(in.y), in.pixel_step, method);
  return {(traced.*x_of)(), (traced.*y_of)()};
}

Output histogram(Input in) {
  const Histogram_algm traced(std::move(in.x), std::move(in.y), in.pixel_step);
  return {traced.x_hist_func(), traced.y_hist_func()};
}

Output step_size_graph(Input in) {
  const Step_size_graph_algm traced(std::move(in.x), std::move(in.y), in.pixel_step);
  return {traced.x_step_func(), traced.y_step_func()};
}

struct Row {
  std::string_view mode;
  Output (*run)(Input);
};

constexpr Row modes[] = {
    {"point_density", cluster_centroids},
    {"points_curves-fission",
     points_curves<fission, &Points::x_get_points_curves, &Points::y_get_points_curves>},
    {"points_curves-horizontal",
     points_curves<horizontal, &Points::x_get_points_curves, &Points::y_get_points_curves>},
    {"points-horizontal", points_curves<horizontal, &Points::x_get_points, &Points::y_get_points>},
    {"points-fission", points_curves<fission, &Points::x_get_points, &Points::y_get_points>},
    {"curves-horizontal", points_curves<horizontal, &Points::x_get_curves, &Points::y_get_curves>},
    {"curves-fission", points_curves<fission, &Points::x_get_curves, &Points::y_get_curves>},
    {"bar_horizontal-fission", bars<fission, &Bars::x_horizontal_bar, &Bars::y_horizontal_bar>},
    {"bar_vertical-fission", bars<fission, &Bars::x_vertical_bar, &Bars::y_vertical_bar>},
    {"bar_horizontal-horizontal",
     bars<horizontal, &Bars::x_horizontal_bar, &Bars::y_horizontal_bar>},
    {"bar_vertical-horizontal", bars<horizontal, &Bars::x_vertical_bar, &Bars::y_vertical_bar>},
    {"histogram", histogram},
    {"step_size_graph", step_size_graph},
};

}  // namespace

Autotrace::Autotrace(std::vector<double> x, std::vector<double> y, double pixel_step,
                     std::string mode, double cluster_fraction)
    : x_in(std::move(x)), y_in(std::move(y)), pixel_step(pixel_step), mode(std::move(mode)) {
  for (const Row& row : modes) {
    if (row.mode != this->mode) continue;
    Output out = row.run({std::move(x_in), std::move(y_in), this->pixel_step, cluster_fraction});
    x_out = std::move(out.x);
    y_out = std::move(out.y);
    return;
  }
}
