#include "indexing/pixel_map.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "indexing/bits.hpp"
#include "indexing/range.hpp"
#include "indexing/runs.hpp"

namespace chart_trace {
namespace {

using Word = Pixel_map::Word;
constexpr std::uint32_t word_bits = Pixel_map::word_bits;

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

// The bits in which a value differs from the one rebuilt from its steps: some when it lies between
// two steps or is -0.0.
std::uint64_t loss_of(double value, double origin, std::int32_t steps) {
  return bits_of(origin + steps) ^ bits_of(value);
}

bool lose_nothing(const double* begin, const double* end, double origin) {
  return std::all_of(begin, end, [&](double value) {
    return loss_of(value, origin, static_cast<std::int32_t>(value - origin)) == 0;
  });
}

inline void paint_run(Word* words, std::uint32_t place, std::size_t length) {
  constexpr Word full = ~Word{0};
  Word* word = words + place / word_bits;
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

std::optional<Pixel_map> Pixel_map::blank(const std::vector<double>& columns,
                                          const std::vector<double>& rows,
                                          std::vector<std::uint32_t>& places) {
  if (columns.empty()) return {};
  const Range across = range_of(columns);
  const Range down = range_of(rows);
  std::optional<Pixel_map> map =
      framing(across.low, across.high, down.low, down.high, 128 * columns.size());
  if (!map || !map->place_each(columns, rows, places)) return {};
  return map;
}

// Whether the points are a clean picture, which is then on the map. Only the first point of a run
// is looked at here, with as few questions as possible: there may be as many runs as points. One
// that is no pixel is painted where it is cut off, and found out at the end.
bool Pixel_map::paint(const std::vector<double>& columns, const std::vector<double>& rows) {
  const double* const column = columns.data();
  const double* const row = rows.data();
  const double left = left_;
  const double top = top_;
  const double bottom = rows.back();
  const std::int64_t stride = stride_;
  Word* const words = words_.data();
  std::int64_t next = 0;  // the first place behind the last run
  std::uint64_t lost = 0;
  bool is_clean = true;
  const auto paint_points = [&](std::size_t first, std::size_t last) {
    // The bounds of the columns hold for all points but a NaN.
    if (!(column[first] > left && row[first] > top && row[first] <= bottom)) {
      is_clean = false;
      return;
    }
    const auto right_of = static_cast<std::int32_t>(column[first] - left);
    const auto below = static_cast<std::int32_t>(row[first] - top);
    lost |= loss_of(column[first], left, right_of) | loss_of(row[first], top, below);
    const std::int64_t place = below * stride + right_of;
    is_clean &= place >= next;
    next = place + static_cast<std::int64_t>(last - first);
    paint_run(words, static_cast<std::uint32_t>(place), last - first);
  };
  for_each_run(column, row, columns.size(), 1.0, paint_points);
  return is_clean && lost == 0 && runs_lose_nothing(columns, rows);
}

// What the first point of a run does not tell about the others. Their columns are exactly one
// apart, unless they are left of 0: there x - 1 is the number farther from 0, and may be rounded.
// Their rows are the same but for the sign of a zero; rows are in rising order by now.
bool Pixel_map::runs_lose_nothing(const std::vector<double>& columns,
                                  const std::vector<double>& rows) const {
  const double* const column = columns.data();
  if (left_ + 1 < 0.0 && !lose_nothing(column, column + columns.size(), left_)) return false;
  const auto zeros = std::equal_range(rows.data(), rows.data() + rows.size(), 0.0);
  return lose_nothing(zeros.first, zeros.second, top_);
}

// Whether all points are pixels, whose places are then known.
bool Pixel_map::place_each(const std::vector<double>& columns, const std::vector<double>& rows,
                           std::vector<std::uint32_t>& places) const {
  places.reserve(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!(columns[i] > left_ && rows[i] > top_)) return false;  // a NaN
    const auto right_of = static_cast<std::int32_t>(columns[i] - left_);
    const auto below = static_cast<std::int32_t>(rows[i] - top_);
    if ((loss_of(columns[i], left_, right_of) | loss_of(rows[i], top_, below)) != 0) return false;
    places.push_back(static_cast<std::uint32_t>(below) * stride_ +
                     static_cast<std::uint32_t>(right_of));
  }
  return true;
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
