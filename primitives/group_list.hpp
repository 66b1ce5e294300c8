#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "primitives/group_of_arrays.hpp"
#include "primitives/values.hpp"

namespace chart_trace {

// The x or the y values of all groups, one group behind the other in one piece of memory. A picture
// may have as many groups as pixels, and a vector for each costs more than finding them: two
// allocations, 100 ns instead of 5 for a group of one pixel.
class Group_list {
 public:
  Group_list() = default;
  // Group k ends before values[ends[k]], and there the next one begins. Points are counted in
  // signed 32-bit numbers, so that places fit.
  Group_list(std::vector<double> values, std::vector<std::uint32_t> ends)
      : values_(std::move(values)), ends_(std::move(ends)) {}

  std::size_t size() const { return ends_.size(); }

  Values operator[](std::size_t k) const {
    return {values_.data() + (k == 0 ? 0 : ends_[k - 1]), values_.data() + ends_[k]};
  }

  // The values of the groups named, in rising order, one group behind the other; the list is gone.
  // They stay in the same memory, and where they are when all groups are named.
  std::vector<double> joined(const std::vector<std::size_t>& kept) &&;

  // A copy of each group.
  std::vector<Group_of_arrays> groups() const;

 private:
  std::vector<double> values_;
  std::vector<std::uint32_t> ends_;
};

}  // namespace chart_trace
