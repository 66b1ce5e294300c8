#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "indexing/pixel_writer.hpp"
#include "indexing/point_writer.hpp"
#include "primitives/groups.hpp"

namespace chart_trace {

// Takes all groups of a picture off the map of a flood fill. If the map is turned, its columns are
// the rows of the picture.
//
// They are written as packed pixels, and stay packed where the coordinates of the picture can be.
// Otherwise they are packed as they lie on the map, and become points again at the end. The points
// x and y are given up: what they hold is not needed, their memory is.
template <typename Flood>
Groups picture_groups(Flood flood, std::vector<double>& x, std::vector<double>& y,
                      bool is_turned = false) {
  const Pixel_map& map = flood.map();
  const double left = is_turned ? map.top() : map.left();
  const double top = is_turned ? map.left() : map.top();
  const bool stay_packed = map.holds_packed();
  const std::size_t count = x.size() + Pixel_writer::spare;
  if (stay_packed) {
    std::vector<double>().swap(x);
    std::vector<double>().swap(y);
  }
  Packed_pixels pixels(count);
  const Packed_pixel origin =
      stay_packed ? packed(static_cast<std::int32_t>(left), static_cast<std::int32_t>(top)) : 0;
  std::vector<std::uint32_t> ends =
      write_groups(flood, Pixel_writer(map, origin, is_turned, pixels.data()));
  if (stay_packed) return {std::move(pixels), std::move(ends)};
  pixels.unpack(x, y);
  for (double& value : x) value += left;
  for (double& value : y) value += top;
  return {std::move(x), std::move(y), std::move(ends)};
}

}  // namespace chart_trace
