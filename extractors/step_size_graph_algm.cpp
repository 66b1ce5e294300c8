#include "extractors/step_size_graph_algm.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "extractors/height_changes.hpp"
#include "grouping/compartment_index.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

namespace {

using chart_trace::Compartment_index;
using chart_trace::mean_of;

// The centres of consecutive treads at one height, left to right.
struct Step {
  std::vector<double> x;
  std::vector<double> y;
  double height() const { return y.front(); }
};

// The points of one riser in compartment order.
struct Riser {
  std::vector<double> x;
  std::vector<double> y;
};

// What is to be known of each compartment: how many points it has, and their sums in input order.
struct Compartment {
  std::size_t size = 0;
  double sum_x = 0.0;
  double sum_y = 0.0;

  // The mean of a sum. Without points the NaN of average_of_numbers: the sign of that of a division
  // hangs on the processor.
  double mean(double sum) const {
    if (size == 0) return std::numeric_limits<double>::quiet_NaN();
    return sum / static_cast<std::int32_t>(size);
  }
};

std::vector<Compartment> compartments_of(const Compartment_index& index) {
  // The last one is for the points that no compartment takes.
  std::vector<Compartment> compartments(index.count() + 1);
  index.for_each_stretch([&](std::size_t k, const auto& stretch) {
    Compartment compartment = compartments[k];
    for (std::size_t i = 0; i < stretch.size; ++i) {
      const Compartment_index::Point point = stretch[i];
      compartment.sum_x += point.x;
      compartment.sum_y += point.y;
    }
    compartment.size += stretch.size;
    compartments[k] = compartment;
  });
  compartments.pop_back();
  return compartments;
}

// The number of points from which on a compartment is a riser, if there are `count` of them, empty
// ones included. The factor is the single-precision value of 1.2, a little above 1.2: a mean of
// exactly 5 gives 7, not 6.
std::int64_t riser_threshold(const std::vector<Compartment>& compartments, std::size_t count) {
  double points = 0.0;
  for (const Compartment& compartment : compartments) {
    points += static_cast<double>(compartment.size);
  }
  const double mean = points / static_cast<std::int32_t>(count);
  return chart_trace::to_int32(std::ceil(mean * static_cast<double>(1.2F)));
}

// The compartments sorted into treads, reduced to their centres, and the outermost risers.
struct Treads_and_risers {
  Step tread_centres;
  bool has_risers = false;
  std::size_t first_riser = 0;
  std::size_t last_riser = 0;
};

Treads_and_risers sort_out(const std::vector<Compartment>& compartments, std::size_t count) {
  // Compared without a sign, so that a threshold below 0 would make every compartment a tread.
  const auto threshold = static_cast<std::uint64_t>(riser_threshold(compartments, count));
  Treads_and_risers sorted;
  for (std::size_t k = 0; k < compartments.size(); ++k) {
    const Compartment& compartment = compartments[k];
    if (compartment.size < threshold) {
      sorted.tread_centres.x.push_back(compartment.mean(compartment.sum_x));
      sorted.tread_centres.y.push_back(compartment.mean(compartment.sum_y));
    } else {
      if (!sorted.has_risers) sorted.first_riser = k;
      sorted.has_risers = true;
      sorted.last_riser = k;
    }
  }
  return sorted;
}

std::vector<Step> chain_into_steps(const Step& centres) {
  const std::vector<double> shares = chart_trace::height_changes_in_percent(centres.y);
  std::vector<Step> steps(1);
  for (std::size_t k = 0; k < centres.x.size(); ++k) {
    if (k > 0 && chart_trace::is_jump(shares[k - 1])) steps.emplace_back();
    steps.back().x.push_back(centres.x[k]);
    steps.back().y.push_back(centres.y[k]);
  }
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
    const double riser_x = first_riser.x.front();
    const double tread_x = first_step.x.front();
    if (!(tread_x >= riser_x)) {
      add(tread_x, first_step.height());
      return;
    }
    const chart_trace::Extremes ends = chart_trace::extremes_of(first_riser.y);
    add((riser_x + tread_x) * 0.5,
        largest_y_is_far_end(ends, first_step.height()) ? ends.max : ends.min);
  }

  // The two vertices of the riser between neighbouring steps.
  void add_riser(const Step& before, const Step& after) {
    const double middle = (before.x.back() + after.x.front()) * 0.5;
    add(middle, before.height());
    add(middle, after.height());
  }

  // The line ends at the last centre, or at the last riser if that stands at or right of it: then x
  // gets one value more, and y only if the riser's largest y is its far end. A riser left of the
  // last centre adds its smallest y alone.
  void add_end(const Riser& last_riser, const Step& last_step) {
    const double tread_x = last_step.x.back();
    const chart_trace::Extremes ends = chart_trace::extremes_of(last_riser.y);
    y.push_back(last_step.height());
    if (last_riser.x.front() >= tread_x) {
      const double end = (mean_of(last_riser.x) + tread_x) * 0.5;
      x.push_back(end);
      x.push_back(end);
      if (largest_y_is_far_end(ends, last_step.height())) y.push_back(ends.max);
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
  const Treads_and_risers sorted = sort_out(compartments_of(index), index.total());
  if (sorted.tread_centres.x.empty() || !sorted.has_risers) return;

  Riser first_riser;
  Riser last_riser;
  const auto add = [&](std::size_t k, const Compartment_index::Point& point) {
    Riser& riser = k == sorted.first_riser ? first_riser : last_riser;
    riser.x.push_back(point.x);
    riser.y.push_back(point.y);
  };
  index.for_each_point_of(sorted.first_riser, sorted.last_riser, add);
  const bool is_one = sorted.first_riser == sorted.last_riser;
  const std::vector<Step> steps = chain_into_steps(sorted.tread_centres);
  Polyline line;
  line.add_start(first_riser, steps.front());
  for (std::size_t j = 1; j < steps.size(); ++j) line.add_riser(steps[j - 1], steps[j]);
  line.add_end(is_one ? first_riser : last_riser, steps.back());
  x_steps = std::move(line.x);
  y_steps = std::move(line.y);
}
