#include "indexing/point_grid.hpp"

#include <algorithm>
#include <cmath>

#include "indexing/radix_sort.hpp"
#include "indexing/squared_distance.hpp"

namespace chart_trace {
namespace {

constexpr double nowhere = std::numeric_limits<double>::infinity();
constexpr std::uint32_t no_place = std::numeric_limits<std::uint32_t>::max();

constexpr std::size_t crowd = 16;  // a cell of more points is divided
// So few places are looked at one after the other, whatever crowded cells they touch.
constexpr std::size_t short_stretch = 64;
// Places that are looked at together, without a jump in between.
constexpr std::size_t batch = 4;
// So many indices are sorted faster digit by digit.
constexpr std::size_t many = 500;
// So many grids of which one cell holds more than half may lie within each other, as around an
// outlier. Points that go on so are halved instead: grids lie at most some log n deep.
constexpr int most_skewed = 3;

// Two cells of `box` side by side, or one below the other if it is taller than wide, with the
// median of the points between them. Where that is the box's edge the first cell holds just the
// points there.
Cell_grid halves(const Box& box, std::vector<double> xs, std::vector<double> ys) {
  // Half of each, because the whole may overflow.
  const bool is_wide = box.right * 0.5 - box.left * 0.5 > box.high * 0.5 - box.low * 0.5;
  std::vector<double>& values = is_wide ? xs : ys;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return Cell_grid::cut(box, is_wide, *middle - (is_wide ? box.left : box.low));
}

}  // namespace

Point_grid::Point_grid(const std::vector<double>& x, const std::vector<double>& y)
    : x_(x),
      y_(y),
      held_(x.size(), 1),
      xs_(x.size() + batch, nowhere),
      ys_(x.size() + batch, nowhere),
      indices_(x.size()),
      place_of_(x.size(), no_place) {
  std::size_t places = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
    xs_[places] = x[i];
    ys_[places] = y[i];
    indices_[places] = static_cast<std::uint32_t>(i);
    ++places;
  }
  divide(0, places, 0);
  for (std::size_t place = 0; place < places; ++place) {
    place_of_[indices_[place]] = static_cast<std::uint32_t>(place);
  }
}

// Makes the grid over these places, and those of its crowded cells; returns its number. It lies in
// `skewed_above` grids of which one cell holds more than half.
std::size_t Point_grid::divide(std::size_t first, std::size_t last, int skewed_above) {
  const std::size_t number = grids_.size();
  const Box box = box_of(first, last);
  const bool is_crowd = last - first > crowd;
  Grid grid{is_crowd ? Cell_grid::over(box, last - first) : Cell_grid{box}, starts_.size(), 0, 0};
  deal_out(grid, static_cast<std::ptrdiff_t>(first), static_cast<std::ptrdiff_t>(last));
  const bool is_skewed = grid.cells.cells() > 1 && largest_cell(grid) > (last - first) / 2;
  if (is_skewed && skewed_above == most_skewed) {
    grid.cells = halves(box, {&xs_[first], &xs_[last]}, {&ys_[first], &ys_[last]});
    starts_.resize(grid.first_cell);
    deal_out(grid, static_cast<std::ptrdiff_t>(first), static_cast<std::ptrdiff_t>(last));
  }
  const int skewed = std::min(skewed_above + (is_skewed ? 1 : 0), most_skewed);
  grid.crowded_begin = crowded_.size();
  const std::size_t cells = grid.cells.cells();
  for (std::size_t cell = grid.first_cell; cells > 1 && cell < grid.first_cell + cells; ++cell) {
    if (starts_[cell + 1] - starts_[cell] > crowd) crowded_.push_back({cell, 0});
  }
  grid.crowded_end = crowded_.size();
  grids_.push_back(grid);
  for (std::size_t k = grid.crowded_begin; k < grid.crowded_end; ++k) {
    const std::size_t cell = crowded_[k].cell;
    const std::size_t child = divide(starts_[cell], starts_[cell + 1], skewed);
    crowded_[k].grid = child;
  }
  return number;
}

Box Point_grid::box_of(std::size_t first, std::size_t last) const {
  Box box{nowhere, -nowhere, nowhere, -nowhere};
  for (std::size_t place = first; place < last; ++place) {
    box.left = std::min(box.left, xs_[place]);
    box.right = std::max(box.right, xs_[place]);
    box.low = std::min(box.low, ys_[place]);
    box.high = std::max(box.high, ys_[place]);
  }
  return box;
}

// Sorts the places by the grid's cells and appends the cells' starts.
void Point_grid::deal_out(const Grid& grid, std::ptrdiff_t first, std::ptrdiff_t last) {
  const std::vector<double> xs(xs_.begin() + first, xs_.begin() + last);
  const std::vector<double> ys(ys_.begin() + first, ys_.begin() + last);
  const std::vector<std::uint32_t> indices(indices_.begin() + first, indices_.begin() + last);
  const std::size_t cells = grid.cells.cells();
  // start[cell + 2] counts, then start[cell + 1] is the next place to fill, then start[cell] is the
  // first one.
  starts_.resize(grid.first_cell + cells + 2, 0);
  std::uint32_t* start = &starts_[grid.first_cell];
  std::vector<std::uint32_t> cell_of(indices.size());
  for (std::size_t i = 0; i < indices.size(); ++i) {
    cell_of[i] = grid.cells.row_at(ys[i]) * grid.cells.columns + grid.cells.column_at(xs[i]);
    ++start[cell_of[i] + 2];
  }
  start[0] = start[1] = static_cast<std::uint32_t>(first);
  for (std::size_t cell = 0; cell < cells; ++cell) start[cell + 2] += start[cell + 1];
  for (std::size_t i = 0; i < indices.size(); ++i) {
    const std::uint32_t place = start[cell_of[i] + 1]++;
    xs_[place] = xs[i];
    ys_[place] = ys[i];
    indices_[place] = indices[i];
  }
  starts_.pop_back();
}

// The number of places of the cell that has most of them.
std::size_t Point_grid::largest_cell(const Grid& grid) const {
  const std::uint32_t* const start = &starts_[grid.first_cell];
  std::uint32_t largest = 0;
  for (std::size_t cell = 0; cell < grid.cells.cells(); ++cell) {
    largest = std::max(largest, start[cell + 1] - start[cell]);
  }
  return largest;
}

// Whether the places of these cells are few, or in no crowded cell, so that all are to be looked
// at.
bool Point_grid::is_plain(const Grid& grid, std::uint32_t first, std::uint32_t last) {
  return last - first <= short_stretch || grid.crowded_begin == grid.crowded_end;
}

// The grid of a crowded cell; null for other cells.
const Point_grid::Grid* Point_grid::grid_of(const Grid& grid, std::size_t cell) const {
  if (starts_[cell + 1] - starts_[cell] <= crowd) return nullptr;
  const auto is_before = [](const Crowded_cell& a, std::size_t b) { return a.cell < b; };
  const Crowded_cell* const crowded = crowded_.data();
  return &grids_[std::lower_bound(crowded + grid.crowded_begin, crowded + grid.crowded_end, cell,
                                  is_before)
                     ->grid];
}

void Point_grid::take(std::size_t i) {
  held_[i] = 0;
  if (place_of_[i] != no_place) xs_[place_of_[i]] = nowhere;
}

std::optional<Taken_points> Point_grid::take_next(double largest_square) {
  while (next_ < held_.size() && held_[next_] == 0) ++next_;
  if (next_ == held_.size() || place_of_[next_] == no_place) return std::nullopt;
  gather(grids_[0], {x_[next_], y_[next_]}, largest_square);
  return sum_gathered();
}

void Point_grid::gather(const Grid& grid, const Point& centre, double largest_square) {
  const double reach = reach_of(largest_square);
  const Block block{grid.cells.column_at(centre.x - reach), grid.cells.column_at(centre.x + reach),
                    grid.cells.row_at(centre.y - reach), grid.cells.row_at(centre.y + reach)};
  for (std::uint32_t row = block.top; row <= block.bottom; ++row) {
    const std::size_t row_begin = grid.first_cell + std::size_t{row} * grid.cells.columns;
    const std::uint32_t first = starts_[row_begin + block.left];
    const std::uint32_t last = starts_[row_begin + block.right + 1];
    if (is_plain(grid, first, last)) {
      gather_between(first, last, centre, largest_square);
      continue;
    }
    for (std::size_t cell = row_begin + block.left; cell <= row_begin + block.right; ++cell) {
      const Grid* const crowded = grid_of(grid, cell);
      if (crowded == nullptr) {
        gather_between(starts_[cell], starts_[cell + 1], centre, largest_square);
      } else if (crowded->cells.reaches(centre.x, centre.y, largest_square)) {
        gather(*crowded, centre, largest_square);
      }
    }
  }
}

void Point_grid::gather_between(std::size_t first, std::size_t last, const Point& centre,
                                double largest_square) {
  for (std::size_t place = first; place < last; ++place) {
    if (!(square_between(centre.x, centre.y, xs_[place], ys_[place]) <= largest_square)) continue;
    gathered_.push_back(indices_[place]);
    xs_[place] = nowhere;
  }
}

// Cells come in an order of their own, sums must not.
Taken_points Point_grid::sum_gathered() {
  if (gathered_.size() < many) {
    std::sort(gathered_.begin(), gathered_.end());
  } else {
    radix_sort(gathered_, [](std::uint32_t i) { return i; });
  }
  Taken_points taken;
  for (const std::uint32_t i : gathered_) {
    held_[i] = 0;
    taken.x_sum += x_[i];
    taken.y_sum += y_[i];
  }
  taken.count = static_cast<std::int32_t>(gathered_.size());
  gathered_.clear();
  return taken;
}

std::optional<Point_grid::Point> Point_grid::take_nearest(const Point& centre) {
  if (!std::isfinite(centre.x) || !std::isfinite(centre.y)) return std::nullopt;
  Search search{centre};
  search_grid(grids_[0], search);
  if (!std::isfinite(search.square)) return std::nullopt;
  const Point nearest{xs_[search.place], ys_[search.place]};
  xs_[search.place] = nowhere;
  held_[indices_[search.place]] = 0;
  return nearest;
}

// Looks at the cell of the centre and those around it, then ring by ring at those within reach, as
// long as there are any. Where cells are crowded it begins with the one cell: those around it may
// each be a long search, which a point found before mostly spares.
void Point_grid::search_grid(const Grid& grid, Search& search) const {
  const Cell_grid& cells = grid.cells;
  const Point centre = search.centre;
  const std::uint32_t column = cells.column_at(centre.x);
  const std::uint32_t row = cells.row_at(centre.y);
  Block seen{column, column, row, row};
  if (grid.crowded_begin == grid.crowded_end) {
    seen = {column - (column > 0 ? 1 : 0), column + (column + 1 < cells.columns ? 1 : 0),
            row - (row > 0 ? 1 : 0), row + (row + 1 < cells.rows ? 1 : 0)};
  }
  search_block(grid, seen, row, search);
  for (;;) {
    const double reach = reach_of(search.limit);
    const bool more_left = seen.left > 0 && cells.column_of(centre.x - reach) < seen.left;
    const bool more_right =
        seen.right + 1 < cells.columns && cells.column_of(centre.x + reach) >= seen.right + 1;
    const bool more_above = seen.top > 0 && cells.row_of(centre.y - reach) < seen.top;
    const bool more_below =
        seen.bottom + 1 < cells.rows && cells.row_of(centre.y + reach) >= seen.bottom + 1;
    if (!(more_left || more_right || more_above || more_below)) return;
    if (more_left) {
      --seen.left;
      search_block(grid, {seen.left, seen.left, seen.top, seen.bottom}, row, search);
    }
    if (more_right) {
      ++seen.right;
      search_block(grid, {seen.right, seen.right, seen.top, seen.bottom}, row, search);
    }
    if (more_above) {
      --seen.top;
      search_block(grid, {seen.left, seen.right, seen.top, seen.top}, seen.top, search);
    }
    if (more_below) {
      ++seen.bottom;
      search_block(grid, {seen.left, seen.right, seen.bottom, seen.bottom}, seen.bottom, search);
    }
  }
}

// Row by row, from `first_row` down and then from the top: what the row of the centre holds is the
// nearest, and spares a closer look at the others.
void Point_grid::search_block(const Grid& grid, const Block& block, std::uint32_t first_row,
                              Search& search) const {
  std::uint32_t row = first_row;
  do {
    search_row(grid, row, block, search);
    row = row == block.bottom ? block.top : row + 1;
  } while (row != first_row);
}

inline void Point_grid::search_row(const Grid& grid, std::uint32_t row, const Block& block,
                                   Search& search) const {
  const std::size_t row_begin = grid.first_cell + std::size_t{row} * grid.cells.columns;
  const std::uint32_t first = starts_[row_begin + block.left];
  const std::uint32_t last = starts_[row_begin + block.right + 1];
  if (is_plain(grid, first, last)) return search_between(first, last, search);
  for (std::size_t cell = row_begin + block.left; cell <= row_begin + block.right; ++cell) {
    const Grid* const crowded = grid_of(grid, cell);
    if (crowded == nullptr) {
      search_between(starts_[cell], starts_[cell + 1], search);
    } else if (crowded->cells.reaches(search.centre.x, search.centre.y, search.limit)) {
      search_grid(*crowded, search);
    }
  }
}

// Goes on to the end of the last batch: the points there are candidates as good as any.
inline void Point_grid::search_between(std::size_t first, std::size_t last, Search& search) const {
  for (; first < last; first += batch) {
    const double* const xs = &xs_[first];
    const double* const ys = &ys_[first];
    double squares[batch];
    for (std::size_t k = 0; k < batch; ++k) {
      squares[k] = square_between(search.centre.x, search.centre.y, xs[k], ys[k]);
    }
    const double even = std::min(squares[0], squares[2]);
    const double odd = std::min(squares[1], squares[3]);
    const double least = std::min(even, odd);
    if (least > search.limit) continue;
    // Squares above this have a larger root than the least of the batch, which is offered too.
    const double limit = least * (1.0 + 0x1p-50);
    for (std::size_t k = 0; k < batch; ++k) {
      if (squares[k] <= limit) offer(first + k, squares[k], search);
    }
  }
}

void Point_grid::offer(std::size_t place, double square, Search& search) const {
  if (!(square <= search.limit)) return;
  if (square >= search.surely_nearer) {
    const double root = std::sqrt(square);
    const double best = std::sqrt(search.square);
    if (root > best || (root == best && indices_[place] > indices_[search.place])) return;
  }
  search.square = square;
  search.limit = square * (1.0 + 0x1p-50);
  search.surely_nearer = square * (1.0 - 0x1p-50);
  search.place = place;
}

}  // namespace chart_trace
