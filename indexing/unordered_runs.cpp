#include "indexing/unordered_runs.hpp"

#include <algorithm>

namespace chart_trace {
namespace {

// So few runs are gone through one by one, at the front of the list and before a stop.
constexpr Run few = 16;

// Going through lower parts of the list pays up to about so many steps a run, all searches
// together: shuffled pixels need 0.1 to 12.
constexpr std::size_t most_steps = 14;

}  // namespace

Run Unordered_runs::take_first() {
  const Run first = left_.first();
  take(first);
  return first;
}

bool Unordered_runs::take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken) {
  const Run first = left_.first();
  if (first == pairs_.count) return false;
  if (!lower_ || lower_->walked() <= most_steps * pairs_.count) {
    return take_walking(first, reference, first_is_exempt, taken);
  }
  const Runs_left::Stop stop = left_.stop_of(reference, first_is_exempt ? first + 1 : first);
  take_between(first, stop.place, reference, taken);
  return stop.stops;
}

bool Unordered_runs::take_walking(Run first, Run reference, bool first_is_exempt,
                                  std::vector<Run>& taken) {
  // Takes a run if it touches; returns whether it stops the search.
  const auto look_at = [&](Run run) {
    if (!left_.is_left(run)) return false;
    if (pairs_.is_below(reference, run) && !(first_is_exempt && run == first)) return true;
    if (pairs_.touch(reference, run)) {
      take(run);
      taken.push_back(run);
    }
    return false;
  };
  const Run far = first + std::min(few, pairs_.count - first);
  for (Run run = first; run < far; ++run) {
    if (look_at(run)) return true;
  }
  if (far == pairs_.count) return false;
  if (!lower_) lower_.emplace(pairs_);
  return lower_->visit_until(reference, far, look_at);
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
    if (!left_.is_left(run) || !pairs_.touch(reference, run)) continue;
    take(run);
    taken.push_back(run);
  }
}

// Sets found_ to the runs left that touch the reference, unless these are too many.
bool Unordered_runs::find_between(Run first, Run last, Run reference) {
  if (!map_ && !near_) make_index();
  found_.clear();
  if (!map_) return near_->find(reference, first, last, found_);
  map_->for_each_touching(reference, [&](Run run) {
    if (first <= run && run < last) found_.push_back(run);
  });
  return true;
}

void Unordered_runs::make_index() {
  map_ = Run_map::of(pairs_);
  if (!map_) near_.emplace(pairs_);
  for (Run run = 0; run < pairs_.count; ++run) {
    if (!left_.is_left(run)) remove_from_index(run);
  }
}

void Unordered_runs::remove_from_index(Run run) {
  if (map_) map_->remove(run);
  if (near_) near_->remove(run);
}

void Unordered_runs::take(Run run) {
  left_.take(run);
  remove_from_index(run);
}

}  // namespace chart_trace
