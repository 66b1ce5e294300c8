#include "primitives/group_list.hpp"

namespace chart_trace {

std::vector<Group_of_arrays> Group_list::groups() const {
  std::vector<Group_of_arrays> groups;
  groups.reserve(size());
  for (std::size_t k = 0; k < size(); ++k) {
    const Values group = (*this)[k];
    groups.emplace_back(std::vector<double>(group.begin(), group.end()));
  }
  return groups;
}

}  // namespace chart_trace
