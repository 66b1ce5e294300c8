#include "indexing/nearest_squares.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "indexing/radix_sort.hpp"

namespace chart_trace {
namespace {

// Fewer points than this are sorted at once; of more, one in `sample_stride` is looked at first: a
// prime, so that it is in step with few pictures.
constexpr std::size_t sampled_from = 2048;
constexpr std::size_t sample_stride = 61;

class Squares {
 public:
  Squares(const std::vector<double>& x, const std::vector<double>& y)
      : x_(x.data()), y_(y.data()), x_origin_(x[0]), y_origin_(y[0]) {}

  double operator[](std::size_t i) const {
    const double dy = y_origin_ - y_[i];
    const double dx = x_origin_ - x_[i];
    return dy * dy + dx * dx;
  }

 private:
  const double* x_;
  const double* y_;
  double x_origin_;
  double y_origin_;
};

// A square that probably at least `taken` of the squares, and not many more, do not exceed: four
// standard deviations above the share in question of a sample.
double probable_bound(Squares squares, std::size_t count, std::size_t taken) {
  constexpr double everything = std::numeric_limits<double>::infinity();
  if (count < sampled_from) return everything;
  std::vector<double> sample;
  for (std::size_t i = 1; i < count; i += sample_stride) {
    if (squares[i] <= everything) sample.push_back(squares[i]);  // no NaN
  }
  const double share =
      static_cast<double>(taken) * static_cast<double>(sample.size()) / static_cast<double>(count);
  const auto rank = static_cast<std::size_t>(share + 4.0 * std::sqrt(share) + 1.0);
  if (rank >= sample.size()) return everything;
  const auto ranked = sample.begin() + static_cast<std::ptrdiff_t>(rank);
  std::nth_element(sample.begin(), ranked, sample.end());
  return *ranked;
}

std::vector<double> squares_up_to(double bound, Squares squares, std::size_t count) {
  std::vector<double> found;
  for (std::size_t i = 1; i < count; ++i) {
    const double square = squares[i];
    if (square <= bound) found.push_back(square);
  }
  return found;
}

// Few squares are cut to the smallest before they are sorted. Many, which a sample has cut already,
// are sorted digit by digit: the bits of doubles that are not negative are ordered as they are.
void sort_smallest(std::vector<double>& squares, std::size_t taken) {
  if (squares.size() >= sampled_from) {
    radix_sort(squares, [](double square) {
      std::uint64_t bits = 0;
      std::memcpy(&bits, &square, sizeof bits);
      return bits;
    });
    return;
  }
  const auto end = squares.begin() + static_cast<std::ptrdiff_t>(std::min(taken, squares.size()));
  std::nth_element(squares.begin(), end, squares.end());
  std::sort(squares.begin(), end);
}

}  // namespace

std::vector<double> nearest_squares(const std::vector<double>& x, const std::vector<double>& y,
                                    std::size_t count, std::size_t taken) {
  const Squares squares(x, y);
  std::vector<double> nearest =
      squares_up_to(probable_bound(squares, count, taken), squares, count);
  if (nearest.size() < taken) {
    nearest = squares_up_to(std::numeric_limits<double>::infinity(), squares, count);
  }
  sort_smallest(nearest, taken);
  nearest.resize(taken, std::numeric_limits<double>::quiet_NaN());
  return nearest;
}

}  // namespace chart_trace
