#include "indexing/point_flood.hpp"

#include <algorithm>
#include <cmath>

#include "indexing/prefetch.hpp"

namespace chart_trace {
namespace {

constexpr std::uint64_t row_cells = 64;  // side by side they lie side by side in memory too
constexpr std::size_t seeds_at_once = 16;

// Puts numbers into rising order: mostly a handful, which need no better than insertion.
void sort(Taken_place* begin, Taken_place* end) {
  if (end - begin > 32) return std::sort(begin, end);
  for (Taken_place* next = begin; next < end; ++next) {
    const Taken_place number = *next;
    Taken_place* at = next;
    for (; at > begin && at[-1] > number; --at) *at = at[-1];
    *at = number;
  }
}

}  // namespace

Point_flood::Point_flood(const std::vector<double>& x, const std::vector<double>& y, double side)
    : side_(side),
      parts_(side),
      hash_shift_(56),
      place_of_(x.size()),
      points_(x.size()),
      queue_(new Taken_place[x.size()]) {
  std::size_t cells = 256;
  while (cells < x.size()) {
    cells *= 2;
    --hash_shift_;
  }
  // Behind them the rest of the last row, a cell for points that are in none, and the end of it.
  begins_.resize(cells + row_cells + 2);
  sort_by_cell(x, y);
  form_crowds();
}

// A counting sort, so points of one cell stay in input order.
void Point_flood::sort_by_cell(const std::vector<double>& x, const std::vector<double>& y) {
  const std::size_t nowhere = begins_.size() - 2;
  std::vector<Mark> marks(x.size());
  std::uint32_t* const ends = begins_.data() + 1;
  for (std::size_t i = 0; i < x.size(); ++i) {
    std::size_t cell = nowhere;
    if (!std::isnan(x[i]) && !std::isnan(y[i])) {
      const std::uint64_t across = parts_.part_of(x[i]);
      const std::uint64_t down = parts_.part_of(y[i]);
      cell = cell_at(across / Cell_parts::in_cell, down / Cell_parts::in_cell);
      marks[i] = {static_cast<std::uint16_t>(across), static_cast<std::uint16_t>(down)};
    }
    place_of_[i] = static_cast<std::uint32_t>(cell);
    ++ends[cell];
  }
  std::uint32_t begin = 0;
  for (std::size_t cell = 0; cell <= nowhere; ++cell) {
    const std::uint32_t count = ends[cell];
    ends[cell] = begin;
    begin += count;
  }
  for (std::size_t i = 0; i < x.size(); ++i) {
    const std::uint32_t place = ends[place_of_[i]]++;
    points_.points[place] = {x[i], y[i], static_cast<std::uint32_t>(i)};
    points_.marks[place] = marks[i];
    place_of_[i] = place;
  }
}

void Point_flood::form_crowds() {
  for (std::size_t cell = 0; cell + 2 < begins_.size(); ++cell) {
    const std::uint32_t begin = begins_[cell];
    const std::uint32_t end = begins_[cell + 1];
    if (end - begin <= Loose_points::most_at_once) continue;
    if (crowd_at_.empty()) crowd_at_.resize(place_of_.size() / Loose_points::most_at_once + 1);
    crowd_at_[begin / Loose_points::most_at_once] = static_cast<std::uint32_t>(crowds_.size());
    crowds_.emplace_back(points_.points.get(), begin, end);
    for (std::uint32_t place = begin; place < end; ++place) {
      const Indexed_point& point = points_.points[place];
      points_.marks[place] = parts_.mark_of(point.x, point.y);
      place_of_[point.index] = place;
    }
  }
}

// The place in begins_ of a cell. Those of one row, up to row_cells, are neighbours there.
std::size_t Point_flood::cell_at(std::uint64_t column, std::uint64_t row) const {
  std::uint64_t hash = row * 0x9E3779B97F4A7C15U ^ column / row_cells * 0xC2B2AE3D27D4EB4FU;
  hash = (hash ^ hash >> 29) * 0xBF58476D1CE4E5B9U;
  return static_cast<std::size_t>(hash >> hash_shift_) + column % row_cells;
}

bool Point_flood::next_group(Point_writer& group) {
  std::uint32_t seed = 0;
  if (!next_seed(seed)) return false;
  points_.free.take(seed);
  std::size_t head = queued_;
  queue_[queued_++] = seed;
  for (; head < queued_; ++head) {
    const Indexed_point& point = points_.points[place_in(queue_[head])];
    group.add(point.x, point.y);
    const Box box = Box::around(point.x, point.y, side_);
    if (!(box.left <= box.right && box.low <= box.high)) continue;
    Taken_place* const begin = &queue_[queued_];
    Taken_place* const end = take(parts_.around(box), begin);
    sort(begin, end);
    queued_ += static_cast<std::size_t>(end - begin);
  }
  return true;
}

// The place of the first free point in input order; false when there is none.
bool Point_flood::next_seed(std::uint32_t& seed) {
  do {
    if (next_seed_ == seeds_.size()) gather_seeds();
    if (seeds_.empty()) return false;
    seed = seeds_[next_seed_++];
  } while (!points_.free.is_free(seed));
  return true;
}

// Finds the next free points in input order, and asks for what the searches around them will read:
// it may lie anywhere, and memory that is far away delivers many lines in the time of one.
void Point_flood::gather_seeds() {
  seeds_.clear();
  next_seed_ = 0;
  for (; next_ < place_of_.size() && seeds_.size() < seeds_at_once; ++next_) {
    const std::uint32_t place = place_of_[next_];
    if (!points_.free.is_free(place)) continue;
    seeds_.push_back(place);
    prefetch(&points_.points[place]);
  }
  seed_cells_.clear();
  for (const std::uint32_t seed : seeds_) {
    const Indexed_point& point = points_.points[seed];
    const Window window = parts_.around(Box::around(point.x, point.y, side_));
    for (const std::uint64_t row : {window.low, window.high}) {
      seed_cells_.push_back(cell_at(window.left / Cell_parts::in_cell, row / Cell_parts::in_cell));
      prefetch(&begins_[seed_cells_.back()]);
    }
  }
  for (const std::size_t cell : seed_cells_) prefetch(&points_.marks[begins_[cell]]);
}

Taken_place* Point_flood::take(const Window& window, Taken_place* out) {
  const std::uint64_t left = window.left / Cell_parts::in_cell;
  const std::uint64_t right = window.right / Cell_parts::in_cell;
  const std::uint64_t high = window.high / Cell_parts::in_cell;
  for (std::uint64_t row = window.low / Cell_parts::in_cell; row <= high; ++row) {
    std::uint64_t column = left;
    do {
      const std::uint64_t length = std::min(row_cells - column % row_cells, right - column + 1);
      std::size_t cell = cell_at(column, row);
      const std::size_t last = cell + length;
      const std::uint32_t begin = begins_[cell];
      const std::uint32_t count = begins_[last] - begin;
      if (count <= Loose_points::most_at_once) {
        out = points_.take(begin, count, window, out);
      } else {
        for (; cell < last; ++cell) out = take_in_cell(cell, window, out);
      }
      column += length;
    } while (column <= right);
  }
  return out;
}

Taken_place* Point_flood::take_in_cell(std::size_t cell, const Window& window, Taken_place* out) {
  const std::uint32_t begin = begins_[cell];
  const std::uint32_t count = begins_[cell + 1] - begin;
  if (count <= Loose_points::most_at_once) return points_.take(begin, count, window, out);
  return crowd_from(begin).take(points_, window, out);
}

// At most one crowd begins in as many places as are no crowd.
Crowd& Point_flood::crowd_from(std::uint32_t place) {
  return crowds_[crowd_at_[place / Loose_points::most_at_once]];
}

}  // namespace chart_trace
