#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "bench/pixel_sets.hpp"
#include "bench/timed_calls.hpp"
#include "primitives/group_of_arrays.hpp"

// Registers benchmarks on the pixel sets. A benchmark file holds one line a subject:
//
//   const bool registered = on_pixel_sets({"Fission_algm", taking_over(group), is_right});
//
// Each is called SUBJECT/SHAPE/ORDER/POINTS and reports the points it gets done in a second, from
// which the table of scripts/bench.mjs takes ns a point. A subject called "Fission_algm:OpenCV" is
// an anchor of "Fission_algm": the table sets it beside the figures of that subject.

namespace chart_trace_bench {

struct Subject {
  std::string name;
  // Makes ready what is timed: one whole call.
  Preparation call;
  // Whether the subject's answer for these pixels is right: asked on a small set of the same shape
  // and order before anything is timed, so it may be slow. A benchmark whose answer is wrong fails.
  // Anchors may go without.
  std::function<bool(const Pixels&)> is_right;
  std::vector<Shape> shapes{all_shapes.begin(), all_shapes.end()};
  std::vector<Order> orders{all_orders.begin(), all_orders.end()};
  std::vector<std::size_t> sizes{1'000, 10'000, 100'000, 1'000'000};
};

// Returns true, so that it can initialise a constant at namespace scope.
bool on_pixel_sets(const Subject& subject);

// Whether two results agree in every bit; every NaN equals every other.
bool same_bits(const std::vector<double>& a, const std::vector<double>& b);
bool same_bits(const std::vector<Group_of_arrays>& a, const std::vector<std::vector<double>>& b);

}  // namespace chart_trace_bench
