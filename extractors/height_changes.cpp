#include "extractors/height_changes.hpp"

#include <cmath>

namespace chart_trace {

void Height_changes::add(double from, double to) { total_ += std::fabs(to - from); }

bool Height_changes::is_jump(double from, double to) const {
  const double percent = (to - from) / total_ * 100.0;
  return std::fabs(percent) > 0.5;
}

}  // namespace chart_trace
