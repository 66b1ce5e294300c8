#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "primitives/groups.hpp"

// Extracts scatter points and curves from the pixels of one colour. The pixels are grouped, by
// fission grouping when `method` is exactly "fission" and by horizontal grouping for every other
// string; each group is either a solid marker, reduced to its mean position, or curve pixels. All
// curve pixels together become the centroids of their clusters, ordered as a nearest-neighbour
// chain and thinned. Lengths are image pixels.
// Order: the points in group order; the curve in chain order; points and curves together with the
// points first.
// cluster_fraction is both the fraction of the clustering and the code of the thinning, so only
// 0.05, 0.051, 0.052, 0.053, 0.054 and 0.055 give curve points at all; the points do not hang on
// it. Empty: no groups give six empty results; no curve pixels, or a fraction of no valid code,
// leave the curve empty.
class Points_curves_algm {
 public:
  Points_curves_algm(std::vector<double> x, std::vector<double> y, double pixel_step,
                     std::string method, double cluster_fraction);

  // Reduces the groups to points and curves. The constructor calls this, once: another call would
  // add everything a second time.
  void points_curves();

  std::vector<double> x_get_points() const& { return x_centres; }
  std::vector<double> y_get_points() const& { return y_centres; }
  std::vector<double> x_get_curves() const& { return x_curves; }
  std::vector<double> y_get_curves() const& { return y_curves; }
  std::vector<double> x_get_points_curves() const& { return x_points_curves; }
  std::vector<double> y_get_points_curves() const& { return y_points_curves; }

 private:
  chart_trace::Point_list sort_out_groups();
  void reduce_curve(chart_trace::Point_list pixels);

  std::vector<double> x_points, y_points;
  std::vector<double> x_centres, y_centres;
  std::vector<double> x_curves, y_curves;  // the chain
  std::vector<double> x_points_curves, y_points_curves;
  chart_trace::Groups groups_;  // given up once they are sorted out
  double pixel_step;
  double cluster_fraction;
  std::int32_t num_groups;
};
