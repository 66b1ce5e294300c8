#include "grouping/vertical_compartments.hpp"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "grouping/compartment_index.hpp"
#include "indexing/prefetch.hpp"

namespace {

using chart_trace::Compartment_index;
using chart_trace::Packed_pixel;
using chart_trace::Packed_pixels;
using Numbers = std::vector<std::uint32_t>;

// Moves points to where they belong: sorted by compartment, those of one compartment in input
// order. Calls move(i, place) for each of `size` points, in input order; compartment_of(i) is one
// of `count`. Returns where the compartments end.
template <class Compartment_of, class Move>
Numbers sort(std::size_t size, std::size_t count, Compartment_of compartment_of, Move move) {
  Numbers places(count);
  for (std::size_t i = 0; i < size; ++i) ++places[compartment_of(i)];
  std::uint32_t place = 0;
  for (std::uint32_t& points : places) place += std::exchange(points, place);
  std::size_t i = 0;
  // Four places are looked up before anything is moved there. A processor that does not know where
  // a store goes may keep the next look-up waiting for it: 3 ns a point instead of 1.
  for (; i + 4 <= size; i += 4) {
    const std::uint32_t first = places[compartment_of(i)]++;
    const std::uint32_t second = places[compartment_of(i + 1)]++;
    const std::uint32_t third = places[compartment_of(i + 2)]++;
    const std::uint32_t fourth = places[compartment_of(i + 3)]++;
    move(i, first);
    move(i + 1, second);
    move(i + 2, third);
    move(i + 3, fourth);
  }
  for (; i < size; ++i) move(i, places[compartment_of(i)]++);
  return places;
}

// Sorts pixels, written to `x` and `y`. Whatever the sort, points that come row by row or in any
// order are stored far from the one before them, each time in a line of memory that has left the
// nearest cache. As pixels take a quarter of the memory of points, that takes half the time for
// 100,000 of them, and a sixth for a million. The next line of each compartment is asked for ahead
// of time: where even pixels have left the cache, a quarter of the sort is waiting for it.
Numbers sort_pixels(const Compartment_index& index, std::size_t count, std::vector<double>& x,
                    std::vector<double>& y) {
  constexpr std::size_t ahead = 8;
  const Packed_pixels& pixels = *index.pixels();
  Packed_pixels sorted(pixels.size() + ahead);
  Packed_pixel* const to = sorted.data();
  Numbers ends = sort(
      pixels.size(), count, [&](std::size_t i) { return index.compartment_of(pixels[i]); },
      [&](std::size_t i, std::uint32_t place) {
        chart_trace::prefetch(to + place + ahead);
        to[place] = pixels[i];
      });
  sorted.unpack(x, y);
  return ends;
}

// Sorts the points of `x` and `y`, which are those of the index.
Numbers sort_points(const Compartment_index& index, std::size_t count, std::vector<double>& x,
                    std::vector<double>& y) {
  Numbers compartments(x.size());
  index.for_each_point([next = compartments.data()](std::size_t compartment,
                                                    const Compartment_index::Point&) mutable {
    *next++ = static_cast<std::uint32_t>(compartment);
  });
  std::vector<double> sorted_x(x.size());
  std::vector<double> sorted_y(x.size());
  Numbers ends = sort(
      x.size(), count, [&](std::size_t i) { return compartments[i]; },
      [&](std::size_t i, std::uint32_t place) {
        sorted_x[place] = x[i];
        sorted_y[place] = y[i];
      });
  x.swap(sorted_x);
  y.swap(sorted_y);
  return ends;
}

}  // namespace

Vertical_compartments::Vertical_compartments(std::vector<double> x, std::vector<double> y,
                                             double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)), compartment_width(compartment_width) {
  divide();
}

// A counting sort: the points of every compartment are counted, then moved there in input order.
void Vertical_compartments::divide() {
  const Compartment_index index(x_points, y_points, compartment_width,
                                Compartment_index::Empty::each);
  // The last one is for the points that no compartment takes.
  const std::size_t count = index.count() + 1;
  Numbers ends = index.pixels() ? sort_pixels(index, count, x_points, y_points)
                                : sort_points(index, count, x_points, y_points);
  std::vector<double> x = std::move(x_points);
  std::vector<double> y = std::move(y_points);
  ends.pop_back();
  const auto taken = static_cast<std::ptrdiff_t>(ends.empty() ? 0 : ends.back());
  x_points.assign(x.begin() + taken, x.end());
  y_points.assign(y.begin() + taken, y.end());
  groups_ = {std::move(x), std::move(y), std::move(ends)};
}
