// The compartments, and the two extractors that read them.
#include <benchmark/benchmark.h>

#include <utility>

#include "bench/on_pixel_sets.hpp"
#include "extractors/histogram_algm.hpp"
#include "extractors/step_size_graph_algm.hpp"
#include "grouping/vertical_compartments.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_bench {
namespace {

constexpr double width = 1.0;

template <class Algorithm>
void run(Pixels pixels) {
  benchmark::DoNotOptimize(Algorithm(std::move(pixels.x), std::move(pixels.y), width));
}

bool compartments_are_right(const Pixels& pixels) {
  const Vertical_compartments got(pixels.x, pixels.y, width);
  const oracle::Groups want = oracle::vertical_compartments(pixels.x, pixels.y, width);
  return same_bits(got.x_groups_func(), want.x) && same_bits(got.y_groups_func(), want.y);
}

bool histogram_is_right(const Pixels& pixels) {
  const Histogram_algm got(pixels.x, pixels.y, width);
  const oracle::Points want = oracle::histogram(pixels.x, pixels.y, width);
  return same_bits(got.x_hist_func(), want.x) && same_bits(got.y_hist_func(), want.y);
}

bool step_graph_is_right(const Pixels& pixels) {
  const Step_size_graph_algm got(pixels.x, pixels.y, width);
  const oracle::Points want = oracle::step_graph(pixels.x, pixels.y, width);
  return same_bits(got.x_step_func(), want.x) && same_bits(got.y_step_func(), want.y);
}

const bool registered =
    on_pixel_sets({"Vertical_compartments", taking_over(run<Vertical_compartments>),
                   compartments_are_right}) &&
    on_pixel_sets({"Histogram_algm", taking_over(run<Histogram_algm>), histogram_is_right}) &&
    on_pixel_sets(
        {"Step_size_graph_algm", taking_over(run<Step_size_graph_algm>), step_graph_is_right});

}  // namespace
}  // namespace chart_trace_bench
