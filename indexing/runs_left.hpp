#pragma once

#include <cstddef>
#include <vector>

#include "indexing/max_tree.hpp"
#include "indexing/run_pairs.hpp"

namespace chart_trace {

// The runs of a list that no group has taken yet, and where a search of them stops: at the first
// one that lies more than the tolerance below the reference.
//
// The list is cut into descents: stretches in which no run lies above the one before it. A picture
// in raster order is one descent, one in columns has about one a column. The lowest run left of a
// descent is its last one left, and the rounded difference of two rows never decreases with the
// first: so a descent stops a search just when its last run left does, and a tree of maxima over
// the rows of these finds the first descent that does. Where in this descent the search stops need
// not be known: what lies before the stop in it lies no lower, and what lies behind it no higher,
// too far below to touch the reference. A NaN is a descent of its own and stops no search.
// A run taken is seen by the search that meets its descent: that walks back to the last run left.
// Cost: linear to build, at the first search; O(log n) a search beyond that.
class Runs_left {
 public:
  explicit Runs_left(const Run_pairs& pairs)
      : pairs_(pairs), is_left_(pairs.count, 1), left_(pairs.count), lowest_run_(pairs.count) {}

  std::size_t count() const { return left_; }
  bool is_left(Run run) const { return is_left_[run] != 0; }

  // The first one; the number of all runs when none is left.
  Run first() {
    while (first_ < pairs_.count && !is_left_[first_]) ++first_;
    return first_;
  }

  void take(Run run) {
    is_left_[run] = 0;
    --left_;
  }

  // A place in the list, such that a run that stands at `from` or behind it and touches `reference`
  // stands before the first run left, from `from` on, that lies more than the tolerance below
  // `reference`, just when it stands before that place. The number of all runs does not count as a
  // place: `stops` tells whether there is such a run. `from` must not decrease from call to call.
  struct Stop {
    Run place;
    bool stops;
  };
  Stop stop_of(Run reference, Run from);

  // The same apart, mostly without a search of the tree, for callers whose searches go on side by
  // side. Whether there is such a run at all: the lowest of all runs left tells, until it is taken.
  bool is_any_below(Run reference, Run from);
  // Whether there may be such a run before `run`, which must touch `reference`; false is certain.
  // The descents between `from` and `run` are gone through when `run` first comes to lie behind
  // them, and the lowest row that was left in them is kept; for runs farther back it is more than
  // is asked, and runs taken since still count. forget_passed() begins anew.
  bool may_stop_before(Run run, Run reference, Run from);
  void forget_passed() { passed_ = 0; }

 private:
  struct Descent {
    Run end;
    Run last;  // behind its last run left, or farther back when that was taken lately
  };

  void cut_into_descents();
  double walk_back(std::size_t descent);
  void find_first_descent(Run from);
  void find_lowest_run();

  Run_pairs pairs_;
  std::vector<char> is_left_;
  std::size_t left_;
  Run first_ = 0;  // none before it is left
  std::vector<Descent> descents_;
  std::size_t first_descent_ = 0;  // the one that the search before began in
  double last_row_ = 0;            // of the reference of the search before
  std::size_t last_stop_ = 0;      // the descent in which that search stopped
  // The lowest run left, unless it was taken lately. The number of all runs both before the first
  // search for it and when none is left that can stop a search.
  Run lowest_run_;
  std::size_t passed_ = 0;    // the descents before this one were gone through, from the first on
  double lowest_passed_ = 0;  // no lower row than this was left in them
  Max_tree<double> lowest_{{}};  // the row of the last run left of each, or of one lower
};

}  // namespace chart_trace
