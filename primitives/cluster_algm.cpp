#include "primitives/cluster_algm.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

#include "indexing/nearest_squares.hpp"
#include "indexing/pixel_cells.hpp"
#include "indexing/point_grid.hpp"
#include "indexing/squared_distance.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

using chart_trace::count_of;
using chart_trace::Pixel_cells;
using chart_trace::Point_grid;
using chart_trace::Taken_points;

Cluster_algm::Cluster_algm(std::vector<double> x, std::vector<double> y, double cluster_fraction)
    : x_points(std::move(x)), y_points(std::move(y)), cluster_fraction(cluster_fraction) {
  const std::int32_t count = count_of(x_points);
  if (count < 1) return;
  const double largest_square = chart_trace::largest_square_below(cluster_radius(count));
  if (largest_square >= 0.0) gather_clusters(largest_square);
  if (x_points.empty()) return;
  // A round took nothing, so nothing will be taken: the rounds that are left give NaN pairs.
  const double nan = std::numeric_limits<double>::quiet_NaN();
  x_centroids.resize(static_cast<std::size_t>(count), nan);
  y_centroids.resize(static_cast<std::size_t>(count), nan);
}

double Cluster_algm::cluster_radius(std::int32_t count) const {
  const std::int32_t length = std::max(count - 1, 0);
  const std::int32_t taken = chart_trace::to_int32(std::ceil(length * cluster_fraction));
  if (length < 1 || taken < 1) return std::numeric_limits<double>::quiet_NaN();
  std::vector<double> distances =
      chart_trace::nearest_squares(x_points, y_points, static_cast<std::size_t>(count),
                                   static_cast<std::size_t>(std::min(taken, length)));
  for (double& distance : distances) distance = std::sqrt(distance);
  return chart_trace::mean_of(distances);
}

// Takes cluster after cluster, each around the first point left, until none is left or a seed takes
// nothing, as no pixel does.
void Cluster_algm::gather_clusters(double largest_square) {
  if (auto pixels = Pixel_cells::of(x_points, y_points, largest_square)) {
    while (const auto cluster = pixels->take_next()) add_centroid(*cluster);
    x_points.clear();
    y_points.clear();
    return;
  }
  Point_grid points(x_points, y_points);
  while (const auto cluster = points.take_next(largest_square)) add_centroid(*cluster);
  std::size_t held = 0;
  for (std::size_t i = 0; i < x_points.size(); ++i) {
    if (!points.holds(i)) continue;
    x_points[held] = x_points[i];
    y_points[held] = y_points[i];
    ++held;
  }
  x_points.resize(held);
  y_points.resize(held);
}

void Cluster_algm::add_centroid(const Taken_points& cluster) {
  x_centroids.push_back(cluster.x_sum / cluster.count);
  y_centroids.push_back(cluster.y_sum / cluster.count);
}
