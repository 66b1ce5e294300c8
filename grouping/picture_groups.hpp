#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "indexing/pixel_writer.hpp"
#include "indexing/point_writer.hpp"
#include "primitives/groups.hpp"

namespace chart_trace {

// Takes all groups of a picture off the map of a flood fill. The points of the picture, x and y,
// are given up: their memory is free again when packed pixels are written, or takes the groups. If
// the map is turned, its columns are the picture's rows.
template <typename Flood>
Groups picture_groups(Flood flood, std::vector<double>& x, std::vector<double>& y,
                      bool is_turned = false) {
  if (!flood.map().holds_packed()) {
    Point_writer points = is_turned ? Point_writer(y, x) : Point_writer(x, y);
    std::vector<std::uint32_t> ends = write_groups(flood, Pixel_writer(flood.map(), points));
    return {std::move(x), std::move(y), std::move(ends)};
  }
  const std::size_t count = x.size() + Pixel_writer::spare;
  std::vector<double>().swap(x);
  std::vector<double>().swap(y);
  Packed_pixels pixels(count);
  std::vector<std::uint32_t> ends =
      write_groups(flood, Pixel_writer(flood.map(), is_turned, pixels.data()));
  return {std::move(pixels), std::move(ends)};
}

}  // namespace chart_trace
