#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "indexing/box.hpp"

namespace chart_trace {

// A point of a set and its place in the input order.
struct Indexed_point {
  double x;
  double y;
  std::uint32_t index;
};

// Many points close together, from which a search takes those in a box.
//
// A tree halves the points again and again, left from right or low from high. Each node knows the
// smallest box around the points that are left in it, so that it is passed over when the box
// searched lies beside it, emptied at once when it lies inside, and looked into only otherwise. A
// bounding box is made of coordinates of points, so comparing its edges says exactly what comparing
// the points would.
// Cost: n log n to build; a search visits some sqrt(n) nodes at worst, and those it empties.
class Crowd {
 public:
  // `points` are rearranged and must outlive the crowd. No coordinate is NaN.
  Crowd(Indexed_point* points, std::size_t count);

  // Moves the points in `box`, edges included, to `out`, in any order; returns the end of them.
  Indexed_point* take(const Box& box, Indexed_point* out) { return take_from(0, box, out); }

 private:
  // Node k has the children 2k + 1 and 2k + 2; those from first_leaf_ on are leaves.
  struct Node {
    Box bounds;           // around the points left; no box meets it when there are none
    std::uint32_t begin;  // of a leaf: its points left
    std::uint32_t end;
  };

  void build(std::size_t node, std::uint32_t begin, std::uint32_t end);
  void find_bounds(Node& leaf) const;
  Indexed_point* take_from(std::size_t node, const Box& box, Indexed_point* out);
  Indexed_point* take_all(std::size_t node, Indexed_point* out);

  Indexed_point* points_;
  std::size_t first_leaf_;
  std::vector<Node> nodes_;
};

}  // namespace chart_trace
