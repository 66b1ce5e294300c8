#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "indexing/packed_pixels.hpp"
#include "indexing/taken_points.hpp"
#include "primitives/point_list.hpp"

// Reduces a point set to the centroids of its clusters. One radius serves all clusters: the mean of
// the distances from the first point to the given fraction of the other points, the nearest ones.
// Again and again the first point left is the seed of a cluster that takes every point left whose
// distance to the seed is strictly below the radius; its centroid is their mean position.
// Order: centroids in the order of their seeds; sums in input order. Lengths are image pixels.
// NaN: a radius that is NaN or 0 takes nothing, not even the seed, and neither does a seed with a
// NaN or infinite coordinate. A round that takes nothing yields a NaN pair, and since it leaves
// everything as it was, so do all later ones: there are at most as many rounds as points, and then
// exactly as many. No points give no centroids, one point gives one NaN pair.
// Cost: a few ns a point for the pixels of a picture, some tens for other points; how the points of
// a cluster are found is told in indexing/pixel_cells.hpp and indexing/point_grid.hpp.
class Cluster_algm {
 public:
  Cluster_algm(std::vector<double> x, std::vector<double> y, double cluster_fraction);
  Cluster_algm(chart_trace::Point_list points, double cluster_fraction);

  // The radius over the first `count` points: the mean of the m smallest distances from point 0 to
  // the others, summed from the smallest upwards, where m is the number of the others times
  // cluster_fraction, rounded up. A NaN distance sorts after all numbers. NaN when m is below 1
  // (a fraction of 0, negative or NaN, or one so large that m leaves the 32-bit range); an m beyond
  // the number of distances takes all of them. Cost: one pass, and a sort of the m.
  double cluster_radius(std::int32_t count) const;

  std::vector<double> arr_x_centroid() const& { return x_centroids; }
  std::vector<double> arr_y_centroid() const& { return y_centroids; }
  std::vector<double> arr_x_centroid() && { return std::move(x_centroids); }
  std::vector<double> arr_y_centroid() && { return std::move(y_centroids); }

 private:
  double radius_over(std::int32_t count,
                     const std::optional<chart_trace::Packed_set>& pixels) const;
  void find_clusters(std::int32_t count, std::optional<chart_trace::Packed_set> pixels);
  void unpack(std::optional<chart_trace::Packed_set>& pixels);
  bool gather_pixels(const chart_trace::Packed_set& pixels, double largest_square);
  void gather_points(double largest_square);
  void add_centroid(const chart_trace::Taken_points& cluster);

  std::vector<double> x_points, y_points;        // not yet taken by a cluster
  std::vector<double> x_centroids, y_centroids;  // parallel, in the order of their seeds
  double cluster_fraction;
};
