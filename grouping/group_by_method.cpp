#include "grouping/group_by_method.hpp"

#include <utility>

#include "grouping/fission_algm.hpp"
#include "grouping/horizontal_grouping_algm.hpp"

namespace chart_trace {
namespace {

template <typename Grouping>
Groups groups_of(Grouping grouping) {
  return {std::move(grouping).x_list(), std::move(grouping).y_list()};
}

}  // namespace

Groups group_by_method(std::vector<double> x, std::vector<double> y, double pixel_step,
                       const std::string& method) {
  if (method == "fission") return groups_of(Fission_algm(std::move(x), std::move(y), pixel_step));
  return groups_of(Horizontal_grouping_algm(std::move(x), std::move(y), pixel_step));
}

}  // namespace chart_trace
