#include "grouping/compartment_index.hpp"

#include <algorithm>
#include <iterator>

namespace chart_trace {
namespace {

struct Range {
  double left;
  double last;

  void include(double x) {
    left = x < left ? x : left;
    last = x > last ? x : last;
  }
};

// The smallest and the largest x, the first of which is a number: NaN is passed over. In four parts
// by turns, as each comparison has to wait for the one before it.
Range range_of(const std::vector<double>& x) {
  Range a{x[0], x[0]};
  Range b = a;
  Range c = a;
  Range d = a;
  std::size_t i = 0;
  for (; i + 4 <= x.size(); i += 4) {
    a.include(x[i]);
    b.include(x[i + 1]);
    c.include(x[i + 2]);
    d.include(x[i + 3]);
  }
  for (; i < x.size(); ++i) a.include(x[i]);
  return {std::min({a.left, b.left, c.left, d.left}), std::max({a.last, b.last, c.last, d.last})};
}

bool holds_nan(const std::vector<double>& x, const std::vector<double>& y) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (std::isunordered(x[i], y[i])) return true;
  }
  return false;
}

// Whether most compartments are certainly empty.
bool is_sparse(const Range& range, double width, std::size_t points) {
  return (range.last - range.left) / width > 8.0 * static_cast<double>(points);
}

std::vector<double> sorted_numbers(const std::vector<double>& values) {
  std::vector<double> numbers;
  std::copy_if(values.begin(), values.end(), std::back_inserter(numbers),
               [](double value) { return !std::isnan(value); });
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

}  // namespace

Compartment_index::Compartment_index(const std::vector<double>& x, const std::vector<double>& y,
                                     double width, Empty empty)
    : x_(x), y_(y) {
  if (x.empty() || std::isnan(x[0])) return;
  const Range range = range_of(x);
  const bool beyond = holds_nan(x, y);
  if (empty == Empty::gap_as_one && is_sparse(range, width, x.size())) {
    borders_ = Compartment_borders(sorted_numbers(x), width, beyond);
  } else {
    borders_ = Compartment_borders(range.left, range.last, width, beyond);
  }
  takes_any_ = !std::isnan(y[0]);
}

}  // namespace chart_trace
