#include "grouping/vertical_compartments.hpp"

#include <cstddef>

#include "primitives/vectors.hpp"

Vertical_compartments::Vertical_compartments(std::vector<double> x, std::vector<double> y,
                                             double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)), compartment_width(compartment_width) {
  if (x_points.empty()) return;
  const auto [x_min, x_max] = chart_trace::extremes_of(x_points);
  const auto [y_min, y_max] = chart_trace::extremes_of(y_points);
  double left = x_min;
  while (!x_points.empty() && left <= x_max) {
    const double right = this->compartment_width + left;
    std::vector<double> x_inside;
    std::vector<double> y_inside;
    std::size_t rest = 0;
    for (std::size_t i = 0; i < x_points.size(); ++i) {
      const double px = x_points[i];
      const double py = y_points[i];
      if (left <= px && px <= right && y_min <= py && py <= y_max) {
        x_inside.push_back(px);
        y_inside.push_back(py);
      } else {
        x_points[rest] = px;
        y_points[rest] = py;
        ++rest;
      }
    }
    x_points.resize(rest);
    y_points.resize(rest);
    x_groups.emplace_back(std::move(x_inside));
    y_groups.emplace_back(std::move(y_inside));
    if (!(right > left)) return;  // the border does not move: no later compartment can differ
    left = right;
  }
}
