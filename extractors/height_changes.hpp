#pragma once

#include <vector>

// Where a sequence of heights jumps: shared by the extractors that cut columns into bars or steps.

namespace chart_trace {

// For each pair of neighbours the signed change from the one to the next, in percent of the sum of
// all absolute changes: one element less than `heights`, none for fewer than two. All changes 0, or
// any of them NaN, makes every share NaN. Divided first, then multiplied by 100.
std::vector<double> height_changes_in_percent(const std::vector<double>& heights);

// Whether a share of height_changes_in_percent, up or down, is strictly more than half a percent. A
// NaN is none.
bool is_jump(double share);

}  // namespace chart_trace
