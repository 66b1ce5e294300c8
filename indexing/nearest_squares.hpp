#pragma once

#include <cstddef>
#include <vector>

#include "indexing/packed_pixels.hpp"

namespace chart_trace {

// The squares of the `taken` smallest distances from point 0 to the points 1 to count - 1 of the
// set (x[i], y[i]), ascending; each is (y[0] - y[i])² + (x[0] - x[i])² as it rounds. A NaN comes
// after all numbers. There must be at least `taken` of those points.
//
// Why squares will do: the root never decreases, rounding included, so the roots of these squares,
// in their order, are the smallest distances in ascending order.
// Cost: one pass, and a sort of little more than the `taken` squares.
std::vector<double> nearest_squares(const std::vector<double>& x, const std::vector<double>& y,
                                    std::size_t count, std::size_t taken);

// The same of pixels that are near each other, as are_near() tells of their frame. Their squares
// are whole numbers, which no step rounds. Cost: half that of points.
std::vector<double> nearest_squares(const Packed_pixels& pixels, std::size_t count,
                                    std::size_t taken);

}  // namespace chart_trace
