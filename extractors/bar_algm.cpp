#include "extractors/bar_algm.hpp"

#include <cstddef>

#include "grouping/group_by_method.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

Bar_algm::Bar_algm(std::vector<double> x, std::vector<double> y, double pixel_step,
                   std::string method)
    : x_points(std::move(x)), y_points(std::move(y)), pixel_step(pixel_step), group_count(0) {
  groups_ = chart_trace::group_by_method(std::move(x_points), std::move(y_points), this->pixel_step,
                                         method);
  group_count = chart_trace::count_of(groups_);
  for (auto* values : {&x_vertical, &y_vertical, &x_horizontal, &y_horizontal}) {
    values->reserve(groups_.size());
  }
  for (std::int32_t k = 0; k < group_count; ++k) {
    const chart_trace::Group_figures figures = groups_.figures(static_cast<std::size_t>(k));
    x_vertical.push_back(figures.mean_x);
    y_vertical.push_back(figures.y.min);
    x_horizontal.push_back(figures.x.max);
    y_horizontal.push_back(figures.mean_y);
  }
}
