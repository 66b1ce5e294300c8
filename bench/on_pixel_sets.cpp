#include "bench/on_pixel_sets.hpp"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <map>
#include <tuple>

namespace chart_trace_bench {
namespace {

// Enough for every shape to appear and little enough for a quadratic oracle.
constexpr std::size_t proof_size = 2'000;

// Asks each subject once for each shape and order, however often it is timed.
bool is_proven(const Subject& subject, Shape shape, Order order) {
  static std::map<std::tuple<std::string, Shape, Order>, bool> answers;
  const auto [answer, is_new] = answers.try_emplace({subject.name, shape, order}, true);
  if (is_new && subject.is_right) {
    answer->second = subject.is_right(pixels_of(shape, order, proof_size));
  }
  return answer->second;
}

// The set that was asked for last is kept, since a benchmark is repeated.
const Pixels& latest_pixels(Shape shape, Order order, std::size_t size) {
  static std::tuple<Shape, Order, std::size_t> latest{Shape::discs, Order::raster, 0};
  static Pixels pixels;
  if (latest != std::tie(shape, order, size)) {
    latest = {shape, order, size};
    pixels = pixels_of(shape, order, size);
  }
  return pixels;
}

void measure(benchmark::State& state, const Subject& subject, Shape shape, Order order,
             std::size_t size) {
  if (!is_proven(subject, shape, order)) {
    state.SkipWithError("the answer is wrong");
    return;
  }
  time_calls(state, subject.call, latest_pixels(shape, order, size));
}

bool equal_bits(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

bool on_pixel_sets(const Subject& subject) {
  for (const Shape shape : subject.shapes) {
    for (const Order order : subject.orders) {
      for (const std::size_t size : subject.sizes) {
        const std::string name =
            subject.name + '/' + name_of(shape) + '/' + name_of(order) + '/' + std::to_string(size);
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
          measure(state, subject, shape, order, size);
        });
      }
    }
  }
  return true;
}

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!equal_bits(a[i], b[i])) return false;
  }
  return true;
}

bool same_bits(const std::vector<Group_of_arrays>& a, const std::vector<std::vector<double>>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t k = 0; k < a.size(); ++k) {
    if (!same_bits(a[k].array(), b[k])) return false;
  }
  return true;
}

}  // namespace chart_trace_bench
