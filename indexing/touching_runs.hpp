#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "indexing/run_pairs.hpp"

namespace chart_trace {

// Which runs of a picture in raster order touch a given one.
//
// In raster order row follows row downwards, and no run of a row begins left of the end of the one
// before it. Then the runs of a row that touch a given run stand side by side, and that range moves
// to the right with the given run: one sweep over two neighbouring rows finds it for all their
// runs. This rests on one thing, that the rounded difference of two numbers never decreases with
// the first nor increases with the second; it holds for whatever numbers pass in_raster_order().
// Cost: linear in the number of runs and of touching pairs.
class Touching_runs {
 public:
  // Whether the runs are in raster order, on finite coordinates, in rows so far apart that only the
  // rows next to each other are within the tolerance, and the step is positive and finite.
  static bool in_raster_order(const Run_pairs& pairs);

  // Only for runs in raster order.
  explicit Touching_runs(const Run_pairs& pairs);

  // Calls visit(run) for every run that touches `reference`, in list order, and maybe for
  // `reference` itself.
  template <typename Visit>
  void for_each(Run reference, Visit visit) const {
    const Neighbours& neighbours = neighbours_[reference];
    for (Run k = neighbours.above.first; k < neighbours.above.last; ++k) visit(k);
    if (rows_[neighbours.row].is_crowded) {
      const Range same = touching_in_row(reference);
      for (Run k = same.first; k < same.last; ++k) visit(k);
    }
    for (Run k = neighbours.below.first; k < neighbours.below.last; ++k) visit(k);
  }

  // The first of all runs that lie more than the tolerance below `reference`; they are all the runs
  // from there on.
  Run first_below(Run reference) const { return rows_[neighbours_[reference].row].below; }

 private:
  struct Range {
    Run first;
    Run last;  // the one behind the last
  };
  struct Row {
    Run first;  // the row ends where the next one begins
    Run below;
    bool is_crowded;  // whether runs of the row touch each other
  };
  struct Neighbours {
    Range above;  // in the row above
    Range below;  // in the row below
    std::uint32_t row;
  };

  void cut_into_rows();
  void find_rows_below();
  void sweep(std::size_t row);
  bool reaches(Run left, Run right) const;
  Range touching_in_row(Run reference) const;

  Run_pairs pairs_;
  std::vector<Row> rows_;  // the last one is a guard behind all others
  std::vector<Neighbours> neighbours_;
};

}  // namespace chart_trace
