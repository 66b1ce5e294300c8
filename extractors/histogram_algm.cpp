#include "extractors/histogram_algm.hpp"

#include <cstddef>

#include "extractors/height_changes.hpp"
#include "grouping/vertical_compartments.hpp"
#include "primitives/vectors.hpp"

namespace {

struct Tops {
  std::vector<double> x;
  std::vector<double> y;
};

// The top of every compartment that has one, left to right.
Tops tops_of(const std::vector<Group_of_arrays>& x_compartments,
             const std::vector<Group_of_arrays>& y_compartments) {
  Tops tops;
  for (std::size_t k = 0; k < x_compartments.size(); ++k) {
    const std::vector<double>& gy = y_compartments[k].view();
    if (gy.empty()) continue;
    std::size_t top = 0;
    for (std::size_t i = 1; i < gy.size(); ++i) {
      if (gy[i] < gy[top]) top = i;
    }
    tops.x.push_back(x_compartments[k].view()[top]);
    tops.y.push_back(gy[top]);
  }
  return tops;
}

}  // namespace

Histogram_algm::Histogram_algm(std::vector<double> x, std::vector<double> y,
                               double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)) {
  const Vertical_compartments compartments(std::move(x_points), std::move(y_points),
                                           compartment_width);
  const Tops tops = tops_of(compartments.x_groups_func(), compartments.y_groups_func());
  if (tops.x.empty()) return;
  const std::vector<double> shares = chart_trace::height_changes_in_percent(tops.y);
  std::vector<double> bar_x;
  std::vector<double> bar_y;
  for (std::size_t j = 0; j < tops.x.size(); ++j) {
    if (j > 0 && chart_trace::is_jump(shares[j - 1])) {
      close_bar(bar_x, bar_y);
      bar_x.clear();
      bar_y.clear();
    }
    bar_x.push_back(tops.x[j]);
    bar_y.push_back(tops.y[j]);
  }
  close_bar(bar_x, bar_y);
}

void Histogram_algm::close_bar(const std::vector<double>& bar_x, const std::vector<double>& bar_y) {
  const auto [left, right] = chart_trace::extremes_of(bar_x);
  x_hist.push_back((left + right) * 0.5);
  y_hist.push_back(chart_trace::mean_of(bar_y));
}
