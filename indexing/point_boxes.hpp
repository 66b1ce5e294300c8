#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "indexing/taken_points.hpp"

namespace chart_trace {

// Points to be taken out disc by disc, each around the first point left in input order: held in
// boxes of 64, as they follow each other in the input.
//
// Pays for lines that have been followed, as a flood fill does: points that follow each other lie
// together there, so that a disc cuts few boxes and passes over all others with one look at each.
//
// Why the answers are exact: a box only proposes its points, the distance as it is computed
// decides. No box is missed: subtraction, multiplication and addition never decrease when what they
// are given grows, rounding included, so no point is computed to be nearer than the nearest place
// of its box. Boxes come in input order, and so do the points of a box: sums are added up in it.
class Point_boxes {
 public:
  // Nothing unless boxes seem to pay, as far as some of them tell, for discs that hold the points
  // whose squared distance to their centre is at most `largest_square`, a finite number not below
  // 0. The set must outlive this. Cost: one pass.
  static std::optional<Point_boxes> of(const std::vector<double>& x, const std::vector<double>& y,
                                       double largest_square);

  // Takes the disc around the first point left. Nothing when none is left; when that point is at no
  // distance of any, itself included, as its coordinates are no finite numbers; or when boxes turn
  // out not to pay, and what they hold is better left to others. Cost: a look at each box from the
  // first one left on, and 64 distances for each that is near; all calls together no more than some
  // ten looks for each point, as more do not pay.
  std::optional<Taken_points> take_next();

  // Whether point i of the set has not been taken.
  bool holds(std::size_t i) const { return (boxes_[i / in_a_box].held >> i % in_a_box & 1) != 0; }

 private:
  static constexpr std::size_t in_a_box = 64;
  struct Held_box {
    double left, right, top, bottom;
    std::uint64_t held;  // bit k: the box's point k has not been taken
  };

  Point_boxes(const std::vector<double>& x, const std::vector<double>& y, double largest_square);
  static Held_box box_of(const std::vector<double>& x, const std::vector<double>& y,
                         std::size_t first);
  void take_from(std::size_t number, double x, double y, Taken_points& taken);

  const std::vector<double>& x_;
  const std::vector<double>& y_;
  double largest_square_;
  std::vector<Held_box> boxes_;
  std::size_t first_ = 0;  // none before it holds a point
  std::size_t looks_ = 0;  // at boxes so far; several for one that was near
};

}  // namespace chart_trace
