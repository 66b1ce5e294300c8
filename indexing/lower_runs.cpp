#include "indexing/lower_runs.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace chart_trace {
namespace {

// The share of a part that the next one is to hold, and how many of its runs are asked for that.
constexpr std::size_t fan_out = 4;
constexpr std::size_t asked = 256;
// So many runs are looked at before those that lie low enough are added.
constexpr std::size_t at_once = 64;

// A row that about one run in four lies on or below; NaN if there is none such.
template <typename Row_of>
double top_of_next(std::size_t count, Row_of row_of) {
  std::vector<double> rows;
  for (std::size_t k = 0; k < asked; ++k) {
    const double row = row_of(k * (count / asked));
    if (row == row) rows.push_back(row);
  }
  const std::size_t place = rows.size() - rows.size() / fan_out;
  if (place >= rows.size()) return std::numeric_limits<double>::quiet_NaN();
  std::nth_element(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(place), rows.end());
  return rows[place];
}

}  // namespace

Lower_runs::Lower_runs(const Run_pairs& pairs) : pairs_(pairs) {
  const auto of_all = [&](std::size_t k) {
    return Item{pairs.rows[k], pairs.extents[k], static_cast<Run>(k)};
  };
  bool is_added = add_part(pairs.count, of_all);
  while (is_added) {
    const auto of_last = [this, last = parts_.size() - 1](std::size_t k) {
      return parts_[last].items[k];
    };
    is_added = add_part(parts_.back().items.size(), of_last);
  }
}

// Adds the lower part of a list of items, unless that is short or most of it lies on one row.
template <typename Item_at>
bool Lower_runs::add_part(std::size_t count, Item_at item_at) {
  if (count < asked) return false;
  Part part{top_of_next(count, [&](std::size_t k) { return item_at(k).row; }), {}, 0};
  part.items.reserve(count / fan_out);
  for (std::size_t begin = 0; begin < count; begin += at_once) {
    // Chosen without a branch, as which runs lie low cannot be guessed.
    std::array<std::size_t, at_once> chosen;
    std::size_t low = 0;
    for (std::size_t k = begin; k < std::min(begin + at_once, count); ++k) {
      chosen[low] = k;
      low += std::size_t{item_at(k).row >= part.top};
    }
    if (part.items.size() + low > count / 2) return false;
    for (std::size_t i = 0; i < low; ++i) part.items.push_back(item_at(chosen[i]));
  }
  if (part.items.empty()) return false;
  parts_.push_back(std::move(part));
  return true;
}

// The smallest part that the reference needs; none if that is the whole list.
Lower_runs::Part* Lower_runs::part_for(Run reference) {
  if (!(pairs_.row_tolerance >= 0.0)) return nullptr;
  const double row = pairs_.rows[reference];
  Part* found = nullptr;
  for (Part& part : parts_) {
    // No run above the part lies nearer to the row than the part's top does, rounding included.
    if (!(row - part.top >= pairs_.row_tolerance)) break;
    found = &part;
  }
  return found;
}

}  // namespace chart_trace
