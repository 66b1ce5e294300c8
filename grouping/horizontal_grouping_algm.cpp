// Breadth-first search over a list of runs: the reference run takes every run of the list that
// touches it; the runs taken wait in a queue until they become the reference run in turn.

#include "grouping/horizontal_grouping_algm.hpp"

#include <algorithm>
#include <cstddef>

#include "indexing/raster_runs.hpp"
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
  using namespace chart_trace;
  if (x_points.empty()) return;
  horizontal_groups();
  const Run_pairs runs{x_runs.data(), y_runs.data(), static_cast<Run>(x_runs.size()),
                       this->pixel_step, row_tolerance};
  if (Touching_runs::in_raster_order(runs)) {
    take_groups(Raster_runs(runs));
  } else {
    take_groups(Unordered_runs(runs));
  }
}

void Horizontal_grouping_algm::horizontal_groups() {
  // The first point counts in any case, the others as far as a signed 32-bit integer counts.
  const auto count = static_cast<std::size_t>(std::max(chart_trace::count_of(x_points), 1));
  x_runs.reserve(count);
  y_runs.reserve(count);
  run_ends_.reserve(count);
  chart_trace::for_each_run(x_points.data(), y_points.data(), count, pixel_step,
                            [this](std::size_t first, std::size_t last) {
                              // The x values of a run never fall with a positive step; with any
                              // other nothing touches.
                              x_runs.push_back({static_cast<float>(x_points[first]),
                                                static_cast<float>(x_points[last - 1])});
                              y_runs.push_back(y_points[first]);
                              run_ends_.push_back(static_cast<chart_trace::Run>(last));
                            });
}

template <typename Run_list>
void Horizontal_grouping_algm::take_groups(Run_list runs) {
  std::vector<std::uint32_t> ends;
  x_group.resize(run_ends_.back());
  y_group.resize(run_ends_.back());
  runs_left = static_cast<std::int32_t>(runs.left());
  while (runs_left >= 1) {
    first_group(runs);
    ends.push_back(gather_points(ends.empty() ? 0 : ends.back()));
    runs_left = static_cast<std::int32_t>(runs.left());
  }
  x_groups = {std::move(x_group), ends};
  y_groups = {std::move(y_group), std::move(ends)};
}

// The group is its own queue: the runs behind the reference run have joined but not been searched
// from yet.
template <typename Run_list>
void Horizontal_grouping_algm::first_group(Run_list& runs) {
  group_runs_.clear();
  group_runs_.push_back(runs.take_first());
  bool stopped = runs.take_touching(group_runs_[0], false, group_runs_);
  for (std::size_t next = 1; stopped && next < group_runs_.size(); ++next) {
    // Straight after a change of reference the first run of the list is not held against the end of
    // the search: it can neither end the group nor change the reference once more.
    stopped = runs.take_touching(group_runs_[next], true, group_runs_);
  }
}

// Puts the points of the group behind those of the groups before it and returns where they end.
std::uint32_t Horizontal_grouping_algm::gather_points(std::uint32_t begin) {
  std::uint32_t end = begin;
  for (const chart_trace::Run run : group_runs_) {
    const std::size_t first = begin_of(run);
    const std::size_t count = end_of(run) - first;
    if (count > short_run) {
      std::copy_n(&x_points[first], count, &x_group[end]);
      std::copy_n(&y_points[first], count, &y_group[end]);
    } else {
      for (std::size_t k = 0; k < count; ++k) {
        x_group[end + k] = x_points[first + k];
        y_group[end + k] = y_points[first + k];
      }
    }
    end += static_cast<std::uint32_t>(count);
  }
  return end;
}
