#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "indexing/box.hpp"

namespace chart_trace {

// Cells of equal size, in columns and rows, over a bounding box.
//
// What makes it exact: column_of and row_of never decrease when the coordinate grows, rounding
// included. So the points between two coordinates lie in the columns from that of the one to that
// of the other, and no tolerance is needed to find them all.
struct Cell_grid {
  Box box;
  double scale = 0.0;  // cells per unit of length; 0 for a single cell
  std::uint32_t columns = 1;
  std::uint32_t rows = 1;

  // Square cells over `box`, some two for three of `count` points and up to three for two when the
  // box is nearly a line; a single cell if the box is too small to be divided. The box is finite.
  static Cell_grid over(const Box& box, std::size_t count);

  // Two cells, side by side if `is_wide` and otherwise one below the other, the first of them
  // `length` long, but at least as long as a scale can tell. The box is not too small to be
  // divided.
  static Cell_grid cut(const Box& box, bool is_wide, double length);

  std::size_t cells() const { return std::size_t{columns} * rows; }

  // Positions in cells from the left and from the top. A coordinate outside the box has one too.
  double column_of(double x) const { return (x - box.left) * scale; }
  double row_of(double y) const { return (y - box.low) * scale; }

  // The cell of a position; what is outside belongs to the outermost ones.
  std::uint32_t column_at(double x) const { return cell_at(column_of(x), columns); }
  std::uint32_t row_at(double y) const { return cell_at(row_of(y), rows); }

  // False only if all points of the box are farther than that from (x, y). A point in the box is
  // not nearer than the box's edge, and the same roundings keep that.
  bool reaches(double x, double y, double largest_square) const {
    const double dy = outside(y, box.low, box.high);
    const double dx = outside(x, box.left, box.right);
    return dy * dy + dx * dx <= largest_square;
  }

 private:
  static constexpr double narrowest = 1e-290;  // of less the scale would not fit a double

  // Without a branch. A position that is NaN, as where an infinite distance meets a scale of 0, is
  // in the first cell.
  static std::uint32_t cell_at(double position, std::uint32_t count) {
    return static_cast<std::uint32_t>(std::min(count - 1.0, std::max(0.0, position)));
  }
};

inline Cell_grid Cell_grid::over(const Box& box, std::size_t count) {
  constexpr double points_in_a_cell = 2.0;
  Cell_grid grid{box};
  // Half of each, because the whole may overflow.
  const double width = box.right * 0.5 - box.left * 0.5;
  const double height = box.high * 0.5 - box.low * 0.5;
  const double longest = std::max(width, height);
  if (!(longest > narrowest)) return grid;
  const double cells = static_cast<double>(count) / points_in_a_cell;
  const double side =
      std::max(std::sqrt(width) * std::sqrt(height) / std::sqrt(cells), longest / cells);
  grid.scale = 0.5 / side;
  grid.columns = static_cast<std::uint32_t>(width / side) + 1;
  grid.rows = static_cast<std::uint32_t>(height / side) + 1;
  return grid;
}

inline Cell_grid Cell_grid::cut(const Box& box, bool is_wide, double length) {
  // The next double, so that what lies at the end of the first cell is in the second one.
  const double scale = std::nextafter(1.0 / std::max(length, narrowest), 1.0 / narrowest);
  return {box, scale, is_wide ? 2U : 1U, is_wide ? 1U : 2U};
}

}  // namespace chart_trace
