#include "extractors/step_size_graph_algm.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "extractors/height_changes.hpp"
#include "grouping/vertical_compartments.hpp"
#include "primitives/group_of_arrays.hpp"
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"

namespace {

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

// The compartments sorted into treads, reduced to their centres, and risers, kept whole.
struct Treads_and_risers {
  Step tread_centres;
  std::vector<Riser> risers;
};

// The number of points from which on a compartment is a riser. The factor is the single-precision
// value of 1.2, a little above 1.2: a mean of exactly 5 gives 7, not 6.
std::int64_t riser_threshold(const std::vector<Group_of_arrays>& compartments) {
  std::vector<double> sizes;
  sizes.reserve(compartments.size());
  for (const Group_of_arrays& compartment : compartments) {
    sizes.push_back(static_cast<double>(compartment.view().size()));
  }
  return chart_trace::to_int32(std::ceil(mean_of(sizes) * static_cast<double>(1.2F)));
}

Treads_and_risers sort_out_compartments(const std::vector<Group_of_arrays>& x_compartments,
                                        const std::vector<Group_of_arrays>& y_compartments) {
  // Compared without a sign, so that a threshold below 0 would make every compartment a tread.
  const auto threshold = static_cast<std::uint64_t>(riser_threshold(x_compartments));
  Treads_and_risers sorted;
  for (std::size_t k = 0; k < x_compartments.size(); ++k) {
    const std::vector<double>& gx = x_compartments[k].view();
    const std::vector<double>& gy = y_compartments[k].view();
    if (gx.size() < threshold) {
      sorted.tread_centres.x.push_back(mean_of(gx));
      sorted.tread_centres.y.push_back(mean_of(gy));
    } else {
      sorted.risers.push_back({gx, gy});
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
  const Vertical_compartments compartments(std::move(x_points), std::move(y_points),
                                           compartment_width);
  const auto [tread_centres, risers] =
      sort_out_compartments(compartments.x_groups_func(), compartments.y_groups_func());
  if (tread_centres.x.empty() || risers.empty()) return;

  const std::vector<Step> steps = chain_into_steps(tread_centres);
  Polyline line;
  line.add_start(risers.front(), steps.front());
  for (std::size_t j = 1; j < steps.size(); ++j) line.add_riser(steps[j - 1], steps[j]);
  line.add_end(risers.back(), steps.back());
  x_steps = std::move(line.x);
  y_steps = std::move(line.y);
}
