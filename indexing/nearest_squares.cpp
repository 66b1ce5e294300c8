#include "indexing/nearest_squares.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "indexing/bits.hpp"
#include "indexing/near_pixels.hpp"
#include "indexing/near_points.hpp"
#include "indexing/radix_sort.hpp"
#include "indexing/squared_distance.hpp"

namespace chart_trace {
namespace {

// Fewer points than this are sorted at once; of more, some are looked at first.
constexpr std::size_t sampled_from = 500;
// So many squares are sorted faster digit by digit.
constexpr std::size_t many = 2048;

// One point in so many is looked at: a prime, so that it is in step with few pictures.
std::size_t sample_stride(std::size_t count) { return count < 16384 ? 13 : 61; }

class Point_squares {
 public:
  Point_squares(const std::vector<double>& x, const std::vector<double>& y)
      : x_(x.data()), y_(y.data()), x_origin_(x[0]), y_origin_(y[0]) {}

  double operator[](std::size_t i) const {
    return square_between(x_origin_, y_origin_, x_[i], y_[i]);
  }

  // Bit k for square first + k, of the next `length`, at most 64: whether it is at most `bound`.
  std::uint64_t up_to(double bound, std::size_t first, std::size_t length) const {
    return near_points(x_ + first, y_ + first, length, x_origin_, y_origin_, bound);
  }

 private:
  const double* x_;
  const double* y_;
  double x_origin_;
  double y_origin_;
};

// The same of pixels.
class Pixel_squares {
 public:
  explicit Pixel_squares(const Packed_pixels& pixels)
      : pixels_(pixels.data()), origin_(pixels[0]) {}

  std::uint32_t operator[](std::size_t i) const {
    return static_cast<std::uint32_t>(square_between(origin_, pixels_[i]));
  }

  std::uint64_t up_to(double bound, std::size_t first, std::size_t length) const {
    constexpr double largest = std::numeric_limits<std::int32_t>::max();
    const Pixel_disc disc{origin_, static_cast<std::int32_t>(std::min(bound, largest))};
    return near_pixels(pixels_ + first, length, disc);
  }

 private:
  const Packed_pixel* pixels_;
  Packed_pixel origin_;
};

// A square that probably at least `taken` of the squares, and not many more, do not exceed: four
// standard deviations above the share in question of a sample.
template <class Squares>
double probable_bound(Squares squares, std::size_t count, std::size_t taken) {
  constexpr double everything = std::numeric_limits<double>::infinity();
  if (count < sampled_from) return everything;
  std::vector<double> sample;
  for (std::size_t i = 1; i < count; i += sample_stride(count)) {
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

template <class Squares>
auto squares_up_to(double bound, Squares squares, std::size_t count) {
  std::vector<decltype(squares[0])> found;
  for (std::size_t first = 1; first < count; first += 64) {
    std::uint64_t near = squares.up_to(bound, first, std::min<std::size_t>(64, count - first));
    for (; near != 0; near &= near - 1) {
      found.push_back(squares[first + static_cast<std::size_t>(lowest_bit(near))]);
    }
  }
  return found;
}

std::uint64_t digits_of(double square) { return bits_of(square); }
std::uint32_t digits_of(std::uint32_t square) { return square; }

// Few squares are cut to the smallest before they are sorted. Many, which a sample has cut already,
// are sorted digit by digit: the bits of doubles that are not negative are ordered as they are.
template <class Square>
void sort_smallest(std::vector<Square>& squares, std::size_t taken) {
  if (squares.size() >= many) {
    radix_sort(squares, [](Square square) { return digits_of(square); });
    return;
  }
  const auto end = squares.begin() + static_cast<std::ptrdiff_t>(std::min(taken, squares.size()));
  std::nth_element(squares.begin(), end, squares.end());
  std::sort(squares.begin(), end);
}

template <class Squares>
std::vector<double> nearest_of(Squares squares, std::size_t count, std::size_t taken) {
  auto nearest = squares_up_to(probable_bound(squares, count, taken), squares, count);
  if (nearest.size() < taken) {
    nearest = squares_up_to(std::numeric_limits<double>::infinity(), squares, count);
  }
  sort_smallest(nearest, taken);
  nearest.resize(std::min(taken, nearest.size()));
  std::vector<double> sorted(nearest.begin(), nearest.end());
  sorted.resize(taken, std::numeric_limits<double>::quiet_NaN());
  return sorted;
}

}  // namespace

std::vector<double> nearest_squares(const std::vector<double>& x, const std::vector<double>& y,
                                    std::size_t count, std::size_t taken) {
  return nearest_of(Point_squares(x, y), count, taken);
}

std::vector<double> nearest_squares(const Packed_pixels& pixels, std::size_t count,
                                    std::size_t taken) {
  return nearest_of(Pixel_squares(pixels), count, taken);
}

}  // namespace chart_trace
