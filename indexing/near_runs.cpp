#include "indexing/near_runs.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>

namespace chart_trace {

Near_runs::Near_runs(const Run_pairs& pairs) : pairs_(pairs), right_ends_({}) {
  sort_runs();
  place_.assign(pairs.count, static_cast<Run>(sorted_.size()));
  std::vector<float> right_ends;
  right_ends.reserve(sorted_.size());
  for (const Run run : sorted_) {
    place_[run] = static_cast<Run>(right_ends.size());
    right_ends.push_back(pairs.extents[run].max);
  }
  right_ends_ = Max_tree<float>(std::move(right_ends));
  cut_into_bands();
}

void Near_runs::sort_runs() {
  struct Item {
    double band;
    float left_end;
    Run run;
  };
  std::vector<Item> items;
  items.reserve(pairs_.count);
  for (Run run = 0; run < pairs_.count; ++run) {
    if (can_touch(run)) items.push_back({band_of(pairs_.rows[run]), pairs_.extents[run].min, run});
  }
  std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) {
    return std::tie(a.band, a.left_end, a.run) < std::tie(b.band, b.left_end, b.run);
  });
  sorted_.reserve(items.size());
  for (const Item& item : items) sorted_.push_back(item.run);
}

void Near_runs::cut_into_bands() {
  for (Run place = 0; place < sorted_.size(); ++place) {
    const double number = band_of(pairs_.rows[sorted_[place]]);
    if (bands_.empty() || bands_.back().number != number) bands_.push_back({number, place});
  }
  bands_.push_back({std::numeric_limits<double>::quiet_NaN(), static_cast<Run>(sorted_.size())});
}

bool Near_runs::can_touch(Run run) const {
  return pairs_.row_tolerance > 0.0 &&
         std::fabs(pairs_.rows[run]) <= std::numeric_limits<double>::max() &&
         pairs_.extents[run].min <= pairs_.extents[run].max;
}

double Near_runs::band_of(double row) const { return std::floor(row / pairs_.step); }

void Near_runs::remove(Run run) {
  if (place_[run] < sorted_.size()) right_ends_.remove(place_[run]);
}

bool Near_runs::find(Run reference, Run first, Run last, std::vector<Run>& found) {
  if (std::isinf(pairs_.step)) return false;  // reaches everywhere
  if (!can_touch(reference)) return true;
  const Run_extent extent = pairs_.extents[reference];
  const double row = pairs_.rows[reference];
  const double step = pairs_.step;
  const auto reaches = [=](float right_end) {
    return static_cast<double>(right_end - extent.min) >= -step;
  };
  const double lowest = band_of(row - pairs_.row_tolerance);
  const double highest = band_of(row + pairs_.row_tolerance);
  auto band = std::lower_bound(bands_.begin(), bands_.end() - 1, lowest,
                               [](const Band& b, double number) { return b.number < number; });
  Run looked_at = 0;
  for (; band->number <= highest; ++band) {
    const std::size_t end = band[1].first;
    std::size_t place = right_ends_.first_from(band->first, reaches);
    for (; place < end; place = right_ends_.first_from(place + 1, reaches)) {
      const Run run = sorted_[place];
      if (looked_at++ == last - first) return false;
      if (!extents_touch(extent, pairs_.extents[run], step)) break;
      if (first <= run && run < last && pairs_.is_near(reference, run)) found.push_back(run);
    }
  }
  return true;
}

}  // namespace chart_trace
