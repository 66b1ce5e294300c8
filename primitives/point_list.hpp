#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "indexing/packed_pixels.hpp"

namespace chart_trace {

// Points one behind the other, in one of two forms: packed, where all are known to be pixels, which
// takes a quarter of the memory and of the time to go through it; two parallel lists of coordinates
// otherwise. The lists are empty beside packed pixels.
struct Point_list {
  std::optional<Packed_pixels> pixels;
  std::vector<double> x, y;

  std::size_t size() const { return pixels ? pixels->size() : x.size(); }
};

}  // namespace chart_trace
