#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "indexing/box.hpp"
#include "indexing/crowd.hpp"

namespace chart_trace {

// The points of any set that no group has taken yet, from which a flood fill takes those in the box
// around a point, in input order.
//
// The plane is cut into cells as wide as that box, and the points are sorted by cell. The cell of a
// coordinate never decreases with the coordinate, rounding included, so the cells from that of a
// box's lower bound to that of its upper bound hold every point of the box; each point of them is
// compared with the bounds, and that decides. Cells are found by a hash, so the plane may be as
// wide as it likes; cells that share a hash only mean more points to compare. Cost: linear while
// few points share a cell; cells with many are searched as a Crowd.
class Free_points {
 public:
  // The set must outlive this. `half` is half the side of all boxes that will be searched.
  Free_points(const std::vector<double>& x, const std::vector<double>& y, double half);

  // Takes point i and returns true, unless it has been taken already.
  bool take(std::size_t i);
  // Takes all free points in `box`, in input order. A point with a NaN coordinate is in none.
  void take(const Box& box);

  // The points taken so far, in the order of their taking.
  const Indexed_point* taken() const { return taken_.get(); }
  std::size_t taken_count() const { return taken_count_; }

 private:
  // The points of one hash: count of them from place begin of sorted_; or, when count is is_crowd,
  // the crowd of number begin.
  struct Bucket {
    std::uint32_t begin;
    std::uint32_t count;
  };

  void sort_by_cell();
  void form_crowds();
  std::int64_t cell_of(double coordinate) const;
  std::size_t bucket_row(std::int64_t column, std::int64_t row) const;
  Indexed_point* take_from(Bucket& bucket, const Box& box, Indexed_point* out);

  const std::vector<double>& x_;
  const std::vector<double>& y_;
  double cells_in_one_;  // cells in a length of one; 0 when all points share a cell
  unsigned hash_shift_;
  std::vector<Bucket> buckets_;
  std::unique_ptr<Indexed_point[]> sorted_;
  std::vector<Crowd> crowds_;
  std::vector<std::uint8_t> is_taken_;  // by index
  std::unique_ptr<Indexed_point[]> taken_;
  std::size_t taken_count_ = 0;
};

}  // namespace chart_trace
