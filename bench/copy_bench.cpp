// The anchor of whatever has no other: what it costs to copy both arrays, the least that a call by
// value can cost.
#include <benchmark/benchmark.h>

#include "bench/on_pixel_sets.hpp"

namespace chart_trace_bench {
namespace {

void copy_both_arrays(const Pixels& pixels) {
  Pixels copy = pixels;
  benchmark::DoNotOptimize(copy.x.data());
  benchmark::DoNotOptimize(copy.y.data());
  benchmark::ClobberMemory();
}

const bool registered = on_pixel_sets({"copy", copy_both_arrays, nullptr});

}  // namespace
}  // namespace chart_trace_bench
