#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace chart_trace {

// The borders of compartments of equal width, side by side from `left` rightwards, and the
// compartment that takes a point: the first whose right border is not left of it.
//
// Why the answer is exact: each border is the border before plus the width, added up and kept;
// left + k * width would differ in the last bits. A division only proposes a compartment. It is the
// one if the point is not taken by the border before and is by its own, as borders never decrease;
// otherwise the borders are searched.
// Cost: one addition and 8 bytes a border; a few instructions a point.
class Compartment_borders {
 public:
  // No compartments.
  Compartment_borders() = default;

  // Compartments as far as the first that ends at or right of `last`, or, if it must end `beyond`
  // it, right of it. A border that does not lie right of the one before it ends the run, which so
  // has one compartment at least. `left` is at most `last`. Throws std::length_error when there are
  // more compartments than a signed 32-bit count can tell.
  Compartment_borders(double left, double last, double width, bool beyond);

  // The same compartments from the first to the last of `points`, but neighbours that hold none of
  // them are one. `points` are x values in rising order, at least one, none of them NaN.
  // Cost: one addition a compartment; memory for the points alone.
  Compartment_borders(const std::vector<double>& points, double width, bool beyond);

  // The number of compartments; those that are one count once.
  std::size_t count() const { return right_.size() - 1; }

  // The number of compartments when each counts.
  std::size_t total() const { return total_; }

  // The compartment of a point at `x`, which must not lie left of them all. A point that none
  // takes, such as one at NaN, gets count().
  std::size_t compartment_at(double x) const {
    const double proposed = (x - left_) * per_unit_;
    if (proposed < count_as_double_) {
      // By way of a signed number, which is one instruction instead of five.
      const auto k = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(proposed));
      if (interval(k).holds(x)) return k;
    }
    return search(x);
  }

  // What a compartment takes: the points not at or left of `left` and at or left of `right`.
  struct Interval {
    double left;  // NaN for the first compartment
    double right;
    bool holds(double x) const { return !(x <= left) && x <= right; }
  };
  Interval interval(std::size_t compartment) const {
    return {right_[compartment], right_[compartment + 1]};
  }

 private:
  std::size_t search(double x) const;

  double left_ = 0.0;
  double per_unit_ = 0.0;         // compartments to a unit of x, a touch too few
  double count_as_double_ = 0.0;  // 0 when all are searched for
  std::size_t total_ = 0;
  // right_[k + 1] is the right border of compartment k. No point lies at or left of right_[0], NaN.
  std::vector<double> right_{std::numeric_limits<double>::quiet_NaN()};
};

}  // namespace chart_trace
