#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "indexing/max_tree.hpp"
#include "indexing/near_runs.hpp"
#include "indexing/run_map.hpp"
#include "indexing/run_pairs.hpp"

namespace chart_trace {

// A list of runs, in any order and on any numbers, from which a search takes the runs that touch a
// given one.
//
// A tree of maxima over the rows says where the first run stands that stops a search. The runs
// before it are gone through one by one if they are few; else Run_map or, for runs that have no
// place on it, Near_runs finds those that touch. When more runs touch than stand before the stop,
// as on points that lie closer than a step, all these are gone through as well. Cost: O(log n) a
// search and a touching run; quadratic only for crowded or infinite coordinates.
class Unordered_runs {
 public:
  explicit Unordered_runs(const Run_pairs& pairs);

  std::size_t left() const { return left_; }

  // Takes the first run left out of the list. There must be one.
  Run take_first();

  // Goes through the runs left, in list order, takes those that touch the reference out of the list
  // and appends them to `taken`. The first run found to lie more than the tolerance below stops the
  // search; the first run of the list does not when it is exempt. Returns whether a run stopped it.
  bool take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken);

 private:
  Run first_left();
  Run first_below(Run reference, Run from);
  void take_between(Run first, Run last, Run reference, std::vector<Run>& taken);
  bool find_between(Run first, Run last, Run reference);
  void take(Run run);

  Run_pairs pairs_;
  std::vector<char> is_left_;
  std::size_t left_;
  Run first_left_ = 0;  // none before it is left
  Max_tree<double> rows_;
  double last_row_ = 0;  // of the reference before, and where its search stopped
  Run last_stop_ = 0;
  std::optional<Run_map> map_;
  std::optional<Near_runs> near_;  // if there is no map
  std::vector<Run> found_;
};

}  // namespace chart_trace
