#pragma once

#include <array>
#include <cstdint>

#include "indexing/pixel_map.hpp"
#include "indexing/pixel_writer.hpp"

namespace chart_trace {

// Follows a line one pixel thick, from one end of it or from two by turns, as a flood fill that is
// breadth first does.
//
// As long as each pixel finds exactly one other, a queue of one or two pixels stays that long: the
// one or two pixels in hand are all of it, and what is taken can be written at once. The cost is
// the time from one pixel to the next, as nothing can be done before it is known where that is: to
// look at three rows of the map and then at a table of what may be seen there. With two ends, one
// look is made while the other is under way. So that a look need not wait until the pixel found
// before it has been taken off the map, pixels are taken off when their turn comes. Those on the
// map are then the free ones and the ones in hand; the latter are known, and passed over.
class Line_walk {
 public:
  explicit Line_walk(std::uint32_t stride);

  // What to add to a place to get to its only neighbour; 0 when there are none, or several.
  // `around` is what Pixel_map::around tells, with or without the place itself.
  std::uint32_t to_neighbour(Pixel_map::Word around) const { return to_neighbour_[around]; }

  // The places of the pixels in hand, in the order of their turns; `second` only if `has_second`.
  struct Ends {
    std::uint32_t first;
    std::uint32_t second;
    bool has_second;
  };

  // Goes on from these pixels, which are taken and written, until the one whose turn it is finds no
  // pixel, several, or the other one in hand. Returns the pixels in hand then.
  Ends follow(Ends ends, Pixel_map& map, Pixel_writer& points) const;

 private:
  struct End {
    std::uint32_t place;
    Packed_pixel pixel;
  };
  bool step(End& end, std::uint32_t other, Pixel_map& map, Pixel_writer& points) const;

  std::array<std::uint32_t, 512> to_neighbour_{};  // by what is around a pixel
};

}  // namespace chart_trace
