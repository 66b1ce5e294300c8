#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include "indexing/run_pairs.hpp"

namespace chart_trace {

// The runs of lower and lower parts of a picture, each part in list order: for searches of a list
// in any order.
//
// A search can pass over every run that lies higher than its reference by the tolerance or more:
// none of these touches it or stops the search. So it goes through the smallest part that holds all
// the others. In shuffled order this is short, since each part holds a quarter of the one before:
// about one run in four or more lies so low that it stops the search. What is left are the lowest
// rows, where nothing does; there the part is small.
// Any choice of parts is exact. In other orders searches may be long: the caller looks at walked()
// and turns to something else.
// Cost: some 3 ns a run to build, 8 bytes a run, and 1 ns a run that a search goes through.
class Lower_runs {
 public:
  explicit Lower_runs(const Run_pairs& pairs);

  // Calls visit(run) for the runs from `from` on, in list order, but may leave out those that
  // neither touch `reference` nor lie more than the tolerance below it; ends with true when visit
  // returns true, else with false. `from` must not decrease from call to call.
  template <typename Visit>
  bool visit_until(Run reference, Run from, Visit visit) {
    Part* const part = part_for(reference);
    if (part == nullptr) return visit_all_until(from, visit);
    std::size_t& first = part->first;
    const std::vector<Item>& items = part->items;
    while (first < items.size() && items[first].run < from) ++first;
    const double row = pairs_.rows[reference];
    const Run_extent extent = pairs_.extents[reference];
    for (std::size_t k = first; k < items.size(); ++k) {
      if (!may_matter(items[k], row, extent) || !visit(items[k].run)) continue;
      walked_ += k - first;
      return true;
    }
    walked_ += items.size() - first;
    return false;
  }

  // How many runs all searches have gone through.
  std::size_t walked() const { return walked_; }

 private:
  // A copy of what is asked of a run: a search goes through thousands.
  struct Item {
    double row;
    Run_extent extent;
    Run run;
  };
  struct Part {
    double top;               // holds the runs on this row and all below
    std::vector<Item> items;  // in list order
    std::size_t first;        // none before it is asked for again
  };

  template <typename Visit>
  bool visit_all_until(Run from, Visit visit) {
    for (Run run = from; run < pairs_.count; ++run, ++walked_) {
      if (visit(run)) return true;
    }
    return false;
  }

  // True of every run that lies more than the tolerance below a row or touches an extent there, and
  // of few others; with no branch, since few do. Whichever begins farther left, the gap that is not
  // the stated one is no gap at all, or NaN.
  bool may_matter(const Item& item, double row, Run_extent extent) const {
    const double down = item.row - row;
    const float gap = item.extent.max - extent.min;
    const float other_gap = extent.max - item.extent.min;
    const unsigned is_apart = static_cast<unsigned>(static_cast<double>(gap) < -pairs_.step) |
                              static_cast<unsigned>(static_cast<double>(other_gap) < -pairs_.step);
    const auto is_below = static_cast<unsigned>(down > pairs_.row_tolerance);
    const auto is_near = static_cast<unsigned>(pairs_.row_tolerance > std::fabs(down));
    return (is_below | (is_near & ~is_apart)) != 0;
  }
  template <typename Item_at>
  bool add_part(std::size_t count, Item_at item_at);
  Part* part_for(Run reference);

  Run_pairs pairs_;
  std::vector<Part> parts_;  // each a part of the one before
  std::size_t walked_ = 0;
};

}  // namespace chart_trace
