#include "grouping/box_bubble.hpp"

#include <cstddef>
#include <utility>

#include "indexing/box.hpp"

Box_bubble::Box_bubble(std::vector<double> x, std::vector<double> y, double box_size)
    : x_points(std::move(x)), y_points(std::move(y)), box_size(box_size) {
  if (x_points.empty()) return;
  x_group.push_back(x_points[0]);
  y_group.push_back(y_points[0]);
  const auto box = chart_trace::Box::around(x_points[0], y_points[0], this->box_size);
  for (std::size_t i = 1; i < x_points.size(); ++i) {
    const bool inside = box.contains(x_points[i], y_points[i]);
    (inside ? x_group : x_remain).push_back(x_points[i]);
    (inside ? y_group : y_remain).push_back(y_points[i]);
  }
}
