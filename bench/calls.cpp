// Runs a mode a number of times and nothing else, for a tool that counts instructions.
//
//   chart_trace_calls MODE SHAPE ORDER POINTS TIMES

#include <cstdio>
#include <cstdlib>

#include "bench/pixel_sets.hpp"
#include "dispatch/autotrace.hpp"

int main(int argc, char** argv) {
  using namespace chart_trace_bench;
  if (argc != 6) {
    std::fprintf(stderr, "usage: chart_trace_calls MODE SHAPE ORDER POINTS TIMES\n");
    return 1;
  }
  const Pixels pixels =
      pixels_of(shape_named(argv[2]), order_named(argv[3]), std::strtoull(argv[4], nullptr, 10));
  std::size_t results = 0;
  for (int times = std::atoi(argv[5]); times > 0; --times) {
    const Autotrace traced(pixels.x, pixels.y, 1.0, argv[1], 0.05);
    results += traced.x_autotrace_func().size();
  }
  std::printf("%zu\n", results);
  return 0;
}
