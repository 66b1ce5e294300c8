#include "extractors/points_curves_algm.hpp"

#include <cstddef>
#include <optional>

#include "grouping/group_by_method.hpp"
#include "primitives/check_solid_filled.hpp"
#include "primitives/cluster_algm.hpp"
#include "primitives/point_density.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

namespace {

void append(std::vector<double>& values, chart_trace::Values more) {
  values.insert(values.end(), more.begin(), more.end());
}

struct Centroids {
  std::vector<double> x;
  std::vector<double> y;
};
// A function of its own, so that the memory of the pixels is free again when it returns.
Centroids centroids_of(std::vector<double> x, std::vector<double> y, double cluster_fraction) {
  Cluster_algm clusters(std::move(x), std::move(y), cluster_fraction);
  return {std::move(clusters).arr_x_centroid(), std::move(clusters).arr_y_centroid()};
}

// Large groups are seldom markers, so whether they are is asked before their means are found: half
// the time.
constexpr std::size_t large = 500;

// The figures of a group that is solid; nothing for others.
std::optional<chart_trace::Group_figures> figures_of_marker(chart_trace::Values x,
                                                            chart_trace::Values y,
                                                            double pixel_step) {
  const auto is_solid = [&](const chart_trace::Extremes& in_x, const chart_trace::Extremes& in_y) {
    return chart_trace::is_solid_filled(in_x, in_y, x.size(), pixel_step);
  };
  if (x.size() >= large && !is_solid(chart_trace::ends_of(x), chart_trace::ends_of(y)))
    return std::nullopt;
  const chart_trace::Group_figures figures = chart_trace::figures_of(x, y);
  if (!is_solid(figures.x, figures.y)) return std::nullopt;
  return figures;
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
  chart_trace::Groups groups = chart_trace::group_by_method(
      std::move(x_points), std::move(y_points), this->pixel_step, method);
  x_groups = std::move(groups.x);
  y_groups = std::move(groups.y);
  num_groups = chart_trace::count_of(x_groups);
  points_curves();
}

void Points_curves_algm::points_curves() {
  sort_out_groups();
  append(x_points_curves, x_centres);
  append(y_points_curves, y_centres);
  if (x_curves.empty()) return;
  reduce_curve();
  append(x_points_curves, x_curves);
  append(y_points_curves, y_curves);
}

// A solid group becomes its centre, every other group leaves its pixels to the curve.
void Points_curves_algm::sort_out_groups() {
  std::vector<std::size_t> curve_groups;
  for (std::int32_t k = 0; k < num_groups; ++k) {
    const auto group = static_cast<std::size_t>(k);
    const chart_trace::Values gx = x_groups[group];
    const chart_trace::Values gy = y_groups[group];
    const auto figures = figures_of_marker(gx, gy, pixel_step);
    if (!figures) {
      curve_groups.push_back(group);
      continue;
    }
    x_centres.push_back(figures->mean_x);
    y_centres.push_back(figures->mean_y);
  }
  x_curves = std::move(x_groups).joined(curve_groups);
  y_curves = std::move(y_groups).joined(curve_groups);
}

// Curve pixels in, thinned chain of centroids out.
void Points_curves_algm::reduce_curve() {
  Centroids centroids = centroids_of(std::move(x_curves), std::move(y_curves), cluster_fraction);
  std::vector<Group_of_arrays> chain =
      point_density(std::move(centroids.x), std::move(centroids.y), cluster_fraction);
  x_curves.clear();
  y_curves.clear();
  if (chain.size() != 2) return;  // no centroids: the marker of an empty set
  x_curves = std::move(chain[0]).array();
  y_curves = std::move(chain[1]).array();
}
