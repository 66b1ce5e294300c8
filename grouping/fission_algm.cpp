// Flood fill, breadth first. The queue of a group is the group itself: each point of it in turn
// takes, in input order, every point still free that lies in the box around it.

#include "grouping/fission_algm.hpp"

#include <cstddef>

#include "grouping/box_bubble.hpp"

Fission_algm::Fission_algm(std::vector<double> x, std::vector<double> y, double pixel_step)
    : x_points(std::move(x)), y_points(std::move(y)), pixel_step(pixel_step) {
  const double side = this->pixel_step * 3.0;
  while (!x_points.empty()) {
    Box_bubble around_seed(std::move(x_points), std::move(y_points), side);
    std::vector<double> x_group = around_seed.x_group_func();
    std::vector<double> y_group = around_seed.y_group_func();
    x_points = around_seed.x_remain_func();
    y_points = around_seed.y_remain_func();
    for (std::size_t next = 1; next < x_group.size() && !x_points.empty(); ++next) {
      const auto box = chart_trace::Box::around(x_group[next], y_group[next], side);
      std::size_t left = 0;
      for (std::size_t i = 0; i < x_points.size(); ++i) {
        if (box.contains(x_points[i], y_points[i])) {
          x_group.push_back(x_points[i]);
          y_group.push_back(y_points[i]);
        } else {
          x_points[left] = x_points[i];
          y_points[left] = y_points[i];
          ++left;
        }
      }
      x_points.resize(left);
      y_points.resize(left);
    }
    x_groups.emplace_back(std::move(x_group));
    y_groups.emplace_back(std::move(y_group));
  }
}
