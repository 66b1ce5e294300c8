#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "indexing/run_pairs.hpp"
#include "primitives/groups.hpp"

// Divides a point set into groups row by row: cuts the points into runs (maximal stretches of
// points one pixel step apart on one row, in input order), then joins runs that lie on rows less
// than 1.5 pixel steps apart and overlap horizontally or leave a gap of at most one pixel step.
// Made for raster order, row after row and left to right; other orders break runs apart.
// Shape: x and y groups are parallel; every input point is in exactly one group, none is empty.
// Order (the extractors rely on it): groups by their first run; inside a group run by run in the
// order of joining, breadth first.
// On purpose: runs that joined a group are searched from only while a run more than 1.5 pixel steps
// below the run in hand is still left in the list; at the end of the list the ones still queued are
// not, so that runs touching only them come out as groups of their own.
// NaN: equal to nothing, so it breaks runs; a run on a NaN row joins none. No points, no groups.
// Cost: a few ns a point when the points come row by row, linear whatever the coordinates unless
// they are crowded; O(log n) a run in other orders. Points that lie many to a step, or on infinite
// rows, can make it quadratic.
class Horizontal_grouping_algm {
 public:
  Horizontal_grouping_algm(std::vector<double> x, std::vector<double> y, double pixel_step);

  std::vector<Group_of_arrays> x_groups_func() const { return groups_.x_groups(); }
  std::vector<Group_of_arrays> y_groups_func() const { return groups_.y_groups(); }
  // The same without a copy, of a grouping that is about to be thrown away.
  chart_trace::Groups groups() && { return std::move(groups_); }

 private:
  bool flood_picture();
  void horizontal_groups();
  std::vector<std::uint32_t> take_all_groups();
  template <typename Run_list>
  std::vector<std::uint32_t> take_groups(Run_list runs);
  template <typename Run_list>
  void first_group(Run_list& runs);
  void gather_points();
  std::vector<double> gathered(const std::vector<double>& points, std::vector<double> memory) const;
  std::size_t begin_of(chart_trace::Run run) const { return run == 0 ? 0 : run_ends_[run - 1]; }
  std::size_t end_of(chart_trace::Run run) const { return run_ends_[run]; }

  std::vector<double> x_points, y_points;       // in input order; empty once built
  std::vector<double> x_group, y_group;         // in the order of joining, all groups; empty then
  std::vector<chart_trace::Run_extent> x_runs;  // all runs, in input order: their extents
  std::vector<double> y_runs;                   // and their rows; the points stay where they are
  chart_trace::Groups groups_;                  // in the order of their first runs
  double pixel_step;
  double row_tolerance;
  std::int32_t runs_left;
  std::vector<chart_trace::Run> run_ends_;  // of each run, the point behind its last
  std::vector<chart_trace::Run> joined_;    // the runs in groups so far, in the order of joining
};
