#include <cmath>
#include <cstddef>

#include "test/oracle/oracle.hpp"

namespace oracle {

namespace {

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

std::int32_t count_of(const std::vector<Numbers>& lists) {
  return static_cast<std::int32_t>(lists.size());
}

void append(Numbers& to, const Numbers& more) {
  for (const double value : more) to.push_back(value);
}

void append(Points& to, const Points& more) {
  append(to.x, more.x);
  append(to.y, more.y);
}

void append(Groups& to, const Points& group) {
  to.x.push_back(group.x);
  to.y.push_back(group.y);
}

Points without_first(Points points) {
  points.x.erase(points.x.begin());
  points.y.erase(points.y.begin());
  return points;
}

Points replicate(const Points& points) {
  return {replicate_vector(points.x), replicate_vector(points.y)};
}

// Everything that is reached from `group`, its seed's box, through boxes around newly found points,
// pass by pass. Takes what it reaches out of `remainder`.
Points grown(const Points& group, Points& remainder, double side) {
  Points accumulated = replicate(group);
  Points frontier = without_first(group);
  const std::int32_t r0 = oracle::count_of(remainder.x);
  if (r0 <= 0) return accumulated;
  std::int32_t p = 0;
  while (true) {
    const auto s = static_cast<std::int32_t>(remainder.x.size());
    Points found;
    const std::int32_t frontier_size = oracle::count_of(frontier.x);
    for (std::int32_t f = 0; f < frontier_size; ++f) {
      remainder.x.insert(remainder.x.begin(), frontier.x[at(f)]);
      remainder.y.insert(remainder.y.begin(), frontier.y[at(f)]);
      const Bubble bubble = box_bubble(remainder.x, remainder.y, side);
      append(found, without_first(bubble.group));
      remainder = bubble.remain;
    }
    frontier = replicate(found);
    append(accumulated, found);
    if (static_cast<std::size_t>(s) == remainder.x.size()) break;
    p = p + 1;
    if (p >= r0) break;
  }
  return accumulated;
}

// Stretches of one row whose x rises by exactly one step from each point to the next.
Groups horizontal_runs(const Numbers& x, const Numbers& y, double step) {
  Groups runs;
  Points run = {{x[0]}, {y[0]}};
  const std::int32_t n = oracle::count_of(x);
  for (std::int32_t k = 0; k <= n - 2; ++k) {
    const double next_x = x[at(k + 1)];
    const double next_y = y[at(k + 1)];
    if (y[at(k)] == next_y && x[at(k)] == next_x - step) {
      run.x.push_back(next_x);
      run.y.push_back(next_y);
    } else {
      append(runs, run);
      run = {{next_x}, {next_y}};
    }
  }
  append(runs, run);
  return runs;
}

void remove_run(Groups& runs, std::int32_t index) {
  runs.x.erase(runs.x.begin() + index);
  runs.y.erase(runs.y.begin() + index);
}

// How far the row of run i lies below the row of the reference run, which is in slot 0.
double rows_below(const Groups& runs, std::int32_t i) { return runs.y[at(i)][0] - runs.y[0][0]; }

Points first_group(Groups& runs, double step, double row_tolerance) {
  Points group = {runs.x[0], runs.y[0]};
  Groups queue;
  std::int32_t i = 1;
  while (static_cast<std::size_t>(static_cast<std::int64_t>(i)) < runs.x.size()) {
    if (rows_below(runs, i) > row_tolerance) {
      if (queue.x.empty()) break;
      runs.x[0] = queue.x[0];
      runs.y[0] = queue.y[0];
      remove_run(queue, 0);
      i = 1;
    }
    bool joined = false;
    if (row_tolerance > std::fabs(rows_below(runs, i))) {
      joined = check_groups(runs.x[0], runs.x[at(i)], step);
    }
    if (joined) {
      append(group, {runs.x[at(i)], runs.y[at(i)]});
      append(queue, {runs.x[at(i)], runs.y[at(i)]});
      remove_run(runs, i);
    } else {
      i = i + 1;
    }
  }
  remove_run(runs, 0);
  return group;
}

}  // namespace

Bubble box_bubble(const Numbers& x, const Numbers& y, double box_size) {
  Bubble bubble;
  if (x.empty()) return bubble;
  const double x0 = x[0];
  const double y0 = y[0];
  bubble.group.x.push_back(x0);
  bubble.group.y.push_back(y0);
  const double half = box_size * 0.5;
  const Numbers x_range = {x0 - half, x0 + half};
  const Numbers y_range = {y0 - half, y0 + half};
  const std::int32_t n = oracle::count_of(x);
  for (std::int32_t i = 1; i < n; ++i) {
    const bool inside = check_point_in_box(x[at(i)], y[at(i)], x_range, y_range);
    Points& side = inside ? bubble.group : bubble.remain;
    side.x.push_back(x[at(i)]);
    side.y.push_back(y[at(i)]);
  }
  return bubble;
}

Groups fission(const Numbers& x, const Numbers& y, double step) {
  Groups groups;
  Points points = {x, y};
  const std::int32_t n = oracle::count_of(x);
  if (n < 1) return groups;
  const double side = step * 3.0;
  std::uint32_t g = 0;
  while (true) {
    const Bubble bubble = box_bubble(points.x, points.y, side);
    Points group = bubble.group;
    Points remainder = bubble.remain;
    if (group.x.size() >= 2) group = grown(group, remainder, side);
    append(groups, group);
    points = remainder;
    if (points.x.empty()) break;
    g = g + 1;
    if (g == static_cast<std::uint32_t>(n)) break;
  }
  return groups;
}

bool check_groups(const Numbers& a, const Numbers& b, double step) {
  const float a_min = static_cast<float>(smallest(a));
  const float a_max = static_cast<float>(largest(a));
  const float b_min = static_cast<float>(smallest(b));
  const float b_max = static_cast<float>(largest(b));
  if (a_min >= b_min) {
    const float overlap = b_max - a_min;
    return static_cast<double>(overlap) >= -step;
  }
  if (b_min > a_min) {
    const float overlap = a_max - b_min;
    return static_cast<double>(overlap) >= -step;
  }
  return false;
}

Groups horizontal(const Numbers& x, const Numbers& y, double step) {
  Groups groups;
  if (x.empty()) return groups;
  Groups runs = horizontal_runs(x, y, step);
  const double row_tolerance = step * 1.5;
  std::int32_t runs_left = count_of(runs.x);
  while (runs_left >= 1) {
    append(groups, first_group(runs, step, row_tolerance));
    runs_left = count_of(runs.x);
  }
  return groups;
}

Groups vertical_compartments(const Numbers& x, const Numbers& y, double width) {
  Groups groups;
  if (x.empty()) return groups;
  Points points = {x, y};
  const double x_min = smallest(x);
  const double x_max = largest(x);
  const double y_min = smallest(y);
  const double y_max = largest(y);
  double t = x_min;
  while (true) {
    if (x_max < t || std::isnan(x_max) || std::isnan(t)) break;
    const double t_next = width + t;
    Points inside;
    Points rest;
    const std::int32_t n = oracle::count_of(points.x);
    for (std::int32_t i = 0; i < n; ++i) {
      const double px = points.x[at(i)];
      const double py = points.y[at(i)];
      const bool taken = t <= px && px <= t_next && y_min <= py && py <= y_max;
      Points& side = taken ? inside : rest;
      side.x.push_back(px);
      side.y.push_back(py);
    }
    points = rest;
    append(groups, inside);
    // A border that did not move to the right never will: the run would not end.
    if (!(t_next > t)) break;
    t = t_next;
    if (points.x.empty()) break;
  }
  return groups;
}

}  // namespace oracle
