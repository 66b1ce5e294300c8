// Flood fill, breadth first. The queue of a group is the group itself: each point of it in turn
// takes, in input order, every point still free that lies in the box around it.

#include "grouping/fission_algm.hpp"

#include <cstddef>

#include "indexing/box.hpp"
#include "indexing/free_points.hpp"
#include "primitives/to_int32.hpp"

Fission_algm::Fission_algm(std::vector<double> x, std::vector<double> y, double pixel_step)
    : x_points(std::move(x)), y_points(std::move(y)), pixel_step(pixel_step) {
  if (chart_trace::count_of(x_points) < 1) return;
  flood_points();
  x_points = {};
  y_points = {};
}

void Fission_algm::flood_points() {
  const double side = pixel_step * 3.0;
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
