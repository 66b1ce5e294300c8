#pragma once

// Where a sequence of heights jumps: shared by the extractors that cut columns into bars or steps.

namespace chart_trace {

// The changes from each height of a sequence to the next. All of them are added, in order, before
// any is asked for.
class Height_changes {
 public:
  void add(double from, double to);

  // Whether this change, up or down, is strictly more than half a percent of the sum of all
  // absolute changes: divided first, then multiplied by 100. When all changes are 0, or any of them
  // is NaN, none is.
  bool is_jump(double from, double to) const;

 private:
  double total_ = 0.0;
};

}  // namespace chart_trace
