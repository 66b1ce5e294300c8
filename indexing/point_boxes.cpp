#include "indexing/point_boxes.hpp"

#include <algorithm>
#include <cmath>

#include "indexing/bits.hpp"
#include "indexing/box.hpp"
#include "indexing/near_points.hpp"
#include "indexing/range.hpp"

namespace chart_trace {
namespace {

// Boxes are looked at beforehand, evenly spread, up to so many, and no more than one in four.
constexpr std::size_t most_samples = 64;
// On average, the two sides of a box together may be so many radii long, a diameter each, and the
// shorter one must be so many pixels. Boxes of solid shapes that come row by row are a row or two
// high: a bitmap takes such with a few words.
constexpr double longest_sides = 4.0;  // radii
constexpr double shortest_side = 4.0;  // pixels
// A box that is near costs as much as so many that are passed over.
constexpr std::size_t cost_of_near = 8;
// Looks for each point, all discs together, at which boxes do not pay.
constexpr std::size_t most_looks = 8;

}  // namespace

std::optional<Point_boxes> Point_boxes::of(const std::vector<double>& x,
                                           const std::vector<double>& y, double largest_square) {
  const std::size_t whole_boxes = x.size() / in_a_box;
  const std::size_t samples = std::min(most_samples, whole_boxes / 4);
  if (samples == 0) return std::nullopt;
  double sides = 0.0;
  double shorter_sides = 0.0;
  for (std::size_t k = 0; k < samples; ++k) {
    const Held_box box = box_of(x, y, whole_boxes * k / samples * in_a_box);
    const double width = box.right - box.left;
    const double height = box.bottom - box.top;
    sides += width + height;
    shorter_sides += std::min(width, height);
  }
  const auto count = static_cast<double>(samples);
  const bool are_near = sides <= count * longest_sides * std::sqrt(largest_square);
  const bool are_high = shorter_sides >= count * shortest_side;
  if (!are_near || !are_high) return std::nullopt;
  return Point_boxes(x, y, largest_square);
}

Point_boxes::Point_boxes(const std::vector<double>& x, const std::vector<double>& y,
                         double largest_square)
    : x_(x), y_(y), largest_square_(largest_square) {
  boxes_.reserve(x.size() / in_a_box + 1);
  for (std::size_t first = 0; first < x.size(); first += in_a_box) {
    boxes_.push_back(box_of(x, y, first));
  }
}

Point_boxes::Held_box Point_boxes::box_of(const std::vector<double>& x,
                                          const std::vector<double>& y, std::size_t first) {
  const std::size_t count = std::min(in_a_box, x.size() - first);
  const Range across = range_of(&x[first], count);
  const Range down = range_of(&y[first], count);
  const bool is_whole = count == in_a_box;
  const std::uint64_t all = is_whole ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
  return {across.low, across.high, down.low, down.high, all};
}

std::optional<Taken_points> Point_boxes::take_next() {
  while (first_ < boxes_.size() && boxes_[first_].held == 0) ++first_;
  if (first_ == boxes_.size() || looks_ > most_looks * x_.size()) return std::nullopt;
  const std::size_t seed =
      first_ * in_a_box + static_cast<std::size_t>(lowest_bit(boxes_[first_].held));
  const double x = x_[seed];
  const double y = y_[seed];
  Taken_points taken;
  looks_ += boxes_.size() - first_;
  for (std::size_t k = first_; k < boxes_.size(); ++k) {
    const Held_box& box = boxes_[k];
    const double dy = outside(y, box.top, box.bottom);  // NaN if the box's range is: looked at then
    const double dx = outside(x, box.left, box.right);
    if (dy * dy + dx * dx > largest_square_ || box.held == 0) continue;
    take_from(k, x, y, taken);
  }
  if (taken.count == 0) return std::nullopt;
  return taken;
}

void Point_boxes::take_from(std::size_t number, double x, double y, Taken_points& taken) {
  looks_ += cost_of_near;
  const double* const xs = &x_[number * in_a_box];
  const double* const ys = &y_[number * in_a_box];
  const std::size_t count = std::min(in_a_box, x_.size() - number * in_a_box);
  std::uint64_t found = boxes_[number].held & near_points(xs, ys, count, x, y, largest_square_);
  boxes_[number].held ^= found;
  for (; found != 0; found &= found - 1) {
    const std::int64_t point = lowest_bit(found);
    taken.x_sum += xs[point];
    taken.y_sum += ys[point];
    ++taken.count;
  }
}

}  // namespace chart_trace
