#include "bench/timed_calls.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace chart_trace_bench {

Preparation taking_over(const std::function<void(Pixels)>& function) {
  return [function](const Pixels& points) -> Call {
    return [function, own = points]() mutable { function(std::move(own)); };
  };
}

Preparation looking_at(const std::function<void(const Pixels&)>& function) {
  return [function](const Pixels& points) -> Call {
    return [function, &points] { function(points); };
  };
}

void time_calls(benchmark::State& state, const Preparation& prepare, const Pixels& points) {
  // Stopping the clock takes most of a microsecond, so that short calls share it.
  const std::size_t together = std::max<std::size_t>(1, 10'000 / points.x.size());
  prepare(points)();
  std::vector<Call> calls;
  while (state.KeepRunningBatch(static_cast<std::int64_t>(together))) {
    state.PauseTiming();
    calls.assign(together, prepare(points));
    state.ResumeTiming();
    for (const Call& call : calls) call();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.x.size()));
}

}  // namespace chart_trace_bench
