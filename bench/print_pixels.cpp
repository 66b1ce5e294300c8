// Writes a pixel set to standard output, for benchmarks in another language: all x, then all y, as
// doubles of this machine.
//
//   chart_trace_pixels SHAPE ORDER POINTS      such as: discs raster 100000

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "bench/pixel_sets.hpp"

namespace {

void write(const std::vector<double>& values) {
  std::fwrite(values.data(), sizeof(double), values.size(), stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: chart_trace_pixels SHAPE ORDER POINTS\n");
    return 1;
  }
  using namespace chart_trace_bench;
  const Pixels pixels =
      pixels_of(shape_named(argv[1]), order_named(argv[2]), std::strtoull(argv[3], nullptr, 10));
  write(pixels.x);
  write(pixels.y);
  return 0;
}
