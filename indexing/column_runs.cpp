#include "indexing/column_runs.hpp"

#include <cmath>
#include <cstdint>

namespace chart_trace {
namespace {

// Whether a number is whole and so small that single precision holds it and all smaller ones.
template <typename Number>
bool is_whole(Number number) {
  return std::fabs(number) <= Number{16777216} &&
         static_cast<Number>(static_cast<std::int32_t>(number)) == number;
}

bool come_by_columns(const Run_pairs& pairs) {
  if (pairs.step != 1.0) return false;
  for (Run k = 0; k < pairs.count; ++k) {
    const Run_extent extent = pairs.extents[k];
    if (!is_whole(extent.min) || !is_whole(extent.max) || !is_whole(pairs.rows[k])) return false;
    if (k == 0) continue;
    const float end = pairs.extents[k - 1].max;
    if (!(end < extent.min || (end == extent.min && pairs.rows[k - 1] < pairs.rows[k]))) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::optional<Column_runs> Column_runs::of(const Run_pairs& pairs) {
  if (!come_by_columns(pairs)) return std::nullopt;
  return Column_runs(pairs);
}

Column_runs::Column_runs(const Run_pairs& pairs) : pairs_(pairs), left_(pairs) {
  const double* const rows = pairs.rows;
  const Run_extent* const extents = pairs.extents;
  // Farther left than the column before; or in it and too far above.
  first_before_ = first_not([=](Run run, Run reference) {
    const float column = extents[reference].min - 1.0F;
    return extents[run].max < column ||
           (extents[run].max == column && rows[run] < rows[reference] - 1.0);
  });
  // Not farther right than the run itself; or in the column behind and too far above.
  first_behind_ = first_not([=](Run run, Run reference) {
    const float column = extents[reference].max + 1.0F;
    return extents[run].max < column ||
           (extents[run].min <= column && rows[run] < rows[reference] - 1.0);
  });
}

// For each run the first one that is not passed. What is passed for one run touches none of those
// behind it, unless the two stand next to each other.
template <typename Is_passed>
std::vector<Run> Column_runs::first_not(Is_passed is_passed) const {
  std::vector<Run> firsts;
  firsts.reserve(pairs_.count);
  Run first = 0;
  for (Run reference = 0; reference < pairs_.count; ++reference) {
    while (first < pairs_.count && is_passed(first, reference)) ++first;
    firsts.push_back(first);
  }
  return firsts;
}

// In list order, but that a run may come once more later.
template <typename Visit>
void Column_runs::for_each_touching(Run reference, Visit visit) const {
  const auto touch = [this, reference](Run run) { return pairs_.touch(reference, run); };
  for (Run k = first_before_[reference]; k < reference && touch(k); ++k) visit(k);
  if (reference > 0 && touch(reference - 1)) visit(reference - 1);
  if (reference + 1 < pairs_.count && touch(reference + 1)) visit(reference + 1);
  for (Run k = first_behind_[reference]; k < pairs_.count && touch(k); ++k) visit(k);
}

bool Column_runs::take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken) {
  const auto take = [&](Run run) {
    left_.take(run);
    taken.push_back(run);
  };
  const Run first = left_.first();
  // Half of all searches of a solid shape go down a column and stop right behind the first run.
  // When that one stops the search itself, it does not touch.
  if (pairs_.count - first > 1 && left_.is_left(first + 1) &&
      pairs_.is_below(reference, first + 1)) {
    if (pairs_.touch(reference, first)) take(first);
    return true;
  }
  const Run from = first_is_exempt ? first + 1 : first;
  // Where the last search stopped before all that touches was taken, as in solid shapes, the next
  // one does most likely: then the stop is searched for at once.
  std::optional<Runs_left::Stop> stop;
  if (was_cut_short_) stop = left_.stop_of(reference, from);
  const bool stops = stop ? stop->stops : left_.is_any_below(reference, from);
  was_cut_short_ = false;
  for_each_touching(reference, [&](Run run) {
    if (!left_.is_left(run)) return;
    if (!stop && left_.may_stop_before(run, reference, from)) stop = left_.stop_of(reference, from);
    if (stop && run >= stop->place) {
      was_cut_short_ = true;
    } else {
      take(run);
    }
  });
  return stops;
}

}  // namespace chart_trace
