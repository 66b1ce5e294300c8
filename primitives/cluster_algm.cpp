#include "primitives/cluster_algm.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

using chart_trace::count_of;
using chart_trace::mean_of;

Cluster_algm::Cluster_algm(std::vector<double> x, std::vector<double> y, double cluster_fraction)
    : x_points(std::move(x)), y_points(std::move(y)), cluster_fraction(cluster_fraction) {
  const std::int32_t count = count_of(x_points);
  const double radius = cluster_radius(count);
  for (std::int32_t round = 0; round < count && !x_points.empty(); ++round) {
    if (gather_cluster(radius)) continue;
    // Nothing was taken, so nothing will be: the rounds that are left give NaN pairs.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    x_centroids.resize(static_cast<std::size_t>(count), nan);
    y_centroids.resize(static_cast<std::size_t>(count), nan);
    return;
  }
}

double Cluster_algm::cluster_radius(std::int32_t count) const {
  std::vector<double> distances;
  for (std::int32_t k = 1; k < count; ++k) {
    const auto i = static_cast<std::size_t>(k);
    const double dy = y_points[0] - y_points[i];
    const double dx = x_points[0] - x_points[i];
    distances.push_back(std::sqrt(dy * dy + dx * dx));
  }
  std::sort(distances.begin(), distances.end(),
            [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
  const std::int32_t length = count_of(distances);
  const std::int32_t taken = chart_trace::to_int32(std::ceil(length * cluster_fraction));
  distances.resize(static_cast<std::size_t>(std::clamp(taken, 0, length)));
  return mean_of(distances);
}

// Moves every point closer than `radius` to the first one out of the points left and records their
// centroid; false, and nothing changed, when there is none.
bool Cluster_algm::gather_cluster(double radius) {
  const std::vector<double> distances = array_distances(x_points, y_points);
  std::vector<double> x_taken;
  std::vector<double> y_taken;
  std::size_t left = 0;
  for (std::size_t i = 0; i < x_points.size(); ++i) {
    if (radius > distances[i]) {
      x_taken.push_back(x_points[i]);
      y_taken.push_back(y_points[i]);
    } else {
      x_points[left] = x_points[i];
      y_points[left] = y_points[i];
      ++left;
    }
  }
  if (x_taken.empty()) return false;
  x_points.resize(left);
  y_points.resize(left);
  x_centroids.push_back(mean_of(x_taken));
  y_centroids.push_back(mean_of(y_taken));
  return true;
}
