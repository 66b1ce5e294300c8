// Breadth-first search over a list of runs: the reference run takes every run of the list that
// touches it; the runs taken wait in a queue until they become the reference run in turn.

#include "grouping/horizontal_grouping_algm.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "grouping/picture_groups.hpp"
#include "indexing/column_runs.hpp"
#include "indexing/pixel_map.hpp"
#include "indexing/raster_runs.hpp"
#include "indexing/run_flood.hpp"
#include "indexing/runs.hpp"
#include "indexing/unordered_runs.hpp"
#include "primitives/to_int32.hpp"

namespace {

// Points up to which a run is spared the call to copy it that longer ones are worth.
constexpr std::size_t short_run = 4;

}  // namespace

Horizontal_grouping_algm::Horizontal_grouping_algm(std::vector<double> x, std::vector<double> y,
                                                   double pixel_step)
    : x_points(std::move(x)),
      y_points(std::move(y)),
      pixel_step(pixel_step),
      row_tolerance(pixel_step * 1.5),
      runs_left(0) {
  if (x_points.empty()) return;
  if (flood_picture()) return;
  horizontal_groups();
  std::vector<std::uint32_t> ends = take_all_groups();
  gather_points();
  groups_ = {std::move(x_group), std::move(y_group), std::move(ends)};
}

// Groups a clean picture row by row; false for every other point set.
bool Horizontal_grouping_algm::flood_picture() {
  using namespace chart_trace;
  if (pixel_step != 1.0 || count_of(x_points) < 1) return false;
  auto map = Pixel_map::of_raster(x_points, y_points);
  if (!map || !Run_flood::holds_exactly(*map)) return false;
  groups_ = picture_groups(Run_flood(*std::move(map)), x_points, y_points);
  return true;
}

void Horizontal_grouping_algm::horizontal_groups() {
  // The first point counts in any case, the others as far as a signed 32-bit integer counts.
  const auto count = static_cast<std::size_t>(std::max(chart_trace::count_of(x_points), 1));
  const double* const x = x_points.data();
  const double* const y = y_points.data();
  // Counted first: lists that grow leave their memory behind, as much again at the peak.
  std::size_t runs = 0;
  chart_trace::for_each_run(x, y, count, pixel_step, [&](std::size_t, std::size_t) { ++runs; });
  x_runs.reserve(runs);
  y_runs.reserve(runs);
  run_ends_.reserve(runs);
  chart_trace::for_each_run(x, y, count, pixel_step, [&](std::size_t first, std::size_t last) {
    // The x values of a run never fall with a positive step; with any other nothing touches.
    x_runs.push_back({static_cast<float>(x[first]), static_cast<float>(x[last - 1])});
    y_runs.push_back(y[first]);
    run_ends_.push_back(static_cast<chart_trace::Run>(last));
  });
}

std::vector<std::uint32_t> Horizontal_grouping_algm::take_all_groups() {
  using namespace chart_trace;
  const Run_pairs runs{x_runs.data(), y_runs.data(), static_cast<Run>(x_runs.size()), pixel_step,
                       row_tolerance};
  if (auto rows = Raster_runs::of(runs)) return take_groups(*std::move(rows));
  if (auto columns = Column_runs::of(runs)) return take_groups(*std::move(columns));
  return take_groups(Unordered_runs(runs));
}

// Returns where the points of each group end when all points stand in the order of joining.
template <typename Run_list>
std::vector<std::uint32_t> Horizontal_grouping_algm::take_groups(Run_list runs) {
  std::vector<std::uint32_t> ends;
  std::uint32_t end = 0;
  joined_.reserve(x_runs.size());
  runs_left = static_cast<std::int32_t>(runs.left());
  while (runs_left >= 1) {
    const std::size_t first = joined_.size();
    first_group(runs);
    for (std::size_t k = first; k < joined_.size(); ++k) {
      end += static_cast<std::uint32_t>(end_of(joined_[k]) - begin_of(joined_[k]));
    }
    ends.push_back(end);
    runs_left = static_cast<std::int32_t>(runs.left());
  }
  return ends;
}

// The group is its own queue: the runs behind the reference run have joined but not been searched
// from yet.
template <typename Run_list>
void Horizontal_grouping_algm::first_group(Run_list& runs) {
  std::size_t next = joined_.size();
  joined_.push_back(runs.take_first());
  bool stopped = runs.take_touching(joined_[next], false, joined_);
  for (++next; stopped && next < joined_.size(); ++next) {
    // Straight after a change of reference the first run of the list is not held against the end of
    // the search: it can neither end the group nor change the reference once more.
    stopped = runs.take_touching(joined_[next], true, joined_);
  }
}

// Puts the points of all groups in the order of joining: first the x values, then in their memory
// the y values, as the touch of fresh memory costs more than the copying.
void Horizontal_grouping_algm::gather_points() {
  x_group = gathered(x_points, std::vector<double>(run_ends_.back()));
  y_points = gathered(y_points, std::move(x_points));
  y_group = std::move(y_points);
}

std::vector<double> Horizontal_grouping_algm::gathered(const std::vector<double>& points,
                                                       std::vector<double> memory) const {
  double* to = memory.data();
  for (const chart_trace::Run run : joined_) {
    const double* from = &points[begin_of(run)];
    std::size_t count = end_of(run) - begin_of(run);
    if (count > short_run) {
      to = std::copy_n(from, count, to);
    } else {
      for (; count > 0; --count) *to++ = *from++;
    }
  }
  return memory;
}
