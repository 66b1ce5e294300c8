// Seeded inputs with names for the property tests: pictures of discs, rings, lines, staircases,
// bars and the like, in raster, column-major, shuffled and reversed order, then bent in the ways
// that charts and callers bend them: fractional steps, duplicates, points exactly 1.5 steps away,
// NaN, infinities, -0.0, coordinates beyond 2^24 and 2^53, far outliers.
//
// A case is a function of its seed and its size alone, on every platform: nothing here uses a
// distribution of the standard library, whose values differ between libraries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace chart_trace_test {

// Integers and picks from a 64-bit Mersenne twister, whose output is fixed by the C++ standard.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::uint64_t below(std::uint64_t limit) { return engine_() % limit; }  // limit is 1 or more
  std::int64_t between(std::int64_t low, std::int64_t high);              // both ends included
  bool one_in(std::uint64_t n) { return below(n) == 0; }
  double fraction();  // a multiple of 2^-53 in [0, 1)

  template <class Value>
  const Value& pick(const std::vector<Value>& values) {
    return values[static_cast<std::size_t>(below(values.size()))];
  }

 private:
  std::mt19937_64 engine_;
};

// One input of `trace` without the mode. `shape`, `order` and `twists` say how it was made.
struct Case {
  std::uint64_t seed = 0;
  std::string shape;
  std::string order;
  std::string twists;
  std::vector<double> x;
  std::vector<double> y;
  double step = 1.0;
  double fraction = 0.05;

  // Everything needed to make the case again; the points too when there are few.
  std::string text() const;
};

// The case of this seed with exactly `size` points.
Case make_case(std::uint64_t seed, std::size_t size);

// The names of all shapes; `make_case` picks among them.
std::vector<std::string> shape_names();

// `width` when compartments of that width number at most `limit` over `x`, otherwise a width with
// which they do: a border moves by repeated addition, so a width far smaller than the range of x
// would never be done. Widths that are zero, negative, NaN or too small to move the first border
// are kept, since the run stops there.
double bounded_width(const std::vector<double>& x, double width, std::size_t limit);

}  // namespace chart_trace_test
