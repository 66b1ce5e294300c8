#include "extractors/histogram_algm.hpp"

#include <cmath>
#include <cstddef>
#include <limits>

#include "extractors/height_changes.hpp"
#include "grouping/compartment_index.hpp"
#include "primitives/vectors.hpp"

namespace {

using chart_trace::Compartment_index;

struct Tops {
  std::vector<double> x;
  std::vector<double> y;
};

// The top of every compartment that has one, left to right.
Tops tops_of(const std::vector<double>& x, const std::vector<double>& y, double width) {
  using Top = Compartment_index::Point;  // at NaN as long as there is none: no point is there
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  const Compartment_index index(x, y, width, Compartment_index::Empty::gap_as_one);
  // The last one is for the points that no compartment takes.
  std::vector<Top> compartments(index.count() + 1, Top{none, none});
  index.for_each_point([all = compartments.data()](std::size_t compartment, const Top& point) {
    Top& top = all[compartment];
    if (!(top.y <= point.y)) top = point;
  });
  compartments.pop_back();

  Tops tops;
  for (const Top& top : compartments) {
    if (std::isnan(top.y)) continue;
    tops.x.push_back(top.x);
    tops.y.push_back(top.y);
  }
  return tops;
}

}  // namespace

Histogram_algm::Histogram_algm(std::vector<double> x, std::vector<double> y,
                               double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)) {
  const Tops tops = tops_of(x_points, y_points, compartment_width);
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
