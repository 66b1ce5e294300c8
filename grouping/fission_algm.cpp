// Flood fill, breadth first. The queue of a group is the group itself: each point of it in turn
// takes, in input order, every point still free that lies in the box around it.

#include "grouping/fission_algm.hpp"

#include <cstddef>
#include <cstdint>

#include "indexing/box.hpp"
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
  std::vector<std::uint32_t> ends = flood_picture(side);
  if (ends.empty()) {
    ends = chart_trace::write_groups(chart_trace::Point_flood(x_points, y_points, side), x_points,
                                     y_points);
  }
  x_groups = {std::move(x_points), ends};
  y_groups = {std::move(y_points), std::move(ends)};
}

// For a clean picture, row by row, column by column or in any order; nothing for every other point
// set.
std::vector<std::uint32_t> Fission_algm::flood_picture(double side) {
  using chart_trace::Pixel_flood;
  using chart_trace::Pixel_map;
  using chart_trace::Shuffled_flood;
  if (!Pixel_flood::reaches_eight(side * 0.5)) return {};
  if (auto map = Pixel_map::of_raster(x_points, y_points)) {
    return write_groups(Pixel_flood(*std::move(map)), x_points, y_points);
  }
  if (auto turned = Pixel_map::of_raster(y_points, x_points)) {
    return write_groups(Pixel_flood(*std::move(turned)), y_points, x_points);
  }
  if (auto shuffled = Shuffled_flood::of(x_points, y_points)) {
    return write_groups(*std::move(shuffled), x_points, y_points);
  }
  return {};
}
