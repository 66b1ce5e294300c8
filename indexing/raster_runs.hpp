#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "indexing/prefetch.hpp"
#include "indexing/run_pairs.hpp"

namespace chart_trace {

// A list of runs in raster order, from which a search takes the runs that touch a given one: the
// fast case of Unordered_runs, with the same answers.
//
// In raster order row follows row downwards, and no run of a row begins left of the end of the one
// before it. Then the runs of a row that touch a given run of the next row stand side by side, and
// that range moves to the right with the given run: one sweep over two neighbouring rows finds it
// for all their runs. This rests on one thing, that the rounded difference of two numbers never
// decreases with the first nor increases with the second; it holds for all finite numbers.
// List order is the order of the picture, so the runs that touch stand in the right order and all
// before those that lie too far below; and whether one of these is left is answered by the last run
// that is left, for none lies lower.
//
// A row is crowded when a run in it touches the 32nd before it, as when a pixel comes 33 times:
// such lists are left to Unordered_runs. In all others the touching pairs are O(n). For when no two
// runs of a row touch, no two runs of it both touch the same two of the next such row, and so two
// rows have fewer pairs than runs; and each row is 32 of that kind, every 32nd run of it.
//
// Cost: linear in the number of runs, all calls together; 17 bytes a run.
class Raster_runs {
 public:
  // Nothing unless the runs are in raster order, on finite coordinates, in rows that are not
  // crowded and lie so far apart that only those next to each other are within the tolerance, and
  // the step is positive and finite.
  static std::optional<Raster_runs> of(const Run_pairs& pairs);

  std::size_t left() const { return left_; }

  // As in Unordered_runs.
  Run take_first() {
    while (!is_left_[first_left_]) ++first_left_;
    take(first_left_);
    return first_left_;
  }

  // As in Unordered_runs.
  bool take_touching(Run reference, bool first_is_exempt, std::vector<Run>& taken) {
    if (last_left_ > 0 && !is_left_[last_left_ - 1]) find_last_left();
    // A run that is exempt and the only one left cannot stop the search.
    const bool stops = reference < stopped_ && !(first_is_exempt && left_ == 1);
    fetch_ahead_of(reference);
    const Neighbours& neighbours = neighbours_[reference];
    take_left_of(neighbours.above, taken);
    if (touch_in_row_) take_left_of(touching_in_row(reference), taken);
    take_left_of(neighbours.below, taken);
    return stops;
  }

 private:
  struct Run_range {
    Run first;
    Run last;  // the one behind the last
  };
  struct Neighbours {
    Run_range above;  // in the row above
    Run_range below;  // in the row below
  };

  explicit Raster_runs(const Run_pairs& pairs) : pairs_(pairs) {}
  bool find_neighbours();
  bool reaches(Run left, Run right) const;
  Run_range touching_in_row(Run reference) const;
  void find_last_left();

  void take(Run run) {
    is_left_[run] = 0;
    --left_;
  }
  void take_left_of(Run_range range, std::vector<Run>& taken) {
    for (Run run = range.first; run < range.last; ++run) {
      if (!is_left_[run]) continue;
      take(run);
      taken.push_back(run);
    }
  }

  // A group jumps from row to row, which is slow where a list has left the cache. It stays within
  // rows that follow each other, though: so the list is fetched from front to back, a little with
  // each search, up to some way ahead. Short lists are in the cache as they are.
  static constexpr Run many = 1U << 17;
  static constexpr Run at_once = 8;
  static constexpr Run ahead = 4096;
  void fetch_ahead_of(Run reference) {
    if (fetched_ >= to_fetch_ || fetched_ >= reference + ahead) return;
    prefetch(&neighbours_[fetched_]);
    prefetch(&neighbours_[fetched_ + at_once / 2]);
    fetched_ += at_once;
  }

  Run_pairs pairs_;
  std::vector<Neighbours> neighbours_;
  bool touch_in_row_ = false;  // whether runs of a row touch each other
  std::vector<char> is_left_;
  std::size_t left_ = 0;
  Run first_left_ = 0;  // none before it is left
  Run last_left_ = 0;   // none from it on is left
  Run stopped_ = 0;     // the last run left lies more than the tolerance below those before it
  Run fetched_ = 0;
  Run to_fetch_ = 0;
};

}  // namespace chart_trace
