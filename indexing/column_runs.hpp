#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "indexing/run_pairs.hpp"
#include "indexing/runs_left.hpp"

namespace chart_trace {

// A list of runs that come column by column, from which a search takes the runs that touch a given
// one: the fast case of Unordered_runs for pictures read by columns, with the same answers.
//
// The runs have whole numbers and a step of 1, so that touching means rows and columns at most 1
// apart. The runs of a column stand in the list from top to bottom, no pixel twice. Most are one
// pixel long; a longer one is the last of the column it begins in, the first of the one it ends in
// and the only one of those between.
// So the runs that touch a given one in the column before it stand side by side in the list, and so
// do those in the column behind; and as the given run moves on through the list, so do the places
// where they begin. One sweep for each finds these places for all runs; from there on the stated
// comparison tells how far those that touch reach. The others stand next to the given run.
//
// Cost: linear in the number of runs and of touching pairs, and what Runs_left takes for a search;
// 8 bytes a run.
class Column_runs {
 public:
  // Nothing when the runs come in another order or on other numbers.
  static std::optional<Column_runs> of(const Run_pairs& pairs);

  std::size_t left() const { return left_.count(); }

  // As in Unordered_runs.
  Run take_first() {
    const Run first = left_.first();
    left_.take(first);
    left_.forget_passed();
    return first;
  }
  bool take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken);

 private:
  explicit Column_runs(const Run_pairs& pairs);
  template <typename Is_passed>
  std::vector<Run> first_not(Is_passed is_passed) const;
  template <typename Visit>
  void for_each_touching(Run reference, Visit visit) const;

  Run_pairs pairs_;
  Runs_left left_;
  // Of each run the first one in the column before, and in the column behind, that can touch it; or
  // a later one, that does not, if there is none.
  std::vector<Run> first_before_;
  std::vector<Run> first_behind_;
  bool was_cut_short_ = false;
};

}  // namespace chart_trace
