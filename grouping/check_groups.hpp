#pragma once

#include <vector>

// Whether two runs touch horizontally: their extents overlap, or the gap between the end of the
// left one and the start of the right one is at most `pixel_step`. Extents are compared in single
// precision, the gap is widened to double for its test. `a` and `b` hold x values, in image pixels;
// neither may be empty. A NaN as smallest value (only a NaN in first place) makes it false.
// Cost: one pass over both.
bool check_groups(std::vector<double> a, std::vector<double> b, double pixel_step);
