#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "indexing/cell_grid.hpp"
#include "indexing/taken_points.hpp"

namespace chart_trace {

// Points to be taken out by nearness: all within a distance of one, or the one nearest to a place.
// The points are sorted by the cells of a grid, some two to a cell; a crowded cell has a grid of
// its own, and so on, so that neither an outlier nor a clump makes cells that hold too many. Where
// one clump lies in another again and again, the points are halved instead, so that grids lie at
// most some log n deep.
//
// Why the answers are exact: a cell only proposes its points, the distance as it is computed
// decides. No cell is missed: no difference of coordinates exceeds the reach of the square that is
// computed from it, and a Cell_grid tells which cells lie within reach.
//
// Why it is fast: discs that were emptied have centres at least a radius apart, and steps to the
// nearest point left start at least as far apart as the shorter one is long. So only as many long
// searches can come as fit side by side, and all together look at few more cells than there are.
// Only many points at one and the same place defeat the grid: every search that comes by looks at
// all of them.
//
// A point with a coordinate that is NaN or infinite is at no distance of any other: it is held, but
// never found. Cost to build: a pass over the points for each level of grids, mostly one; n log n
// at worst.
class Point_grid {
 public:
  struct Point {
    double x;
    double y;
  };

  // The set must outlive this.
  Point_grid(const std::vector<double>& x, const std::vector<double>& y);

  // Whether point i of the set has not been taken.
  bool holds(std::size_t i) const { return held_[i] != 0; }

  void take(std::size_t i);

  // Takes the points whose squared distance to the first point left in input order is at most
  // `largest_square`, a finite number not below 0. Nothing when none is left, or when that point is
  // at no distance of any, itself included.
  std::optional<Taken_points> take_next(double largest_square);

  // Takes the point nearest to `centre`, the first in input order of those at the same distance,
  // which is the rounded one: different squares may have one root. Nothing when none is at a finite
  // distance.
  std::optional<Point> take_nearest(const Point& centre);

 private:
  struct Grid {
    Cell_grid cells;
    std::size_t first_cell;                  // in starts_; cells come row by row
    std::size_t crowded_begin, crowded_end;  // in crowded_
  };
  struct Crowded_cell {
    std::size_t cell;  // in starts_
    std::size_t grid;  // in grids_
  };
  // The cells from column `left` to column `right` and from row `top` to row `bottom`, inclusive.
  struct Block {
    std::uint32_t left, right, top, bottom;
  };
  // A search for the nearest point and the best one found so far. Squares above `limit` have a
  // larger root than its square, those below `surely_nearer` a smaller one.
  struct Search {
    Point centre;
    double square = std::numeric_limits<double>::infinity();
    double limit = std::numeric_limits<double>::max();
    double surely_nearer = std::numeric_limits<double>::infinity();
    std::size_t place = 0;
  };

  std::size_t divide(std::size_t first, std::size_t last, int skewed_above);
  Box box_of(std::size_t first, std::size_t last) const;
  void deal_out(const Grid& grid, std::ptrdiff_t first, std::ptrdiff_t last);
  std::size_t largest_cell(const Grid& grid) const;

  static bool is_plain(const Grid& grid, std::uint32_t first, std::uint32_t last);
  const Grid* grid_of(const Grid& grid, std::size_t cell) const;

  void gather(const Grid& grid, const Point& centre, double largest_square);
  void gather_between(std::size_t first, std::size_t last, const Point& centre,
                      double largest_square);
  Taken_points sum_gathered();

  void search_grid(const Grid& grid, Search& search) const;
  void search_block(const Grid& grid, const Block& block, std::uint32_t first_row,
                    Search& search) const;
  void search_row(const Grid& grid, std::uint32_t row, const Block& block, Search& search) const;
  void search_between(std::size_t first, std::size_t last, Search& search) const;
  void offer(std::size_t place, double square, Search& search) const;

  const std::vector<double>& x_;
  const std::vector<double>& y_;
  std::vector<std::uint8_t> held_;  // by point
  std::size_t next_ = 0;            // no point before it is held, as far as take_next() knows
  // Points lie in places, in the order of their cells. One that was taken is moved to infinity,
  // where nothing finds it. There are a few more places, at infinity, than points.
  std::vector<double> xs_, ys_;          // by place
  std::vector<std::uint32_t> indices_;   // by place: its point
  std::vector<std::uint32_t> place_of_;  // by point
  std::vector<std::uint32_t> starts_;    // of each cell its first place; one more for each grid
  std::vector<Grid> grids_;              // the first covers all points
  std::vector<Crowded_cell> crowded_;    // those of a grid together, in the order of cells
  std::vector<std::uint32_t> gathered_;  // points taken that are not yet added up
};

}  // namespace chart_trace
