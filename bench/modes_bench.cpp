// Every mode on every pixel set. Modes that differ only in which result they hand out run the same
// computation, and one of them stands for all.
#include <benchmark/benchmark.h>

#include <string>
#include <utility>

#include "bench/on_pixel_sets.hpp"
#include "dispatch/autotrace.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_bench {
namespace {

constexpr double pixel_step = 1.0;
constexpr double cluster_fraction = 0.05;

bool add(const std::string& mode) {
  const auto run = [mode](Pixels pixels) {
    benchmark::DoNotOptimize(
        Autotrace(std::move(pixels.x), std::move(pixels.y), pixel_step, mode, cluster_fraction));
  };
  const auto is_right = [mode](const Pixels& pixels) {
    const Autotrace got(pixels.x, pixels.y, pixel_step, mode, cluster_fraction);
    const oracle::Points want =
        oracle::trace(pixels.x, pixels.y, pixel_step, mode, cluster_fraction);
    return same_bits(got.x_autotrace_func(), want.x) && same_bits(got.y_autotrace_func(), want.y);
  };
  return on_pixel_sets({"mode " + mode, taking_over(run), is_right});
}

const bool registered = add("point_density") && add("points_curves-fission") &&
                        add("points_curves-horizontal") && add("bar_vertical-fission") &&
                        add("bar_vertical-horizontal") && add("histogram") &&
                        add("step_size_graph");

}  // namespace
}  // namespace chart_trace_bench
