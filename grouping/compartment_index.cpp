#include "grouping/compartment_index.hpp"

#include <algorithm>
#include <iterator>

#include "indexing/range.hpp"

namespace chart_trace {
namespace {

bool holds_nan(const std::vector<double>& x, const std::vector<double>& y) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (std::isunordered(x[i], y[i])) return true;
  }
  return false;
}

// Whether most compartments are certainly empty.
bool is_sparse(const Range& range, double width, std::size_t points) {
  return (range.high - range.low) / width > 8.0 * static_cast<double>(points);
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
    borders_ = Compartment_borders(range.low, range.high, width, beyond);
  }
  takes_any_ = !std::isnan(y[0]);
}

}  // namespace chart_trace
