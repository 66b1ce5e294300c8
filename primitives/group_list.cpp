#include "primitives/group_list.hpp"

#include <algorithm>

namespace chart_trace {

std::vector<double> Group_list::joined(const std::vector<std::size_t>& kept) && {
  std::size_t count = 0;
  for (const std::size_t k : kept) {
    const Values group = (*this)[k];
    double* const place = values_.data() + count;
    if (place != group.begin()) std::copy(group.begin(), group.end(), place);
    count += group.size();
  }
  values_.resize(count);
  ends_.clear();
  return std::move(values_);
}

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
