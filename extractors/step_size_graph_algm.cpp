#include "extractors/step_size_graph_algm.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "extractors/height_changes.hpp"
#include "grouping/compartment_index.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

namespace {

using chart_trace::Compartment_index;
using Point = Compartment_index::Point;

// Consecutive treads at one height: the x of their outermost centres.
struct Step {
  double first_x;
  double last_x;
  double height;
};

// What is to be known of a riser, taken from its points in input order, one at least.
class Riser {
 public:
  void add(const Point& point) {
    if (size_ == 0) {
      first_x_ = point.x;
      y_ends_ = {point.y, point.y};
    }
    if (point.y < y_ends_.min) y_ends_.min = point.y;
    if (point.y > y_ends_.max) y_ends_.max = point.y;
    sum_x_ += point.x;
    ++size_;
  }

  double first_x() const { return first_x_; }
  double mean_x() const { return sum_x_ / size_; }
  const chart_trace::Extremes& y_ends() const { return y_ends_; }

 private:
  std::int32_t size_ = 0;
  double first_x_ = 0.0;
  double sum_x_ = 0.0;
  chart_trace::Extremes y_ends_{};
};

// What is to be known of each compartment: how many points it has, and their sums in input order.
struct Compartment {
  std::size_t size = 0;
  double sum_x = 0.0;
  double sum_y = 0.0;
};

// The mean of a sum. Without points the NaN of average_of_numbers: the sign of that of a division
// hangs on the processor.
double mean_of_sum(double sum, std::size_t size) {
  if (size == 0) return std::numeric_limits<double>::quiet_NaN();
  return sum / static_cast<std::int32_t>(size);
}

std::vector<Compartment> compartments_of(const Compartment_index& index) {
  // The last one is for the points that no compartment takes.
  std::vector<Compartment> compartments(index.count() + 1);
  index.for_each_stretch([&](std::size_t k, const auto& stretch) {
    Compartment compartment = compartments[k];
    for (std::size_t i = 0; i < stretch.size; ++i) {
      const Point point = stretch[i];
      compartment.sum_x += point.x;
      compartment.sum_y += point.y;
    }
    compartment.size += stretch.size;
    compartments[k] = compartment;
  });
  compartments.pop_back();
  return compartments;
}

// The compartments sorted into treads and risers: a riser has so many points at least.
struct Sorted_compartments {
  std::vector<Compartment> all;
  std::uint64_t riser_size;

  bool is_riser(std::size_t k) const { return all[k].size >= riser_size; }

  // Calls visit(centre) for all treads, left to right.
  template <class Visit>
  void for_each_tread(Visit visit) const {
    for (std::size_t k = 0; k < all.size(); ++k) {
      if (is_riser(k)) continue;
      visit(Point{mean_of_sum(all[k].sum_x, all[k].size), mean_of_sum(all[k].sum_y, all[k].size)});
    }
  }
};

// `count` is the number of compartments with each empty one counted.
Sorted_compartments sort_out(std::vector<Compartment> compartments, std::size_t count) {
  double points = 0.0;
  for (const Compartment& compartment : compartments) {
    points += static_cast<double>(compartment.size);
  }
  const double mean = points / static_cast<std::int32_t>(count);
  // The factor is the single-precision value of 1.2, a little above 1.2: a mean of exactly 5 gives
  // 7, not 6. Sizes are compared without a sign, so that a threshold below 0 would make every
  // compartment a tread.
  const std::int64_t threshold = chart_trace::to_int32(std::ceil(mean * static_cast<double>(1.2F)));
  return {std::move(compartments), static_cast<std::uint64_t>(threshold)};
}

// The outermost risers, none if there is no riser.
struct Outermost_risers {
  Riser first;
  Riser last;
};
std::optional<Outermost_risers> outermost_risers(const Sorted_compartments& compartments,
                                                 const Compartment_index& index) {
  std::size_t first = 0;
  std::size_t last = compartments.all.size();
  while (first < last && !compartments.is_riser(first)) ++first;
  if (first == last) return std::nullopt;
  while (!compartments.is_riser(--last)) {
  }
  Outermost_risers risers;
  index.for_each_point_of(first, last, [&](std::size_t k, const Point& point) {
    (k == first ? risers.first : risers.last).add(point);
  });
  if (first == last) risers.last = risers.first;
  return risers;
}

std::vector<Step> chain_into_steps(const Sorted_compartments& compartments) {
  chart_trace::Height_changes changes;
  std::optional<double> before;
  compartments.for_each_tread([&](const Point& centre) {
    if (before) changes.add(*before, centre.y);
    before = centre.y;
  });
  std::vector<Step> steps;
  compartments.for_each_tread([&](const Point& centre) {
    if (steps.empty() || changes.is_jump(*before, centre.y)) {
      steps.push_back({centre.x, centre.x, centre.y});
    }
    steps.back().last_x = centre.x;
    before = centre.y;
  });
  return steps;
}

// The end of the riser that lies farther from `height`: the larger y if it is strictly farther.
bool largest_y_is_far_end(const chart_trace::Extremes& riser, double height) {
  return std::fabs(riser.max - height) > std::fabs(riser.min - height);
}

// Builds the polyline of the steps. A struct of its own so that each part of the line is a short
// function that appends to the two lists.
struct Polyline {
  std::vector<double> x;
  std::vector<double> y;

  void add(double vertex_x, double vertex_y) {
    x.push_back(vertex_x);
    y.push_back(vertex_y);
  }

  // The line starts at the far end of the first riser if that stands at or left of the first tread,
  // halfway to it, and otherwise at the first tread.
  void add_start(const Riser& first_riser, const Step& first_step) {
    const double riser_x = first_riser.first_x();
    const double tread_x = first_step.first_x;
    if (!(tread_x >= riser_x)) {
      add(tread_x, first_step.height);
      return;
    }
    const chart_trace::Extremes& ends = first_riser.y_ends();
    add((riser_x + tread_x) * 0.5,
        largest_y_is_far_end(ends, first_step.height) ? ends.max : ends.min);
  }

  // The two vertices of the riser between neighbouring steps.
  void add_riser(const Step& before, const Step& after) {
    const double middle = (before.last_x + after.first_x) * 0.5;
    add(middle, before.height);
    add(middle, after.height);
  }

  // The line ends at the last centre, or at the last riser if that stands at or right of it: then x
  // gets one value more, and y only if the riser's largest y is its far end. A riser left of the
  // last centre adds its smallest y alone.
  void add_end(const Riser& last_riser, const Step& last_step) {
    const double tread_x = last_step.last_x;
    const chart_trace::Extremes& ends = last_riser.y_ends();
    y.push_back(last_step.height);
    if (last_riser.first_x() >= tread_x) {
      const double end = (last_riser.mean_x() + tread_x) * 0.5;
      x.push_back(end);
      x.push_back(end);
      if (largest_y_is_far_end(ends, last_step.height)) y.push_back(ends.max);
    } else {
      x.push_back(tread_x);
      y.push_back(ends.min);
    }
  }
};

}  // namespace

Step_size_graph_algm::Step_size_graph_algm(std::vector<double> x, std::vector<double> y,
                                           double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)) {
  // One empty compartment does what a gap of many does: it is a tread without a centre, and a
  // single one makes one step of all treads.
  const Compartment_index index(x_points, y_points, compartment_width,
                                Compartment_index::Empty::gap_as_one);
  const Sorted_compartments compartments = sort_out(compartments_of(index), index.total());
  const std::vector<Step> steps = chain_into_steps(compartments);
  if (steps.empty()) return;
  const auto risers = outermost_risers(compartments, index);
  if (!risers) return;
  Polyline line;
  line.add_start(risers->first, steps.front());
  for (std::size_t j = 1; j < steps.size(); ++j) line.add_riser(steps[j - 1], steps[j]);
  line.add_end(risers->last, steps.back());
  x_steps = std::move(line.x);
  y_steps = std::move(line.y);
}
