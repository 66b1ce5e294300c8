#include "indexing/line_walk.hpp"

#include <cstddef>
#include <utility>

#include "indexing/bits.hpp"

namespace chart_trace {
namespace {

// The pixel itself, among the nine that are seen around it.
constexpr Pixel_map::Word centre = 1 << 4;

}  // namespace

Line_walk::Line_walk(std::uint32_t stride) {
  std::size_t around = 1;
  for (const std::uint32_t row : {0 - stride, 0U, stride}) {
    for (const std::uint32_t places : {row - 1, row, row + 1}) {
      to_neighbour_[around] = places;
      to_neighbour_[around | centre] = places;
      around *= 2;
    }
  }
}

Line_walk::Ends Line_walk::follow(Ends ends, Pixel_map& map, Pixel_writer& points) const {
  Pixel_writer writer = points;  // a copy, which need not be in memory meanwhile
  End a{ends.first, writer.pixel_at(ends.first)};
  End b{ends.second, writer.pixel_at(ends.second)};
  map.flip(a.place);
  if (ends.has_second) map.flip(b.place);
  while (step(a, b.place, map, writer)) {
    if (ends.has_second && !step(b, a.place, map, writer)) {
      std::swap(a, b);
      break;
    }
  }
  map.flip(a.place);
  if (ends.has_second) map.flip(b.place);
  points = writer;
  return {a.place, b.place, ends.has_second};
}

inline bool Line_walk::step(End& end, std::uint32_t other, Pixel_map& map,
                            Pixel_writer& points) const {
  const Pixel_map::Word around = map.around(end.place);
  const std::uint32_t places = to_neighbour(around);
  const std::uint32_t next = end.place + places;
  if (places == 0 || next == other) return false;
  map.flip(end.place);
  end = {next, end.pixel + points.to_neighbours()[lowest_bit(around & ~centre)]};
  points.add(end.pixel);
  return true;
}

}  // namespace chart_trace
