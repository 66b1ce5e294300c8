#include "grouping/compartment_index.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "indexing/range.hpp"

namespace chart_trace {
namespace {

bool holds_nan(const std::vector<double>& x, const std::vector<double>& y) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (std::isunordered(x[i], y[i])) return true;
  }
  return false;
}

// Whether there are certainly more compartments than two a point, the most that there can be when
// gaps count as one.
bool is_sparse(const Range& range, double width, std::size_t points) {
  return (range.high - range.low) / width > 2.0 * static_cast<double>(points);
}

Range columns_of(const Pixel_frame& frame) {
  return {static_cast<double>(frame.left), static_cast<double>(frame.right)};
}

// Whether the columns of pixels up to the last one are no more than the points.
bool are_few_columns(const Range& range, std::size_t points) {
  return range.high < static_cast<double>(points);
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
  std::optional<Packed_set> packed = packed_set(x, y);
  const Range range = packed ? columns_of(packed->frame) : range_of(x);
  const bool is_gappy = empty == Empty::gap_as_one && is_sparse(range, width, x.size());
  if (packed && !is_gappy && are_few_columns(range, x.size())) pixels_ = std::move(packed->pixels);
  packed.reset();
  const bool beyond = !pixels_ && holds_nan(x, y);
  if (is_gappy) {
    borders_ = Compartment_borders(sorted_numbers(x), width, beyond);
  } else {
    borders_ = Compartment_borders(range.low, range.high, width, beyond);
  }
  takes_any_ = !std::isnan(y[0]);
  if (!pixels_) return;
  const auto last = static_cast<std::size_t>(range.high);
  of_column_.resize(last + 1);
  for (auto column = static_cast<std::size_t>(range.low); column <= last; ++column) {
    of_column_[column] =
        static_cast<std::uint32_t>(borders_.compartment_at(static_cast<double>(column)));
  }
}

}  // namespace chart_trace
