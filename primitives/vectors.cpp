#include "primitives/vectors.hpp"

#include <cmath>
#include <cstddef>
#include <limits>

#include "primitives/to_int32.hpp"

using chart_trace::count_of;

double distance(double x1, double y1, double x2, double y2) {
  const double dx = x1 - x2;
  const double dy = y1 - y2;
  return std::sqrt(dx * dx + dy * dy);
}

double average_of_numbers(std::vector<double> values) { return chart_trace::mean_of(values); }

std::vector<double> array_distances(std::vector<double> x, std::vector<double> y) {
  const std::int32_t count = count_of(x);
  if (count == 0) return {std::numeric_limits<double>::quiet_NaN()};
  std::vector<double> distances;
  if (count < 1) return distances;
  distances.reserve(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double dy = y[0] - y[i];
    const double dx = x[0] - x[i];
    distances.push_back(std::sqrt(dy * dy + dx * dx));
  }
  return distances;
}

std::int32_t min_index(std::vector<double> values) {
  const std::int32_t count = count_of(values);
  if (count == 0) return 1;
  std::int32_t index = 0;
  double smallest = values[0];
  for (std::int32_t i = 1; i < count; ++i) {
    const double value = values[static_cast<std::size_t>(i)];
    if (smallest > value) {
      index = i;
      smallest = value;
    }
  }
  return index;
}

bool check_point_in_box(double px, double py, std::vector<double> box_x,
                        std::vector<double> box_y) {
  return px >= box_x[0] && box_x[1] >= px && py >= box_y[0] && box_y[1] >= py;
}

std::vector<double> replicate_vector(std::vector<double> values) {
  if (count_of(values) < 1) return {};
  return values;
}

namespace chart_trace {

double mean_of(Values values) {
  const std::int32_t count = count_of(values);
  if (count == 0) return std::numeric_limits<double>::quiet_NaN();
  double sum = 0.0;
  for (std::int32_t i = 0; i < count; ++i) sum += values[static_cast<std::size_t>(i)];
  return sum / count;
}

Extremes extremes_of(Values values) {
  Extremes extremes{values[0], values[0]};
  for (const double value : values) {
    if (value < extremes.min) extremes.min = value;
    if (value > extremes.max) extremes.max = value;
  }
  return extremes;
}

Group_figures figures_of(Values x, Values y) {
  const std::int32_t count = count_of(x);
  if (count < 1) return {mean_of(x), mean_of(y), extremes_of(x), extremes_of(y)};
  double sum_x = 0.0;
  double sum_y = 0.0;
  Extremes in_x{x[0], x[0]};
  Extremes in_y{y[0], y[0]};
  for (std::size_t i = 0; i < x.size(); ++i) {
    sum_x += x[i];
    sum_y += y[i];
    in_x.min = x[i] < in_x.min ? x[i] : in_x.min;
    in_x.max = x[i] > in_x.max ? x[i] : in_x.max;
    in_y.min = y[i] < in_y.min ? y[i] : in_y.min;
    in_y.max = y[i] > in_y.max ? y[i] : in_y.max;
  }
  return {sum_x / count, sum_y / count, in_x, in_y};
}

}  // namespace chart_trace
