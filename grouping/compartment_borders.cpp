#include "grouping/compartment_borders.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace chart_trace {
namespace {

constexpr std::size_t most_compartments = std::numeric_limits<std::int32_t>::max();

// Whether there are certainly more compartments than most_compartments, so that none need be made
// to find out. As long as a border is not farther from 0 than 2^52 widths, it moves by at most two.
bool are_certainly_too_many(double left, double last, double width) {
  const double far = std::min(4503599627370496.0 * width, std::numeric_limits<double>::max());
  if (!(width > 0.0) || left < -far) return false;
  const double longest = 2.0 * width;
  return std::min(last, far) / longest - left / longest > static_cast<double>(most_compartments);
}

[[noreturn]] void refuse() {
  throw std::length_error("there are more compartments than a 32-bit count can tell");
}

// Moves `border` behind the compartments that end left of `x` and whose borders move; returns their
// number.
std::size_t pass_compartments(double& border, double x, double width) {
  std::size_t passed = 0;
  for (double right = width + border; right < x && right > border; right = width + border) {
    border = right;
    if (++passed > most_compartments) refuse();
  }
  return passed;
}

}  // namespace

Compartment_borders::Compartment_borders(double left, double last, double width, bool beyond)
    : left_(left) {
  if (are_certainly_too_many(left, last, width)) refuse();
  double border = left;
  do {
    if (count() == most_compartments) refuse();
    right_.push_back(width + border);
    if (!(right_.back() > border)) break;
    border = right_.back();
  } while (border < last || (border == last && beyond));
  total_ = count();
  count_as_double_ = static_cast<double>(total_);
  // A point on a border, as most pixels are, belongs to the compartment left of it: a touch is
  // taken off the quotient so that this is the one proposed. Where the borders do not move to the
  // right nothing but the first compartment is.
  constexpr double touch = 1e-9;
  const double extent = border - left;
  if (extent > 0.0) per_unit_ = (1.0 - touch) * count_as_double_ / extent;
}

Compartment_borders::Compartment_borders(const std::vector<double>& points, double width,
                                         bool beyond)
    : left_(points.front()) {
  const double last = points.back();
  if (are_certainly_too_many(left_, last, width)) refuse();
  double border = left_;
  auto next = points.begin();  // the first point that no compartment has taken
  do {
    const std::size_t gap = next == points.end() ? 0 : pass_compartments(border, *next, width);
    if (gap > 0) right_.push_back(border);
    total_ += gap + 1;
    if (total_ > most_compartments) refuse();
    right_.push_back(width + border);
    if (!(right_.back() > border)) break;
    border = right_.back();
    while (next != points.end() && *next <= border) ++next;
  } while (border < last || (border == last && beyond));
}

std::size_t Compartment_borders::search(double x) const {
  const auto first = right_.begin() + 1;
  const auto found =
      std::partition_point(first, right_.end(), [x](double right) { return !(x <= right); });
  return static_cast<std::size_t>(found - first);
}

}  // namespace chart_trace
