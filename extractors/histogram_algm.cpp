#include "extractors/histogram_algm.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "extractors/height_changes.hpp"
#include "grouping/compartment_index.hpp"
#include "primitives/vectors.hpp"

namespace {

using chart_trace::Compartment_index;

using Top = Compartment_index::Point;

// The top of every compartment that has one, left to right.
std::vector<Top> tops_of(const std::vector<double>& x, const std::vector<double>& y, double width) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();  // no point is there
  const Compartment_index index(x, y, width, Compartment_index::Empty::gap_as_one);
  // The last one is for the points that no compartment takes.
  std::vector<Top> tops(index.count() + 1, Top{none, none});
  index.for_each_point([all = tops.data()](std::size_t compartment, const Top& point) {
    Top& top = all[compartment];
    if (!(top.y <= point.y)) top = point;
  });
  tops.pop_back();
  tops.erase(
      std::remove_if(tops.begin(), tops.end(), [](const Top& top) { return std::isnan(top.y); }),
      tops.end());
  return tops;
}

}  // namespace

Histogram_algm::Histogram_algm(std::vector<double> x, std::vector<double> y,
                               double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)) {
  const std::vector<Top> tops = tops_of(x_points, y_points, compartment_width);
  if (tops.empty()) return;
  chart_trace::Height_changes changes;
  for (std::size_t j = 1; j < tops.size(); ++j) changes.add(tops[j - 1].y, tops[j].y);
  std::vector<double> bar_x;
  std::vector<double> bar_y;
  for (std::size_t j = 0; j < tops.size(); ++j) {
    if (j > 0 && changes.is_jump(tops[j - 1].y, tops[j].y)) {
      close_bar(bar_x, bar_y);
      bar_x.clear();
      bar_y.clear();
    }
    bar_x.push_back(tops[j].x);
    bar_y.push_back(tops[j].y);
  }
  close_bar(bar_x, bar_y);
}

void Histogram_algm::close_bar(const std::vector<double>& bar_x, const std::vector<double>& bar_y) {
  const auto [left, right] = chart_trace::extremes_of(bar_x);
  x_hist.push_back((left + right) * 0.5);
  y_hist.push_back(chart_trace::mean_of(bar_y));
}
