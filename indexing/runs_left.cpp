#include "indexing/runs_left.hpp"

#include <algorithm>
#include <limits>
#include <utility>

namespace chart_trace {

void Runs_left::cut_into_descents() {
  std::vector<double> rows;
  for (Run run = 0; run < pairs_.count; ++run) {
    const double row = pairs_.rows[run];
    // A NaN begins a descent, and so does what comes after one.
    if (run == 0 || !(row >= pairs_.rows[run - 1])) {
      descents_.emplace_back();
      rows.emplace_back();
    }
    descents_.back() = {run + 1, run + 1};
    rows.back() = row == row ? row : -std::numeric_limits<double>::infinity();
  }
  lowest_ = Max_tree<double>(std::move(rows));
}

// Finds the last run left of a descent and takes its row for the lowest; negative infinity, which
// stops nothing, if that is a NaN or none is left.
double Runs_left::walk_back(std::size_t descent) {
  Run& last = descents_[descent].last;
  const Run begin = descent == 0 ? 0 : descents_[descent - 1].end;
  while (last > begin && !is_left_[last - 1]) --last;
  const bool is_number = last > begin && pairs_.rows[last - 1] == pairs_.rows[last - 1];
  const double row = is_number ? pairs_.rows[last - 1] : -std::numeric_limits<double>::infinity();
  lowest_.lower(descent, row);
  return row;
}

void Runs_left::find_first_descent(Run from) {
  if (descents_.empty()) cut_into_descents();
  while (first_descent_ < descents_.size() && descents_[first_descent_].end <= from) {
    ++first_descent_;
  }
}

Runs_left::Stop Runs_left::stop_of(Run reference, Run from) {
  find_first_descent(from);
  // What did not stop the search before, for a reference that lies no lower, does not stop this
  // one.
  const double row = pairs_.rows[reference];
  if (!(row >= last_row_)) last_stop_ = 0;
  last_row_ = row;
  last_stop_ = std::max(last_stop_, first_descent_);
  const auto is_below = [=](double other) { return other - row > pairs_.row_tolerance; };
  for (;;) {
    last_stop_ = lowest_.first_from(last_stop_, is_below);
    if (last_stop_ == descents_.size()) return {pairs_.count, false};
    const Descent& found = descents_[last_stop_];
    if (found.last <= from) {
      ++last_stop_;  // what is left of the first descent stands before `from`
    } else if (is_left_[found.last - 1]) {
      return {found.end, true};
    } else {
      walk_back(last_stop_);
    }
  }
}

bool Runs_left::is_any_below(Run reference, Run from) {
  if (lowest_run_ == pairs_.count || !is_left_[lowest_run_]) find_lowest_run();
  if (lowest_run_ == pairs_.count) return false;
  if (lowest_run_ < from) return stop_of(reference, from).stops;
  return pairs_.is_below(reference, lowest_run_);
}

void Runs_left::find_lowest_run() {
  if (descents_.empty()) cut_into_descents();
  lowest_run_ = pairs_.count;
  for (;;) {
    const std::size_t lowest = lowest_.largest();
    if (lowest == descents_.size()) return;
    const Run last = descents_[lowest].last - 1;
    if (is_left_[last]) {
      lowest_run_ = last;
      return;
    }
    walk_back(lowest);
  }
}

bool Runs_left::may_stop_before(Run run, Run reference, Run from) {
  find_first_descent(from);
  if (run < from || run < descents_[first_descent_].end) return false;
  if (passed_ <= first_descent_) {
    passed_ = first_descent_;
    lowest_passed_ = -std::numeric_limits<double>::infinity();
  }
  for (; descents_[passed_].end <= run; ++passed_) {
    lowest_passed_ = std::max(lowest_passed_, walk_back(passed_));
  }
  return lowest_passed_ - pairs_.rows[reference] > pairs_.row_tolerance;
}

}  // namespace chart_trace
