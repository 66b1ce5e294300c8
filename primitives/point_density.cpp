#include "primitives/point_density.hpp"

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "indexing/point_grid.hpp"
#include "primitives/to_int32.hpp"

namespace {

// The stride that a density code stands for, a power of two; 0 for a code that keeps nothing. Codes
// are names, not quantities: they are compared exactly. 0.053 and 0.054 share stride 8 on purpose.
std::size_t stride_of(double density) {
  if (density == 0.05) return 1;
  if (density == 0.051) return 2;
  if (density == 0.052) return 4;
  if (density == 0.053) return 8;
  if (density == 0.054) return 8;
  if (density == 0.055) return 16;
  return 0;
}

// A walk over all points, from the first one always to the nearest one left.
class Chain {
 public:
  using Point = chart_trace::Point_grid::Point;

  Chain(const std::vector<double>& x, const std::vector<double>& y)
      : x_(x), y_(y), left_(x, y), current_(take_first()) {}

  const Point& current() const { return current_; }

  // Goes one step; false when no point is left.
  bool step() {
    while (first_left_ < x_.size() && !left_.holds(first_left_)) ++first_left_;
    if (first_left_ == x_.size()) return false;
    // The search for the smallest distance begins with the first point left: a NaN there stays the
    // smallest, and so does an infinity when no distance is finite.
    const double dy = current_.y - y_[first_left_];
    const double dx = current_.x - x_[first_left_];
    const bool is_nan = std::isnan(dy * dy + dx * dx);
    const auto nearest = is_nan ? std::nullopt : left_.take_nearest(current_);
    current_ = nearest ? *nearest : take_first();
    return true;
  }

 private:
  Point take_first() {
    left_.take(first_left_);
    return {x_[first_left_], y_[first_left_]};
  }

  const std::vector<double>& x_;
  const std::vector<double>& y_;
  chart_trace::Point_grid left_;
  std::size_t first_left_ = 0;  // no point before it is left
  Point current_;
};

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
    x_kept.reserve(x.size() / stride + 1);
    y_kept.reserve(x.size() / stride + 1);
    Chain chain(x, y);
    std::size_t step = 0;
    do {
      if ((step++ & (stride - 1)) != 0) continue;
      x_kept.push_back(chain.current().x);
      y_kept.push_back(chain.current().y);
    } while (chain.step());
  }
  return {Group_of_arrays(std::move(x_kept)), Group_of_arrays(std::move(y_kept))};
}
