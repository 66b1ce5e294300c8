// Flood fill, breadth first. The queue of a group is the group itself: each point of it in turn
// takes, in input order, every point still free that lies in the box around it.

#include "grouping/fission_algm.hpp"

#include <cstddef>

#include "indexing/box.hpp"
#include "indexing/free_points.hpp"
#include "indexing/pixel_flood.hpp"
#include "indexing/pixel_map.hpp"
#include "indexing/shuffled_flood.hpp"
#include "primitives/to_int32.hpp"

namespace {

// Adds the groups of a flood fill of pixels.
template <typename Flood>
void add_groups(Flood flood, std::vector<Group_of_arrays>& column_groups,
                std::vector<Group_of_arrays>& row_groups) {
  for (;;) {
    std::vector<double> columns;
    std::vector<double> rows;
    if (!flood.next_group(columns, rows)) return;
    column_groups.emplace_back(std::move(columns));
    row_groups.emplace_back(std::move(rows));
  }
}

}  // namespace

Fission_algm::Fission_algm(std::vector<double> x, std::vector<double> y, double pixel_step)
    : x_points(std::move(x)), y_points(std::move(y)), pixel_step(pixel_step) {
  if (chart_trace::count_of(x_points) < 1) return;
  const double side = this->pixel_step * 3.0;
  if (!flood_picture(side)) flood_points(side);
  x_points = {};
  y_points = {};
}

// The same for a clean picture, row by row, column by column or in any order; false for every other
// point set.
bool Fission_algm::flood_picture(double side) {
  using chart_trace::Pixel_flood;
  using chart_trace::Pixel_map;
  using chart_trace::Shuffled_flood;
  if (!Pixel_flood::reaches_eight(side * 0.5)) return false;
  if (auto map = Pixel_map::of_raster(x_points, y_points)) {
    add_groups(Pixel_flood(*std::move(map)), x_groups, y_groups);
  } else if (auto turned = Pixel_map::of_raster(y_points, x_points)) {
    add_groups(Pixel_flood(*std::move(turned)), y_groups, x_groups);
  } else if (auto shuffled = Shuffled_flood::of(x_points, y_points)) {
    add_groups(*std::move(shuffled), x_groups, y_groups);
  } else {
    return false;
  }
  return true;
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
