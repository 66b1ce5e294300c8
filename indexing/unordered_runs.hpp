#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "indexing/lower_runs.hpp"
#include "indexing/near_runs.hpp"
#include "indexing/run_map.hpp"
#include "indexing/run_pairs.hpp"
#include "indexing/runs_left.hpp"

namespace chart_trace {

// A list of runs, in any order and on any numbers, from which a search takes the runs that touch a
// given one.
//
// First each search walks: through the first runs of the list, where in shuffled order nearly every
// search stops, and from there through Lower_runs. When all walks together have taken too many
// steps, as they soon do in orders that leave long ways to go, searches turn to an index: Runs_left
// says where they stop, and Run_map or, for runs that have no place on it, Near_runs finds those
// that touch. When more runs touch than stand before the stop, as on points that lie closer than a
// step, all these are gone through as well. Cost: 20 ns a run in shuffled order; by index O(log n)
// a search and a touching run; quadratic only for crowded or infinite coordinates.
class Unordered_runs {
 public:
  explicit Unordered_runs(const Run_pairs& pairs) : pairs_(pairs), left_(pairs) {}

  std::size_t left() const { return left_.count(); }

  // Takes the first run left out of the list. There must be one.
  Run take_first();

  // Goes through the runs left, in list order, takes those that touch the reference out of the list
  // and appends them to `taken`. The first run found to lie more than the tolerance below stops the
  // search; the first run of the list does not when it is exempt. Returns whether a run stopped it.
  bool take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken);

 private:
  bool take_walking(Run first, Run reference, bool first_is_exempt, std::vector<Run>& taken);
  void take_between(Run first, Run last, Run reference, std::vector<Run>& taken);
  bool find_between(Run first, Run last, Run reference);
  void make_index();
  void remove_from_index(Run run);
  void take(Run run);

  Run_pairs pairs_;
  Runs_left left_;
  std::optional<Lower_runs> lower_;
  // What finds the runs that touch, made when it is first asked: a map or, if there is none, bands.
  std::optional<Run_map> map_;
  std::optional<Near_runs> near_;
  std::vector<Run> found_;
};

}  // namespace chart_trace
