// Flood fill, breadth first. The queue of a group is the group itself: each point of it in turn
// takes, in input order, every point still free that lies in the box around it.

#include "grouping/fission_algm.hpp"

#include <cstddef>
#include <optional>

#include "indexing/box.hpp"
#include "indexing/free_points.hpp"
#include "indexing/pixel_flood.hpp"
#include "indexing/pixel_map.hpp"
#include "primitives/to_int32.hpp"

Fission_algm::Fission_algm(std::vector<double> x, std::vector<double> y, double pixel_step)
    : x_points(std::move(x)), y_points(std::move(y)), pixel_step(pixel_step) {
  if (chart_trace::count_of(x_points) < 1) return;
  const double side = this->pixel_step * 3.0;
  if (!flood_picture(side)) flood_points(side);
  x_points = {};
  y_points = {};
}

// The same for a clean picture in raster or column-major order; false for every other point set.
bool Fission_algm::flood_picture(double side) {
  using chart_trace::Pixel_flood;
  using chart_trace::Pixel_map;
  if (!Pixel_flood::reaches_eight(side * 0.5)) return false;
  std::optional<Pixel_map> map = Pixel_map::of_raster(x_points, y_points);
  const bool in_rows = map.has_value();
  if (!in_rows) map = Pixel_map::of_raster(y_points, x_points);
  if (!map) return false;
  Pixel_flood flood(*std::move(map));
  for (;;) {
    std::vector<double> columns;
    std::vector<double> rows;
    if (!flood.next_group(columns, rows)) return true;
    x_groups.emplace_back(std::move(in_rows ? columns : rows));
    y_groups.emplace_back(std::move(in_rows ? rows : columns));
  }
}

void Fission_algm::flood_points(double side) {
  chart_trace::Free_points free(x_points, y_points, side * 0.5);
  for (std::size_t seed = 0; seed < x_points.size(); ++seed) {
    const std::size_t first = free.taken_count();
    if (!free.take(seed)) continue;
    for (std::size_t next = first; next < free.taken_count(); ++next) {
      const chart_trace::Indexed_point& point = free.taken()[next];
      free.take(chart_trace::Box::around(point.x, point.y, side));
    }
    add_group(free.taken() + first, free.taken() + free.taken_count());
  }
}

void Fission_algm::add_group(const chart_trace::Indexed_point* begin,
                             const chart_trace::Indexed_point* end) {
  std::vector<double> x_group;
  std::vector<double> y_group;
  x_group.reserve(static_cast<std::size_t>(end - begin));
  y_group.reserve(static_cast<std::size_t>(end - begin));
  for (const chart_trace::Indexed_point* point = begin; point != end; ++point) {
    x_group.push_back(point->x);
    y_group.push_back(point->y);
  }
  x_groups.emplace_back(std::move(x_group));
  y_groups.emplace_back(std::move(y_group));
}
