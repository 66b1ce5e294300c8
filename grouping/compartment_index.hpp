#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "grouping/compartment_borders.hpp"

namespace chart_trace {

// The compartments of a point set: of equal width, side by side from the leftmost point rightwards.
// Says which one takes each point without building them, for callers that need no more of a
// compartment than its top, or its size and sums.
//
// The compartments reach as far as the last point if all points are taken. A point with a NaN
// coordinate never is, and then they reach to the largest x, one more when that lies exactly on a
// border. A NaN as first y is the bottom and the top of the set: no point is taken. No points, or a
// NaN as first x, give no compartments.
//
// The vectors must outlive the index. Cost: one pass here, one for each call of a function below.
class Compartment_index {
 public:
  // How compartments without points are told: each, or, where there are far more compartments than
  // points, all of a gap as one empty compartment, so that memory is bounded by the points.
  enum class Empty { each, gap_as_one };

  Compartment_index(const std::vector<double>& x, const std::vector<double>& y, double width,
                    Empty empty);

  // The number of compartments told, empty ones included.
  std::size_t count() const { return borders_.count(); }

  // The number of compartments there are.
  std::size_t total() const { return borders_.total(); }

  // Calls visit(compartment, begin, end) for all points in input order, a stretch of neighbours at
  // a time: the points from begin to end - 1 have the same x and one compartment. Those that none
  // takes come as compartment count(). In column-major order stretches are few and long.
  template <class Visit>
  void for_each_stretch(Visit visit) const;

  // Calls visit(compartment, point) for the points of two compartments, `left` at most `right`, in
  // input order. When they are one, its points come once.
  template <class Visit>
  void for_each_point_of(std::size_t left, std::size_t right, Visit visit) const;

 private:
  const std::vector<double>& x_;
  const std::vector<double>& y_;
  bool takes_any_ = false;
  Compartment_borders borders_;
};

template <class Visit>
void Compartment_index::for_each_stretch(Visit visit) const {
  if (!takes_any_) return visit(count(), 0, x_.size());
  // Locals, so that nothing visit() writes could be one of these: half the time of a short stretch.
  const double* const x = x_.data();
  const double* const y = y_.data();
  const std::size_t size = x_.size();
  for (std::size_t begin = 0, end = 0; begin < size; begin = end) {
    end = begin + 1;
    if (std::isnan(y[begin])) {
      visit(count(), begin, end);
      continue;
    }
    while (end < size && x[end] == x[begin] && !std::isnan(y[end])) ++end;
    visit(borders_.compartment_at(x[begin]), begin, end);
  }
}

template <class Visit>
void Compartment_index::for_each_point_of(std::size_t left, std::size_t right, Visit visit) const {
  if (!takes_any_) return;
  const Compartment_borders::Interval in_left = borders_.interval(left);
  const Compartment_borders::Interval in_right = borders_.interval(right);
  const double* const x = x_.data();
  const double* const y = y_.data();
  const std::size_t size = x_.size();
  for (std::size_t i = 0; i < size; ++i) {
    if (x[i] <= in_left.right) {
      if (in_left.holds(x[i]) && !std::isnan(y[i])) visit(left, i);
    } else if (in_right.holds(x[i]) && !std::isnan(y[i])) {
      visit(right, i);
    }
  }
}

}  // namespace chart_trace
