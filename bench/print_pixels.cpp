// Writes a pixel set to standard output, for benchmarks in another language: all x, then all y, as
// doubles of this machine.
//
//   chart_trace_pixels SHAPE ORDER POINTS      such as: discs raster 100000

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/pixel_sets.hpp"

namespace {

using namespace chart_trace_bench;

template <class Values>
typename Values::value_type named(const Values& values, const std::string& name) {
  for (const auto value : values) {
    if (name_of(value) == name) return value;
  }
  std::fprintf(stderr, "no such pixel set: %s\n", name.c_str());
  std::exit(1);
}

void write(const std::vector<double>& values) {
  std::fwrite(values.data(), sizeof(double), values.size(), stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: chart_trace_pixels SHAPE ORDER POINTS\n");
    return 1;
  }
  const Pixels pixels = pixels_of(named(all_shapes, argv[1]), named(all_orders, argv[2]),
                                  std::strtoull(argv[3], nullptr, 10));
  write(pixels.x);
  write(pixels.y);
  return 0;
}
