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

Groups grouped(const Numbers& x, const Numbers& y, double step, const std::string& method) {
  if (method == "fission") return fission(x, y, step);
  return horizontal(x, y, step);
}

// The change from each value to the next in percent of the sum of all absolute changes.
Numbers change_shares(const Numbers& values) {
  Numbers changes;
  Numbers shares;
  double total = 0.0;
  const std::int32_t n = oracle::count_of(values);
  for (std::int32_t k = 0; k <= n - 2; ++k) {
    changes.push_back(values[at(k + 1)] - values[at(k)]);
    total = total + std::fabs(changes[at(k)]);
  }
  for (std::int32_t k = 0; k <= n - 2; ++k) shares.push_back(changes[at(k)] / total * 100.0);
  return shares;
}

void close_bar(Points& result, Points& bar) {
  result.x.push_back((smallest(bar.x) + largest(bar.x)) * 0.5);
  result.y.push_back(average_of_numbers(bar.y));
  bar.x.clear();
  bar.y.clear();
}

// What a step graph is made of: the centres of its thin compartments and its thick compartments.
struct Treads_and_risers {
  Points centres;
  Groups risers;
};

Treads_and_risers split_compartments(const Groups& compartments) {
  Treads_and_risers parts;
  const std::int32_t n = count_of(compartments.x);
  Numbers sizes;
  for (std::int32_t i = 0; i < n; ++i) {
    sizes.push_back(static_cast<double>(compartments.x[at(i)].size()));
  }
  const double factor = 1.2000000476837158;
  const std::int64_t threshold = to_int32(std::ceil(average_of_numbers(sizes) * factor));
  for (std::int32_t i = 0; i < n; ++i) {
    const std::uint64_t size = compartments.x[at(i)].size();
    if (size < static_cast<std::uint64_t>(threshold)) {
      parts.centres.x.push_back(average_of_numbers(compartments.x[at(i)]));
      parts.centres.y.push_back(average_of_numbers(compartments.y[at(i)]));
    } else {
      parts.risers.x.push_back(compartments.x[at(i)]);
      parts.risers.y.push_back(compartments.y[at(i)]);
    }
  }
  return parts;
}

// The tread centres, cut where the height jumps by more than half a percent of all its changes.
Groups chained_steps(const Points& centres) {
  Groups steps;
  const Numbers shares = change_shares(centres.y);
  Points step = {{centres.x[0]}, {centres.y[0]}};
  const std::int32_t m = oracle::count_of(centres.x);
  for (std::int32_t k = 1; k <= m - 1; ++k) {
    if (std::fabs(shares[at(k - 1)]) > 0.5) {
      steps.x.push_back(step.x);
      steps.y.push_back(step.y);
      step = {};
    }
    step.x.push_back(centres.x[at(k)]);
    step.y.push_back(centres.y[at(k)]);
  }
  steps.x.push_back(step.x);
  steps.y.push_back(step.y);
  return steps;
}

void start_polyline(Points& line, const Groups& risers, const Groups& steps) {
  const double bx = risers.x[0][0];
  const double rx = steps.x[0][0];
  const double ry = steps.y[0][0];
  if (rx >= bx) {
    line.x.push_back((bx + rx) * 0.5);
    const double hi = largest(risers.y[0]);
    const double lo = smallest(risers.y[0]);
    const double to_hi = std::fabs(hi - ry);
    const double to_lo = std::fabs(lo - ry);
    if (to_hi <= to_lo || std::isnan(to_hi) || std::isnan(to_lo)) {
      line.y.push_back(lo);
    } else {
      line.y.push_back(hi);
    }
  } else {
    line.x.push_back(rx);
    line.y.push_back(ry);
  }
}

void risers_between(Points& line, const Groups& steps) {
  const std::int32_t count = count_of(steps.x);
  for (std::int32_t j = 0; j <= count - 2; ++j) {
    const Numbers& left = steps.x[at(j)];
    const Numbers& right = steps.x[at(j + 1)];
    const double xm = (left[left.size() - 1] + right[0]) * 0.5;
    line.x.push_back(xm);
    line.x.push_back(xm);
    line.y.push_back(steps.y[at(j)][0]);
    line.y.push_back(steps.y[at(j + 1)][0]);
  }
}

void end_polyline(Points& line, const Groups& risers, const Groups& steps) {
  const Numbers& last_x = steps.x[steps.x.size() - 1];
  const double lx = last_x[last_x.size() - 1];
  const double ry = steps.y[steps.y.size() - 1][0];
  line.x.push_back(lx);
  line.y.push_back(ry);

  const Numbers& riser_x = risers.x[risers.x.size() - 1];
  const Numbers& riser_y = risers.y[risers.y.size() - 1];
  const double hi = largest(riser_y);
  const double lo = smallest(riser_y);
  if (riser_x[0] >= lx) {
    line.x.pop_back();
    const double xe = (average_of_numbers(riser_x) + lx) * 0.5;
    line.x.push_back(xe);
    line.x.push_back(xe);
    if (std::fabs(hi - ry) > std::fabs(lo - ry)) line.y.push_back(hi);
  } else {
    line.y.push_back(lo);
  }
}

}  // namespace

Points_curves points_curves(const Numbers& x, const Numbers& y, double step,
                            const std::string& method, double fraction) {
  Points_curves result;
  const Groups groups = grouped(x, y, step, method);
  const std::int32_t group_count = count_of(groups.x);
  for (std::int32_t i = 0; i < group_count; ++i) {
    const Numbers gx = groups.x[at(i)];
    const Numbers gy = groups.y[at(i)];
    if (!check_solid_filled(gx, gy, step)) {
      append(result.curves.x, gx);
      append(result.curves.y, gy);
    } else {
      const double mx = average_of_numbers(gx);
      const double my = average_of_numbers(gy);
      result.points.x.push_back(mx);
      result.points.y.push_back(my);
      result.points_curves.x.push_back(mx);
      result.points_curves.y.push_back(my);
    }
  }
  if (result.curves.x.empty()) return result;
  result.curves = cluster(result.curves.x, result.curves.y, fraction).centroids;
  const std::vector<Numbers> thinned = point_density(result.curves.x, result.curves.y, fraction);
  if (thinned.size() < 2) {
    result.curves = {};
    return result;
  }
  result.curves = {thinned[0], thinned[1]};
  append(result.points_curves.x, result.curves.x);
  append(result.points_curves.y, result.curves.y);
  return result;
}

Bars bars(const Numbers& x, const Numbers& y, double step, const std::string& method) {
  Bars result;
  const Groups groups = grouped(x, y, step, method);
  const std::int32_t group_count = count_of(groups.x);
  for (std::int32_t k = 0; k < group_count; ++k) {
    const Numbers gx = groups.x[at(k)];
    const Numbers gy = groups.y[at(k)];
    result.vertical.x.push_back(average_of_numbers(gx));
    result.vertical.y.push_back(smallest(gy));
    result.horizontal.x.push_back(largest(gx));
    result.horizontal.y.push_back(average_of_numbers(gy));
  }
  return result;
}

Points histogram(const Numbers& x, const Numbers& y, double width) {
  Points result;
  const Groups compartments = vertical_compartments(x, y, width);
  Points tops;
  for (std::int32_t s = 0; s < count_of(compartments.x); ++s) {
    const Numbers gx = compartments.x[at(s)];
    const Numbers gy = compartments.y[at(s)];
    if (gx.empty()) continue;
    std::size_t m = 0;
    for (std::size_t i = 1; i < gy.size(); ++i) {
      if (gy[i] < gy[m]) m = i;
    }
    tops.x.push_back(gx[m]);
    tops.y.push_back(gy[m]);
  }
  const std::int32_t k = oracle::count_of(tops.x);
  if (k == 0) return result;
  const Numbers shares = change_shares(tops.y);
  Points bar = {{tops.x[0]}, {tops.y[0]}};
  for (std::int32_t j = 1; j <= k - 1; ++j) {
    if (std::fabs(shares[at(j - 1)]) > 0.5) close_bar(result, bar);
    bar.x.push_back(tops.x[at(j)]);
    bar.y.push_back(tops.y[at(j)]);
  }
  close_bar(result, bar);
  return result;
}

Points step_graph(const Numbers& x, const Numbers& y, double width) {
  const Treads_and_risers parts = split_compartments(vertical_compartments(x, y, width));
  Points line;
  if (parts.centres.x.empty() || parts.risers.x.empty()) return line;
  const Groups steps = chained_steps(parts.centres);
  start_polyline(line, parts.risers, steps);
  risers_between(line, steps);
  end_polyline(line, parts.risers, steps);
  return line;
}

}  // namespace oracle
