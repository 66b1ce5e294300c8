#pragma once

#include <string>
#include <vector>

#include "primitives/groups.hpp"

namespace chart_trace {

// Groups a point set by the named method: exactly "fission" is fission grouping, every other string
// horizontal grouping. An unknown method is no error.
Groups group_by_method(std::vector<double> x, std::vector<double> y, double pixel_step,
                       const std::string& method);

}  // namespace chart_trace
