#include "extractors/height_changes.hpp"

#include <cmath>
#include <cstddef>

namespace chart_trace {

std::vector<double> height_changes_in_percent(const std::vector<double>& heights) {
  std::vector<double> shares;
  double total = 0.0;
  for (std::size_t k = 1; k < heights.size(); ++k) {
    shares.push_back(heights[k] - heights[k - 1]);
    total += std::fabs(shares.back());
  }
  for (double& share : shares) share = share / total * 100.0;
  return shares;
}

bool is_jump(double share) { return std::fabs(share) > 0.5; }

}  // namespace chart_trace
