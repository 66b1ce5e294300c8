#include "indexing/pixel_map.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "indexing/bits.hpp"
#include "indexing/range.hpp"
#include "indexing/runs.hpp"

namespace chart_trace {
namespace {

// Whether a few values, evenly spread, are in rising order: other orders are told by them at once.
bool seem_sorted(const std::vector<double>& values) {
  constexpr std::size_t samples = 64;
  double before = values.front();
  for (std::size_t k = 1; k <= samples; ++k) {
    const double value = values[(values.size() - 1) * k / samples];
    if (value < before) return false;
    before = value;
  }
  return true;
}

// Whether whole steps from `value` are exact, and few enough to be counted; not for NaN.
bool is_exact(double value) {
  return std::fabs(value) < (1 << 29) && std::floor(value * 1024) == value * 1024;
}

bool is_negative_zero(double value) { return value == 0.0 && std::signbit(value); }

// Of the points of a run, those that lie at zero: a run compares equal across the sign of a zero.
bool has_negative_zero(const std::vector<double>& columns, const std::vector<double>& rows,
                       std::size_t first, std::size_t last) {
  const double column = columns[first];
  if (column <= 0.0 && column + static_cast<double>(last - first) > 0.0) {
    const std::size_t at_zero = first + static_cast<std::size_t>(-column);
    if (is_negative_zero(columns[at_zero])) return true;
  }
  if (rows[first] != 0.0) return false;
  const double* const row = rows.data();
  return std::any_of(row + first, row + last, is_negative_zero);
}

}  // namespace

// An empty map for pixels within these bounds; nothing when it would have more than `most_places`.
// Small pictures may be as sparse as they like.
std::optional<Pixel_map> Pixel_map::framing(double left, double right, double top, double bottom,
                                            std::uint64_t most_places) {
  if (!is_exact(left) || !is_exact(right) || !is_exact(top) || !is_exact(bottom)) return {};
  const auto width = static_cast<std::uint64_t>(right - left) + 3;
  const auto height = static_cast<std::uint64_t>(bottom - top) + 3;
  const std::uint64_t stride = (width + word_bits - 1) / word_bits * word_bits;
  const std::uint64_t largest_place = std::numeric_limits<std::uint32_t>::max();
  if (stride * height > std::min(most_places + (1 << 20), largest_place)) return {};
  return Pixel_map(left - 1, top - 1, static_cast<std::uint32_t>(stride),
                   static_cast<std::size_t>(height));
}

std::optional<Pixel_map> Pixel_map::of_raster(const std::vector<double>& columns,
                                              const std::vector<double>& rows) {
  if (columns.empty() || rows.back() < rows.front() || !seem_sorted(rows)) return {};
  const Range range = range_of(columns);
  std::optional<Pixel_map> map =
      framing(range.low, range.high, rows.front(), rows.back(), 256 * columns.size());
  if (!map || !map->paint(columns, rows)) return {};
  return map;
}

std::optional<Pixel_map> Pixel_map::of_any_order(const std::vector<double>& columns,
                                                 const std::vector<double>& rows,
                                                 std::vector<std::uint32_t>& places) {
  if (columns.empty()) return {};
  const Range across = range_of(columns);
  const Range down = range_of(rows);
  std::optional<Pixel_map> map =
      framing(across.low, across.high, down.low, down.high, 128 * columns.size());
  if (!map || !map->paint_each(columns, rows, places)) return {};
  return map;
}

// Whether the points are a clean picture, which is then on the map. Points of one run are exactly
// one apart, so only its first is looked at closely; the bounds of the columns hold for all points.
bool Pixel_map::paint(const std::vector<double>& columns, const std::vector<double>& rows) {
  const double left = left_;
  const double top = top_;
  const double bottom = rows.back();
  const std::int64_t stride = stride_;
  std::int64_t next = 0;  // the first place behind the last run
  bool is_clean = true;
  const auto paint_points = [&](std::size_t first, std::size_t last) {
    const double column = columns[first];
    const double row = rows[first];
    is_clean = is_clean && column > left && row > top && row <= bottom;  // neither is NaN
    if (!is_clean) return;
    const auto right_of = static_cast<std::int32_t>(column - left);
    const auto below = static_cast<std::int32_t>(row - top);
    const std::int64_t place = below * stride + right_of;
    is_clean = left + right_of == column && top + below == row && place >= next &&
               !has_negative_zero(columns, rows, first, last);
    if (!is_clean) return;
    next = place + static_cast<std::int64_t>(last - first);
    paint_run(static_cast<std::uint32_t>(place), last - first);
  };
  for_each_run(columns.data(), rows.data(), columns.size(), 1.0, paint_points);
  return is_clean;
}

// The same for points in any order. Those that have been seen are on the map, so that a pixel that
// comes twice is found there.
bool Pixel_map::paint_each(const std::vector<double>& columns, const std::vector<double>& rows,
                           std::vector<std::uint32_t>& places) {
  places.reserve(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!(columns[i] > left_ && rows[i] > top_)) return false;  // a NaN
    const auto right_of = static_cast<std::int32_t>(columns[i] - left_);
    const auto below = static_cast<std::int32_t>(rows[i] - top_);
    if (left_ + right_of != columns[i] || top_ + below != rows[i]) return false;
    if (is_negative_zero(columns[i]) || is_negative_zero(rows[i])) return false;
    const std::uint32_t place =
        static_cast<std::uint32_t>(below) * stride_ + static_cast<std::uint32_t>(right_of);
    if (is_free(place)) return false;
    flip(place);
    places.push_back(place);
  }
  return true;
}

void Pixel_map::paint_run(std::uint32_t place, std::size_t length) {
  constexpr Word full = ~Word{0};
  Word* word = &words_[place / word_bits];
  const std::uint32_t shift = place % word_bits;
  if (shift + length <= word_bits) {
    *word |= full >> (word_bits - length) << shift;
    return;
  }
  *word++ |= full << shift;
  length -= word_bits - shift;
  for (; length > word_bits; length -= word_bits) *word++ = full;
  *word |= full >> (word_bits - length);
}

Pixel_map::Word Pixel_map::around_in_two_words(std::uint32_t place) const {
  Word around = 0;
  for (std::uint32_t row = 0; row < 3; ++row) {
    const std::uint32_t corner = place + row * stride_ - stride_ - 1;
    const Word* const word = &words_[corner / word_bits];
    const std::uint32_t shift = corner % word_bits;
    const Word three = (word[0] >> shift | word[1] << (word_bits - shift)) & 7;
    around |= three << (3 * row);
  }
  return around;
}

bool Pixel_map::take_first(std::size_t& from, std::uint32_t& place) {
  while (from < words_.size() && words_[from] == 0) ++from;
  if (from == words_.size()) return false;
  place = static_cast<std::uint32_t>(from) * word_bits +
          static_cast<std::uint32_t>(lowest_bit(words_[from]));
  words_[from] &= words_[from] - 1;
  return true;
}

}  // namespace chart_trace
