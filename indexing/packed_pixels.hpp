#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace chart_trace {

// A point whose coordinates are whole numbers from 0 to 65535, as those of pixels are: its x in the
// lower half, its y in the upper one.
using Packed_pixel = std::uint32_t;
inline std::uint32_t column_of(Packed_pixel pixel) { return pixel & 0xFFFFU; }
inline std::uint32_t row_of(Packed_pixel pixel) { return pixel >> 16; }

// The points of a set in input order as pixels, a quarter of their size: what is read again and
// again, or sorted, stays in a near cache. Nothing if any of them is no pixel; a -0.0 is none, as
// its sign would be lost.
// Exact: a coordinate is taken for the whole number that converts to the same bits.
// Cost: one pass, some 0.6 ns a point.
std::optional<std::vector<Packed_pixel>> packed_pixels(const std::vector<double>& x,
                                                       const std::vector<double>& y);

// The coordinates of the pixels, written to `x` and `y`, which are as long as `pixels`.
void unpack(const std::vector<Packed_pixel>& pixels, std::vector<double>& x,
            std::vector<double>& y);

}  // namespace chart_trace
