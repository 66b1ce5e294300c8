#include "grouping/pixels_by_compartment.hpp"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "grouping/compartment_borders.hpp"

namespace chart_trace {
namespace {

constexpr std::uint16_t largest = std::numeric_limits<std::uint16_t>::max();

// Turns sizes into the places where the parts of these sizes begin, one behind the other.
void turn_into_places(std::vector<std::uint32_t>& sizes) {
  std::uint32_t place = 0;
  for (std::uint32_t& size : sizes) place += std::exchange(size, place);
}

std::uint64_t bits_of(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// Whether `value` is a whole number from 0 to 65535, which is then `number`. -0.0 is none: its sign
// would be lost.
bool is_small_number(double value, std::uint16_t& number) {
  // Numbers from 0.0 on are in the order of their bits; whatever has a sign and NaN come behind.
  if (bits_of(value) > bits_of(largest)) return false;
  number = static_cast<std::uint16_t>(static_cast<int>(value));
  return number == value;
}

// How the points of one picture lie in columns of pixels.
struct Columns {
  std::vector<std::uint16_t> of_point;
  std::vector<std::uint32_t> sizes;  // by column
  std::size_t first = 0;             // the leftmost and the rightmost that hold a point
  std::size_t last = 0;
};

std::optional<Columns> columns_of(const std::vector<double>& x) {
  Columns columns;
  columns.of_point.resize(x.size());
  unsigned bits = 0;  // all that are set in any column, so no column is larger
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (!is_small_number(x[i], columns.of_point[i])) return std::nullopt;
    bits |= columns.of_point[i];
  }
  if (bits / 4 > x.size()) return std::nullopt;
  columns.sizes.resize(std::size_t{bits} + 1);
  for (const std::uint16_t column : columns.of_point) ++columns.sizes[column];
  columns.last = bits;
  while (columns.sizes[columns.first] == 0) ++columns.first;
  while (columns.sizes[columns.last] == 0) --columns.last;
  return columns;
}

// Whether most points have the x of the one before them, judged by the first few.
bool come_column_by_column(const std::vector<double>& x) {
  const std::size_t sample = std::min<std::size_t>(x.size(), 64);
  std::size_t same = 0;
  for (std::size_t i = 1; i < sample; ++i) {
    if (x[i] == x[i - 1]) ++same;
  }
  return same * 2 > sample;
}

}  // namespace

std::optional<Sorted_pixels> pixels_by_compartment(const std::vector<double>& x,
                                                   const std::vector<double>& y, double width) {
  // Places are kept in 32 bits, so that the tables of a wide picture stay in the nearest cache.
  const bool fit = x.size() <= std::numeric_limits<std::uint32_t>::max();
  if (x.empty() || !fit || come_column_by_column(x)) return std::nullopt;
  const std::optional<Columns> columns = columns_of(x);
  if (!columns) return std::nullopt;
  const auto last = static_cast<double>(columns->last);
  const Compartment_borders borders(static_cast<double>(columns->first), last, width, false);
  if (borders.compartment_at(last) == borders.count()) return std::nullopt;

  std::vector<std::uint32_t> compartments(columns->sizes.size());  // by column
  std::vector<std::uint32_t> places(borders.count());
  for (std::size_t column = columns->first; column <= columns->last; ++column) {
    compartments[column] =
        static_cast<std::uint32_t>(borders.compartment_at(static_cast<double>(column)));
    places[compartments[column]] += columns->sizes[column];
  }
  turn_into_places(places);

  Sorted_pixels sorted;
  sorted.pixels.resize(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    const std::uint16_t column = columns->of_point[i];
    std::uint16_t row = 0;
    if (!is_small_number(y[i], row)) return std::nullopt;
    sorted.pixels[places[compartments[column]]++] = {column, row};
  }
  sorted.ends = std::move(places);
  return sorted;
}

}  // namespace chart_trace
