#include <benchmark/benchmark.h>

#include <utility>

#include "bench/on_pixel_sets.hpp"
#include "grouping/horizontal_grouping_algm.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_bench {
namespace {

void group(Pixels pixels) {
  const Horizontal_grouping_algm grouping(std::move(pixels.x), std::move(pixels.y), 1.0);
  benchmark::DoNotOptimize(&grouping);
  benchmark::ClobberMemory();
}

bool equals_the_oracle(const Pixels& pixels) {
  const Horizontal_grouping_algm got(pixels.x, pixels.y, 1.0);
  const oracle::Groups want = oracle::horizontal(pixels.x, pixels.y, 1.0);
  return same_bits(got.x_groups_func(), want.x) && same_bits(got.y_groups_func(), want.y);
}

const bool registered =
    on_pixel_sets({"Horizontal_grouping_algm", taking_over(group), equals_the_oracle});

}  // namespace
}  // namespace chart_trace_bench
