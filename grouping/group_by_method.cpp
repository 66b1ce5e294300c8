#include "grouping/group_by_method.hpp"

#include <utility>

#include "grouping/fission_algm.hpp"
#include "grouping/horizontal_grouping_algm.hpp"

namespace chart_trace {
Groups group_by_method(std::vector<double> x, std::vector<double> y, double pixel_step,
                       const std::string& method) {
  if (method == "fission") return Fission_algm(std::move(x), std::move(y), pixel_step).groups();
  return Horizontal_grouping_algm(std::move(x), std::move(y), pixel_step).groups();
}

}  // namespace chart_trace
