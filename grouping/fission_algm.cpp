// Flood fill, breadth first. The queue of a group is the group itself: each point of it in turn
// takes, in input order, every point still free that lies in the box around it.

#include "grouping/fission_algm.hpp"

#include "grouping/picture_groups.hpp"
#include "indexing/pixel_flood.hpp"
#include "indexing/pixel_map.hpp"
#include "indexing/point_flood.hpp"
#include "indexing/point_writer.hpp"
#include "indexing/shuffled_flood.hpp"
#include "primitives/to_int32.hpp"

Fission_algm::Fission_algm(std::vector<double> x, std::vector<double> y, double pixel_step)
    : x_points(std::move(x)), y_points(std::move(y)), pixel_step(pixel_step) {
  if (chart_trace::count_of(x_points) < 1) return;
  const double side = this->pixel_step * 3.0;
  if (flood_picture(side)) return;
  chart_trace::Point_flood flood(x_points, y_points, side);
  auto ends = chart_trace::write_groups(flood, chart_trace::Point_writer(x_points, y_points));
  groups_ = {std::move(x_points), std::move(y_points), std::move(ends)};
}

// Groups a clean picture, row by row, column by column or in any order; false for every other point
// set.
bool Fission_algm::flood_picture(double side) {
  using namespace chart_trace;
  if (!Pixel_flood::reaches_eight(side * 0.5)) return false;
  if (auto map = Pixel_map::of_raster(x_points, y_points)) {
    groups_ = picture_groups(Pixel_flood(*std::move(map)), x_points, y_points);
  } else if (auto turned = Pixel_map::of_raster(y_points, x_points)) {
    groups_ = picture_groups(Pixel_flood(*std::move(turned)), x_points, y_points, true);
  } else if (auto shuffled = Shuffled_flood::of(x_points, y_points)) {
    groups_ = picture_groups(*std::move(shuffled), x_points, y_points);
  } else {
    return false;
  }
  return true;
}
