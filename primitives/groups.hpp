#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "primitives/group_of_arrays.hpp"
#include "primitives/point_list.hpp"
#include "primitives/vectors.hpp"

namespace chart_trace {

// The groups of a point set, one behind the other in one piece of memory. A picture may have as
// many groups as pixels, and vectors for each cost more than finding them: two allocations, 100 ns
// instead of 5 for a group of one pixel.
class Groups {
 public:
  Groups() = default;
  // Group k ends before point ends[k], and there the next one begins; points behind the last group
  // belong to none. Points are counted in signed 32-bit numbers, so that ends fit.
  Groups(std::vector<double> x, std::vector<double> y, std::vector<std::uint32_t> ends);
  Groups(Packed_pixels pixels, std::vector<std::uint32_t> ends);

  std::size_t size() const { return ends_.size(); }

  // The number of points of group k.
  std::size_t count(std::size_t k) const { return ends_[k] - begin_of(k); }

  // The mean position and the extent of group k, which must not be empty. Cost: one pass over it.
  Group_figures figures(std::size_t k) const;

  // The points of the groups named, in rising order, one group behind the other; the groups are
  // gone. They stay in the same memory, and where they are when all groups are named.
  Point_list joined(const std::vector<std::size_t>& kept) &&;

  // A copy of the x or of the y coordinates of each group.
  std::vector<Group_of_arrays> x_groups() const;
  std::vector<Group_of_arrays> y_groups() const;

 private:
  std::size_t begin_of(std::size_t k) const { return k == 0 ? 0 : ends_[k - 1]; }
  std::vector<Group_of_arrays> copies(const std::vector<double>& values,
                                      std::uint32_t (*coordinate_of)(Packed_pixel)) const;

  Point_list points_;
  std::vector<std::uint32_t> ends_;
};

}  // namespace chart_trace
