#pragma once

#include <cstddef>
#include <vector>

#include "indexing/max_tree.hpp"
#include "indexing/run_pairs.hpp"

namespace chart_trace {

// Finds the runs that touch a given one, wherever they stand in the list.
//
// The runs are sorted into bands of rows one step high, inside a band by their left ends, and a
// tree of maxima over their right ends finds the next run of a band that reaches far enough to the
// right; the first of them that begins too far to the right ends the search in that band. Nothing
// is missed: the band of a row, floor(row / step), never decreases with the row, rounding included,
// so the rows within the tolerance lie in the bands from that of the lowest to that of the highest;
// and of two ends of runs the one farther right never leaves a smaller gap to the left, rounding
// included. The comparisons that define touching decide about each run that is proposed.
// Runs that can touch nothing are left out: those on a row or at a place that is no number, and
// those on an infinite row. The step must be positive and finite.
// Cost: some 20 ns a run to build for pixels; O(log n) for each run that is proposed.
class Near_runs {
 public:
  explicit Near_runs(const Run_pairs& pairs);

  void remove(Run run);

  // Appends to `found`, in no particular order, the runs from `first` to before `last` that touch
  // `reference`. Gives up, with false, when it would take more than last - first runs to look at.
  bool find(Run reference, Run first, Run last, std::vector<Run>& found);

 private:
  struct Band {
    double number;
    Run first;  // place of its first run; it ends where the next band begins
  };

  bool can_touch(Run run) const;
  double band_of(double row) const;
  void sort_runs();
  void cut_into_bands();

  Run_pairs pairs_;
  std::vector<Run> sorted_;     // by band, then by left end
  std::vector<Run> place_;      // of each run in sorted_; its size for those left out
  std::vector<Band> bands_;     // the last one is a guard behind all others
  Max_tree<float> right_ends_;  // parallel to sorted_
};

}  // namespace chart_trace
