#pragma once

#include <cstdint>
#include <vector>

#include "indexing/box.hpp"
#include "indexing/loose_points.hpp"

namespace chart_trace {

// Many points close together, from which a search takes those in a box.
//
// A tree halves the points again and again, left from right or low from high. Each node knows the
// smallest box around the points that are left in it, so that it is passed over when the box
// searched lies beside it. A bounding box is made of coordinates of points, so comparing its edges
// says exactly what comparing the points would. Points of one spot are not divided.
// Cost: n log n to build; a search visits some sqrt(n) nodes at worst, and those it empties.
class Crowd {
 public:
  // Of the places from `begin` to `end`, whose points are put into another order. No coordinate is
  // NaN.
  Crowd(Indexed_point* points, std::uint32_t begin, std::uint32_t end);

  // Takes the free points of the crowd in the window, and writes them to `out`, in any order;
  // returns the end of them.
  Taken_place* take(Loose_points& points, const Window& window, Taken_place* out) {
    return take_from(0, points, window, out);
  }

 private:
  struct Node {
    Box bounds;  // around the points left; no box meets it when there are none
    std::uint32_t begin;
    std::uint32_t end;
    std::uint32_t halves;  // the first of two nodes; 0 of a leaf
  };

  void add_node(Indexed_point* points, std::uint32_t begin, std::uint32_t end);
  Taken_place* take_from(std::uint32_t number, Loose_points& points, const Window& window,
                         Taken_place* out);

  std::vector<Node> nodes_;
};

}  // namespace chart_trace
