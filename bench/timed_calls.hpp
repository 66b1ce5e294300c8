#pragma once

#include <benchmark/benchmark.h>

#include <functional>

#include "bench/pixel_sets.hpp"

// Times calls, each of which is made ready before the clock starts: what it needs of its own is not
// part of its cost.

namespace chart_trace_bench {

using Call = std::function<void()>;

// Makes a call on these points ready. It is copied, with what it holds, and each copy is called
// once only: it may use that up.
using Preparation = std::function<Call(const Pixels&)>;

// For a function that takes the points over, as `trace` hands them to each algorithm: they are
// copied beforehand and moved in. A caller that keeps its points pays for that copy on top.
Preparation taking_over(const std::function<void(Pixels)>& function);

// For a function that only looks at the points, which must outlive the call.
Preparation looking_at(const std::function<void(const Pixels&)>& function);

// Calls once untimed, so that the memory that calls reuse is mapped, then as often as it takes.
void time_calls(benchmark::State& state, const Preparation& prepare, const Pixels& points);

}  // namespace chart_trace_bench
