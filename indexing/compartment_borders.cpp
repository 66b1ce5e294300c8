#include "indexing/compartment_borders.hpp"

#include <algorithm>
#include <limits>

namespace chart_trace {

Compartment_borders::Compartment_borders(double left, double last, double width, bool beyond)
    : left_(left), right_{std::numeric_limits<double>::quiet_NaN()} {
  double border = left;
  do {
    right_.push_back(width + border);
    if (!(right_.back() > border)) break;
    border = right_.back();
  } while (border < last || (border == last && beyond));
  count_ = right_.size() - 1;
  count_as_double_ = static_cast<double>(count_);
  // A point on a border, as most pixels are, belongs to the compartment left of it: a touch is
  // taken off the quotient so that this is the one proposed. Where the borders do not move to the
  // right nothing but the first compartment is.
  constexpr double touch = 1e-9;
  const double extent = border - left;
  if (extent > 0.0) per_unit_ = (1.0 - touch) * count_as_double_ / extent;
}

std::size_t Compartment_borders::search(double x) const {
  if (count_ == 0) return 0;
  const auto first = right_.begin() + 1;
  const auto found =
      std::partition_point(first, right_.end(), [x](double right) { return !(x <= right); });
  return static_cast<std::size_t>(found - first);
}

}  // namespace chart_trace
