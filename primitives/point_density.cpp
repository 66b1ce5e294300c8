#include "primitives/point_density.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "primitives/to_int32.hpp"

namespace {

// The stride that a density code stands for; 0 for a code that keeps nothing. Codes are names, not
// quantities: they are compared exactly. 0.053 and 0.054 share stride 8 on purpose.
std::size_t stride_of(double density) {
  if (density == 0.05) return 1;
  if (density == 0.051) return 2;
  if (density == 0.052) return 4;
  if (density == 0.053) return 8;
  if (density == 0.054) return 8;
  if (density == 0.055) return 16;
  return 0;
}

// The index of the point nearest to (x, y), the first of equals.
std::size_t nearest_to(double x, double y, const std::vector<double>& xs,
                       const std::vector<double>& ys) {
  std::size_t nearest = 0;
  double smallest = 0.0;
  for (std::size_t i = 0; i < xs.size(); ++i) {
    const double dy = y - ys[i];
    const double dx = x - xs[i];
    const double distance = std::sqrt(dy * dy + dx * dx);
    if (i == 0 || smallest > distance) {
      nearest = i;
      smallest = distance;
    }
  }
  return nearest;
}

// Takes out element i; the others keep their order.
double take_out(std::vector<double>& values, std::size_t i) {
  const double value = values[i];
  values.erase(values.begin() + static_cast<std::ptrdiff_t>(i));
  return value;
}

}  // namespace

std::vector<Group_of_arrays> point_density(std::vector<double> x, std::vector<double> y,
                                           double density) {
  if (chart_trace::count_of(x) == 0) {
    return {Group_of_arrays({std::numeric_limits<double>::quiet_NaN()})};
  }
  std::vector<double> x_kept;
  std::vector<double> y_kept;
  const std::size_t stride = stride_of(density);
  if (stride != 0) {
    std::size_t nearest = 0;  // the chain starts at the first point
    for (std::size_t step = 0; !x.empty(); ++step) {
      const double x_current = take_out(x, nearest);
      const double y_current = take_out(y, nearest);
      if (step % stride == 0) {
        x_kept.push_back(x_current);
        y_kept.push_back(y_current);
      }
      nearest = nearest_to(x_current, y_current, x, y);
    }
  }
  return {Group_of_arrays(std::move(x_kept)), Group_of_arrays(std::move(y_kept))};
}
