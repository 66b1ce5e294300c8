#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "indexing/box.hpp"
#include "indexing/cell_parts.hpp"
#include "indexing/crowd.hpp"
#include "indexing/loose_points.hpp"
#include "indexing/point_writer.hpp"

namespace chart_trace {

// Flood fill, breadth first, of any points: each point of a group in turn takes, in input order,
// those still free in the box around it.
//
// The plane is cut into cells as wide as that box, and the points are sorted by cell. Cells are
// found by a hash, so the plane may be as wide as it likes; cells that share a hash only mean more
// points to look at. Cost: linear while few points share a cell; cells with many are searched as a
// Crowd.
class Point_flood {
 public:
  // `side` is that of the boxes.
  Point_flood(const std::vector<double>& x, const std::vector<double>& y, double side);

  // Fills the group of the first free point in input order; false when there is none left. A point
  // with a NaN coordinate is in no box.
  bool next_group(Point_writer& group);

 private:
  void sort_by_cell(const std::vector<double>& x, const std::vector<double>& y);
  void form_crowds();
  std::size_t cell_at(std::uint64_t column, std::uint64_t row) const;
  bool next_seed(std::uint32_t& seed);
  void gather_seeds();
  Taken_place* take(const Window& window, Taken_place* out);
  Taken_place* take_in_cell(std::size_t cell, const Window& window, Taken_place* out);
  Crowd& crowd_from(std::uint32_t place);

  double side_;
  Cell_parts parts_;
  unsigned hash_shift_;
  std::vector<std::uint32_t> begins_;    // the first place of each cell, by hash
  std::vector<std::uint32_t> place_of_;  // by index
  Loose_points points_;                  // sorted by cell, and by index in a cell
  std::vector<Crowd> crowds_;            // in the order of places
  std::vector<std::uint32_t> crowd_at_;  // by place, in units of the most that are no crowd
  std::size_t next_ = 0;                 // the first index that no seed was looked for from
  std::vector<std::uint32_t> seeds_;     // places that were free when they were gathered
  std::size_t next_seed_ = 0;            // in seeds_
  std::vector<std::size_t> seed_cells_;  // the first cells of their searches
  std::unique_ptr<Taken_place[]> queue_;
  std::size_t queued_ = 0;
};

}  // namespace chart_trace
