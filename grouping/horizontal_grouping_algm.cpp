// Breadth-first search over a list of runs: the reference run, in slot 0, takes every run of the
// list that touches it; the runs taken wait in a queue until they become the reference run in turn.

#include "grouping/horizontal_grouping_algm.hpp"

#include <cmath>
#include <cstddef>
#include <deque>

#include "grouping/check_groups.hpp"
#include "indexing/runs.hpp"
#include "primitives/to_int32.hpp"

namespace {

void remove(std::vector<Group_of_arrays>& runs, std::size_t i) {
  runs.erase(runs.begin() + static_cast<std::ptrdiff_t>(i));
}

void append(std::vector<double>& group, const Group_of_arrays& run) {
  group.insert(group.end(), run.view().begin(), run.view().end());
}

}  // namespace

Horizontal_grouping_algm::Horizontal_grouping_algm(std::vector<double> x, std::vector<double> y,
                                                   double pixel_step)
    : x_points(std::move(x)),
      y_points(std::move(y)),
      pixel_step(pixel_step),
      row_tolerance(pixel_step * 1.5),
      runs_left(0) {
  horizontal_groups();
  runs_left = chart_trace::count_of(x_runs);
  while (runs_left >= 1) {
    first_group();
    x_groups.emplace_back(x_group);
    y_groups.emplace_back(y_group);
    runs_left = chart_trace::count_of(x_runs);
  }
}

// Cuts the points into runs.
void Horizontal_grouping_algm::horizontal_groups() {
  const double* x = x_points.data();
  const double* y = y_points.data();
  chart_trace::for_each_run(x, y, x_points.size(), pixel_step,
                            [this, x, y](std::size_t first, std::size_t last) {
                              x_runs.emplace_back(std::vector<double>(x + first, x + last));
                              y_runs.emplace_back(std::vector<double>(y + first, y + last));
                            });
}

// Builds one group in x_group and y_group and removes its runs from the list.
void Horizontal_grouping_algm::first_group() {
  x_group = x_runs[0].array();
  y_group = y_runs[0].array();
  std::deque<std::pair<Group_of_arrays, Group_of_arrays>> join_queue;
  const auto rows_below_reference = [this](std::size_t i) {
    return y_runs[i].view()[0] - y_runs[0].view()[0];
  };
  std::size_t i = 1;
  while (i < x_runs.size()) {
    if (rows_below_reference(i) > row_tolerance) {
      if (join_queue.empty()) break;
      x_runs[0] = std::move(join_queue.front().first);
      y_runs[0] = std::move(join_queue.front().second);
      join_queue.pop_front();
      i = 1;
    }
    // Run 1 comes here straight after a change of reference: it is not held against the end of the
    // scan again, so it can neither end the scan nor change the reference once more.
    const bool joined = row_tolerance > std::fabs(rows_below_reference(i)) &&
                        check_groups(x_runs[0].view(), x_runs[i].view(), pixel_step);
    if (joined) {
      append(x_group, x_runs[i]);
      append(y_group, y_runs[i]);
      join_queue.emplace_back(std::move(x_runs[i]), std::move(y_runs[i]));
      remove(x_runs, i);
      remove(y_runs, i);
    } else {
      ++i;
    }
  }
  remove(x_runs, 0);
  remove(y_runs, 0);
}
