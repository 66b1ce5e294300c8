#include "indexing/unordered_runs.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace chart_trace {
namespace {

// So few runs are gone through one by one.
constexpr Run few = 16;

// The rows, for a search of the first one far enough below: NaN never is.
std::vector<double> numbers_of(const double* rows, std::size_t count) {
  std::vector<double> numbers(rows, rows + count);
  for (double& number : numbers) {
    if (std::isnan(number)) number = -std::numeric_limits<double>::infinity();
  }
  return numbers;
}

}  // namespace

Unordered_runs::Unordered_runs(const Run_pairs& pairs)
    : pairs_(pairs),
      is_left_(pairs.count, 1),
      left_(pairs.count),
      rows_(numbers_of(pairs.rows, pairs.count)),
      map_(Run_map::of(pairs)) {
  if (!map_) near_.emplace(pairs);
}

// The number of runs when none is left.
Run Unordered_runs::first_left() {
  while (first_left_ < pairs_.count && !is_left_[first_left_]) ++first_left_;
  return first_left_;
}

Run Unordered_runs::take_first() {
  const Run first = first_left();
  take(first);
  return first;
}

bool Unordered_runs::take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken) {
  const Run first = first_left();
  if (first == pairs_.count) return false;
  const Run stop = first_below(reference, first_is_exempt ? first + 1 : first);
  take_between(first, stop, reference, taken);
  return stop != pairs_.count;
}

// The first run left, from `from` on, that lies more than the tolerance below the reference. What
// did not stop the search before, for a reference that lies no lower, does not stop this one: it
// begins where that one stopped. The one run that search was exempt from was the first of the list
// and still is, or it has been taken.
Run Unordered_runs::first_below(Run reference, Run from) {
  const double row = pairs_.rows[reference];
  if (row >= last_row_) from = std::max(from, last_stop_);
  last_row_ = row;
  last_stop_ = static_cast<Run>(
      rows_.first_from(from, [=](double other) { return other - row > pairs_.row_tolerance; }));
  return last_stop_;
}

void Unordered_runs::take_between(Run first, Run last, Run reference, std::vector<Run>& taken) {
  if (last - first > few && find_between(first, last, reference)) {
    if (found_.size() > 1) std::sort(found_.begin(), found_.end());
    for (const Run run : found_) {
      take(run);
      taken.push_back(run);
    }
    return;
  }
  for (Run run = first; run < last; ++run) {
    if (!is_left_[run] || !pairs_.touch(reference, run)) continue;
    take(run);
    taken.push_back(run);
  }
}

// Sets found_ to the runs left that touch the reference, unless these are too many.
bool Unordered_runs::find_between(Run first, Run last, Run reference) {
  found_.clear();
  if (!map_) return near_->find(reference, first, last, found_);
  map_->for_each_touching(reference, [&](Run run) {
    if (first <= run && run < last) found_.push_back(run);
  });
  return true;
}

void Unordered_runs::take(Run run) {
  is_left_[run] = 0;
  --left_;
  rows_.remove(run);
  if (map_) {
    map_->remove(run);
  } else {
    near_->remove(run);
  }
}

}  // namespace chart_trace
