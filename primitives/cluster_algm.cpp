#include "primitives/cluster_algm.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

#include "indexing/near_pixels.hpp"
#include "indexing/nearest_squares.hpp"
#include "indexing/packed_pixels.hpp"
#include "indexing/pixel_cells.hpp"
#include "indexing/point_grid.hpp"
#include "indexing/squared_distance.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

using chart_trace::count_of;
using chart_trace::Packed_set;
using chart_trace::Pixel_cells;
using chart_trace::Point_grid;
using chart_trace::Point_list;
using chart_trace::Taken_points;

Cluster_algm::Cluster_algm(std::vector<double> x, std::vector<double> y, double cluster_fraction)
    : Cluster_algm(Point_list{{}, std::move(x), std::move(y)}, cluster_fraction) {}

Cluster_algm::Cluster_algm(Point_list points, double cluster_fraction)
    : x_points(std::move(points.x)),
      y_points(std::move(points.y)),
      cluster_fraction(cluster_fraction) {
  if (points.pixels) {
    const std::int32_t count = count_of(*points.pixels);
    find_clusters(count, chart_trace::framed(*std::move(points.pixels)));
  } else {
    find_clusters(count_of(x_points), chart_trace::packed_set(x_points, y_points));
  }
}

double Cluster_algm::cluster_radius(std::int32_t count) const {
  return radius_over(count, std::nullopt);
}

// The points are read from `pixels` if there are any.
double Cluster_algm::radius_over(std::int32_t count,
                                 const std::optional<Packed_set>& pixels) const {
  const std::int32_t length = std::max(count - 1, 0);
  const std::int32_t taken = chart_trace::to_int32(std::ceil(length * cluster_fraction));
  if (length < 1 || taken < 1) return std::numeric_limits<double>::quiet_NaN();
  const auto points = static_cast<std::size_t>(count);
  const auto nearest = static_cast<std::size_t>(std::min(taken, length));
  std::vector<double> distances =
      pixels ? chart_trace::nearest_squares(pixels->pixels, points, nearest)
             : chart_trace::nearest_squares(x_points, y_points, points, nearest);
  for (double& distance : distances) distance = std::sqrt(distance);
  return chart_trace::mean_of(distances);
}

// Takes cluster after cluster, each around the first point left, until none is left or a seed takes
// nothing, as no pixel does. The points are those of `pixels` if there are any.
void Cluster_algm::find_clusters(std::int32_t count, std::optional<Packed_set> pixels) {
  if (count < 1) return;
  if (pixels && !chart_trace::are_near(pixels->frame)) unpack(pixels);
  const double largest_square = chart_trace::largest_square_below(radius_over(count, pixels));
  if (pixels && largest_square >= 0.0 && gather_pixels(*pixels, largest_square)) return;
  unpack(pixels);
  if (largest_square >= 0.0) gather_points(largest_square);
  if (x_points.empty()) return;
  // A round took nothing, so nothing will be taken: the rounds that are left give NaN pairs.
  const double nan = std::numeric_limits<double>::quiet_NaN();
  x_centroids.resize(static_cast<std::size_t>(count), nan);
  y_centroids.resize(static_cast<std::size_t>(count), nan);
}

// From here on the points are those of x_points and y_points.
void Cluster_algm::unpack(std::optional<Packed_set>& pixels) {
  if (pixels && x_points.empty()) {
    x_points.resize(pixels->pixels.size());
    y_points.resize(pixels->pixels.size());
    pixels->pixels.unpack(x_points, y_points);
  }
  pixels.reset();
}

// False, and nothing taken, when the pixels do not fit the cells.
bool Cluster_algm::gather_pixels(const Packed_set& pixels, double largest_square) {
  std::optional<Pixel_cells> cells = Pixel_cells::of(pixels, largest_square);
  if (!cells) return false;
  while (const auto cluster = cells->take_next()) add_centroid(*cluster);
  x_points.clear();
  y_points.clear();
  return true;
}

void Cluster_algm::gather_points(double largest_square) {
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
