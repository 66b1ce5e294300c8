#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "indexing/touching_runs.hpp"

namespace chart_trace {

// A list of runs in raster order, from which a search takes the runs that touch a given one: the
// fast case of Unordered_runs, with the same answers.
//
// List order is the order of the picture, so the runs that touch stand in the right order and all
// before those that lie too far below; and whether one of these is left is answered by the last run
// that is left, for none lies lower.
// Cost: linear in the number of runs and of touching pairs, all calls together.
class Raster_runs {
 public:
  explicit Raster_runs(const Run_pairs& pairs)
      : touching_(pairs), is_left_(pairs.count, 1), left_(pairs.count), last_left_(pairs.count) {}

  std::size_t left() const { return left_; }

  // As in Unordered_runs.
  Run take_first() {
    while (!is_left_[first_left_]) ++first_left_;
    take(first_left_);
    return first_left_;
  }

  // As in Unordered_runs.
  bool take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken) {
    while (last_left_ > 0 && !is_left_[last_left_ - 1]) --last_left_;
    // A run that is exempt and the only one left cannot stop the search.
    const bool is_exempt = first_is_exempt && left_ == 1;
    const bool stopped = last_left_ > touching_.first_below(reference) && !is_exempt;
    touching_.for_each(reference, [&](Run run) {
      if (!is_left_[run]) return;
      take(run);
      taken.push_back(run);
    });
    return stopped;
  }

 private:
  void take(Run run) {
    is_left_[run] = 0;
    --left_;
  }

  Touching_runs touching_;
  std::vector<char> is_left_;
  std::size_t left_;
  Run first_left_ = 0;  // none before it is left
  Run last_left_;       // none from it on is left
};

}  // namespace chart_trace
