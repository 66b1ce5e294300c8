#pragma once

#include <utility>
#include <vector>

// One vector of doubles as a value: the x or the y coordinates, in image pixels, of the points of
// one group. A grouping hands out its groups as two parallel vectors of these, group k of the one
// holding the x and group k of the other the y coordinates of the same points in the same order.
class Group_of_arrays {
 public:
  explicit Group_of_arrays(std::vector<double> array) : values(std::move(array)) {}

  // A copy of the values: changing it leaves the group unchanged. A group that is about to be
  // thrown away gives its values up without a copy.
  std::vector<double> array() const& { return values; }
  std::vector<double> array() && { return std::move(values); }

 private:
  std::vector<double> values;
};
