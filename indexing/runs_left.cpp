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

// Finds the last run left of a descent and takes its row for the lowest; if none is left, negative
// infinity, which stops nothing.
void Runs_left::walk_back(std::size_t descent) {
  Run& last = descents_[descent].last;
  const Run begin = descent == 0 ? 0 : descents_[descent - 1].end;
  while (last > begin && !is_left_[last - 1]) --last;
  const double lowest =
      last > begin ? pairs_.rows[last - 1] : -std::numeric_limits<double>::infinity();
  lowest_.lower(descent, lowest);
}

Runs_left::Stop Runs_left::stop_of(Run reference, Run from) {
  if (descents_.empty()) cut_into_descents();
  while (first_descent_ < descents_.size() && descents_[first_descent_].end <= from) {
    ++first_descent_;
  }
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

}  // namespace chart_trace
