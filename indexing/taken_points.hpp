#pragma once

#include <cstdint>

namespace chart_trace {

// What a search has taken out of a point set: how many points, and their coordinates added up from
// 0.0 in input order.
struct Taken_points {
  std::int32_t count = 0;
  double x_sum = 0.0;
  double y_sum = 0.0;
};

}  // namespace chart_trace
