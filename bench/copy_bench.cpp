// The anchor of whatever has no other: what it costs to copy both arrays, which a caller that keeps
// them pays for every call by value on top.
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

const bool registered = on_pixel_sets({"copy", looking_at(copy_both_arrays), nullptr});

}  // namespace
}  // namespace chart_trace_bench
