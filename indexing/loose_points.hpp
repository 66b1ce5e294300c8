#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "indexing/bits.hpp"
#include "indexing/cell_parts.hpp"
#include "indexing/free_places.hpp"

namespace chart_trace {

// A point of a set and its place in the input order.
struct Indexed_point {
  double x;
  double y;
  std::uint32_t index;
};

// A point that has been taken: its index above its place, so that these numbers are in the order
// of the indices.
using Taken_place = std::uint64_t;
inline std::uint32_t place_in(Taken_place taken) { return static_cast<std::uint32_t>(taken); }

// Points in the order of places, from which those in a box are taken. A quick look at their marks
// leaves few; these are compared with the bounds of the box, and that decides.
struct Loose_points {
  static constexpr std::uint32_t most_at_once = Free_places::word_bits;

  explicit Loose_points(std::size_t count)
      : points(new Indexed_point[count]), marks(new Mark[count + marks_behind]()), free(count) {}

  // Takes those in the window among the `count` free points from place `begin` on, most_at_once at
  // most, and writes them to `out`, in the order of places; returns the end of them.
  Taken_place* take(std::uint32_t begin, std::uint32_t count, const Window& window,
                    Taken_place* out) {
    const std::uint64_t left = free.among(begin, count);
    if (left == 0) return out;
    std::uint64_t taken = 0;
    for (std::uint64_t near = left & which_are_near(&marks[begin], count, window); near != 0;
         near &= near - 1) {
      const auto place = begin + static_cast<std::uint32_t>(lowest_bit(near));
      const Indexed_point& point = points[place];
      if (!window.box.contains(point.x, point.y)) continue;
      *out++ = Taken_place{point.index} << 32 | place;
      taken |= near & (~near + 1);
    }
    if (taken != 0) free.take(begin, taken);
    return out;
  }

  std::unique_ptr<Indexed_point[]> points;
  std::unique_ptr<Mark[]> marks;
  Free_places free;
};

}  // namespace chart_trace
