#pragma once

#include <cstddef>
#include <vector>

#include "primitives/vectors.hpp"

// Whether a pixel group is a compact, densely filled blob, a marker of a scatter chart, rather than
// a thin line, a piece of a curve. The group is measured in cells of `cell_size`: it must not be
// elongated (twice as long as wide or more; four times when it is one cell wide), and unless it has
// fewer than 4 points its points must make up more than 65 percent of the cells of its bounding
// box. The extent of one row or column is 0 cells, so a straight run one pixel thick counts as
// filled, on purpose. Ratios are compared in single precision; cell counts and their product are
// signed 32-bit integers, the product wraps. A cell size of 0 or NaN is taken as it comes.
// `x` and `y` must be parallel and not empty. Cost: one pass.
bool check_solid_filled(std::vector<double> x, std::vector<double> y, double cell_size);

namespace chart_trace {

// The same for `count` points, of which no more than the extremes are needed.
bool is_solid_filled(const Extremes& x, const Extremes& y, std::size_t count, double cell_size);

}  // namespace chart_trace
