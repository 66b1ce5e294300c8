#include "extractors/points_curves_algm.hpp"

#include <cstddef>

#include "grouping/group_by_method.hpp"
#include "primitives/check_solid_filled.hpp"
#include "primitives/cluster_algm.hpp"
#include "primitives/point_density.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/values.hpp"

namespace {

void append(std::vector<double>& values, chart_trace::Values more) {
  values.insert(values.end(), more.begin(), more.end());
}

struct Centroids {
  std::vector<double> x;
  std::vector<double> y;
};
// A function of its own, so that the memory of the pixels is free again when it returns.
Centroids centroids_of(chart_trace::Point_list points, double cluster_fraction) {
  Cluster_algm clusters(std::move(points), cluster_fraction);
  return {std::move(clusters).arr_x_centroid(), std::move(clusters).arr_y_centroid()};
}

}  // namespace

Points_curves_algm::Points_curves_algm(std::vector<double> x, std::vector<double> y,
                                       double pixel_step, std::string method,
                                       double cluster_fraction)
    : x_points(std::move(x)),
      y_points(std::move(y)),
      pixel_step(pixel_step),
      cluster_fraction(cluster_fraction),
      num_groups(0) {
  groups_ = chart_trace::group_by_method(std::move(x_points), std::move(y_points), this->pixel_step,
                                         method);
  num_groups = chart_trace::count_of(groups_);
  points_curves();
}

void Points_curves_algm::points_curves() {
  reduce_curve(sort_out_groups());
  append(x_points_curves, x_centres);
  append(y_points_curves, y_centres);
  append(x_points_curves, x_curves);
  append(y_points_curves, y_curves);
}

// A solid group becomes its centre, every other group leaves its pixels to the curve.
chart_trace::Point_list Points_curves_algm::sort_out_groups() {
  std::vector<std::size_t> curve_groups;
  for (std::int32_t k = 0; k < num_groups; ++k) {
    const auto group = static_cast<std::size_t>(k);
    const chart_trace::Group_figures figures = groups_.figures(group);
    if (!chart_trace::is_solid_filled(figures.x, figures.y, groups_.count(group), pixel_step)) {
      curve_groups.push_back(group);
      continue;
    }
    x_centres.push_back(figures.mean_x);
    y_centres.push_back(figures.mean_y);
  }
  return std::move(groups_).joined(curve_groups);
}

// Curve pixels in, thinned chain of centroids out.
void Points_curves_algm::reduce_curve(chart_trace::Point_list pixels) {
  if (pixels.size() == 0) return;
  Centroids centroids = centroids_of(std::move(pixels), cluster_fraction);
  std::vector<Group_of_arrays> chain =
      point_density(std::move(centroids.x), std::move(centroids.y), cluster_fraction);
  if (chain.size() != 2) return;  // no centroids: the marker of an empty set
  x_curves = std::move(chain[0]).array();
  y_curves = std::move(chain[1]).array();
}
