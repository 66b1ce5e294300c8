#include "indexing/pixel_map.hpp"

#include <algorithm>
#include <cmath>

#include "indexing/bits.hpp"
#include "indexing/range.hpp"
#include "indexing/runs.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {
namespace {

using Word = Pixel_map::Word;
constexpr std::uint32_t word_bits = Pixel_map::word_bits;
constexpr std::uint64_t longest = 65535;

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

// Counts the steps from the origin of a map to points, and sees whether all of these are pixels,
// that is, whether rebuilding them from their steps loses nothing. Those to a point that is no
// pixel are any two numbers of 32 bits.
class Step_counter {
 public:
  struct Steps {
    std::int64_t right, down;
  };

#if defined(__SSE2__)
  // Every 64-bit x86 has these: both coordinates at once, half the instructions.
  Step_counter(double left, double top) : origin_(_mm_set_pd(top, left)) {}

  Steps count(double column, double row) {
    const __m128d point = _mm_set_pd(row, column);
    const __m128i steps = _mm_cvttpd_epi32(_mm_sub_pd(point, origin_));
    const __m128d rebuilt = _mm_add_pd(origin_, _mm_cvtepi32_pd(steps));
    lost_ = _mm_or_pd(lost_, _mm_xor_pd(rebuilt, point));
    return {_mm_cvtsi128_si32(steps), _mm_cvtsi128_si32(_mm_shuffle_epi32(steps, 1))};
  }

  bool lost_nothing() const {
    const __m128i is_zero = _mm_cmpeq_epi8(_mm_castpd_si128(lost_), _mm_setzero_si128());
    return _mm_movemask_epi8(is_zero) == 0xFFFF;
  }

 private:
  __m128d origin_;
  __m128d lost_ = _mm_setzero_pd();
#else
  Step_counter(double left, double top) : left_(left), top_(top) {}

  Steps count(double column, double row) {
    const std::int32_t right = steps_between(left_, column);
    const std::int32_t down = steps_between(top_, row);
    lost_ |= loss_of(column, left_, right) | loss_of(row, top_, down);
    return {right, down};
  }

  bool lost_nothing() const { return lost_ == 0; }

 private:
  // From beyond any map, and from NaN, -1: rebuilding the value from it shows the difference.
  static std::int32_t steps_between(double origin, double value) {
    const double away = value - origin;
    return away >= 0.0 && away < 2147483648.0 ? static_cast<std::int32_t>(away) : -1;
  }

  double left_, top_;
  std::uint64_t lost_ = 0;
#endif
};

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

// So many words are looked at together: of a picture of lines most hold nothing.
constexpr std::size_t at_once = 4;
bool are_empty(const Word* words) { return (words[0] | words[1] | words[2] | words[3]) == 0; }

}  // namespace

// An empty map for pixels within these bounds; nothing when it would have more than `most_places`.
// Small pictures may be as sparse as they like.
std::optional<Pixel_map> Pixel_map::framing(double left, double right, double top, double bottom,
                                            std::uint64_t most_places) {
  if (!is_exact(left) || !is_exact(right) || !is_exact(top) || !is_exact(bottom)) return {};
  const auto width = static_cast<std::uint64_t>(right - left) + 3;
  const auto height = static_cast<std::uint64_t>(bottom - top) + 3;
  const std::uint64_t stride = (width + word_bits - 1) / word_bits * word_bits;
  if (stride > longest || height > longest || stride * height > most_places + (1 << 20)) return {};
  return Pixel_map(left - 1, top - 1, static_cast<std::uint32_t>(stride),
                   static_cast<std::size_t>(height));
}

std::optional<Pixel_map> Pixel_map::of_raster(const std::vector<double>& columns,
                                              const std::vector<double>& rows) {
  if (columns.empty() || rows.back() < rows.front() || !seem_sorted(rows)) return {};
  const Found_runs runs(columns.data(), rows.data(), columns.size(), 1.0);
  const Range range = runs.range_of_x();
  std::optional<Pixel_map> map =
      framing(range.low, range.high, rows.front(), rows.back(), 256 * columns.size());
  if (!map || !map->paint(columns, rows, runs)) return {};
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
// that is no pixel is painted wherever its steps lead to on the map, and found out at the end.
bool Pixel_map::paint(const std::vector<double>& columns, const std::vector<double>& rows,
                      const Found_runs& runs) {
  const double* const column = columns.data();
  const double* const row = rows.data();
  const std::int64_t stride = stride_;
  const auto end = static_cast<std::int64_t>(word_bits * (words_.size() - 1));
  Word* const words = words_.data();
  Step_counter steps_to(left_, top_);
  std::int64_t next = 0;  // the first place behind the last run
  bool is_clean = true;
  std::size_t count = 0;
  runs.for_each([&](std::size_t first, std::size_t last) {
    ++count;
    const auto [right, down] = steps_to.count(column[first], row[first]);
    const std::int64_t place = down * stride + right;
    const auto length = static_cast<std::int64_t>(last - first);
    if (place < next || place + length > end) {
      is_clean = false;
      return;
    }
    next = place + length;
    paint_run(words, static_cast<std::uint32_t>(place), last - first);
  });
  runs_ = count;
  return is_clean && steps_to.lost_nothing() && runs_lose_nothing(columns, rows);
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
  Step_counter steps_to(left_, top_);
  places.resize(columns.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto [right, down] = steps_to.count(columns[i], rows[i]);
    places[i] = static_cast<std::uint32_t>(down * stride_ + right);
  }
  return steps_to.lost_nothing();
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

bool Pixel_map::holds_packed() const {
  const std::size_t rows = (words_.size() - 1) / words_in_row();
  const double right = left_ + stride_;
  const double bottom = top_ + static_cast<double>(rows);
  return left_ >= -1.0 && top_ >= -1.0 && right <= 65536.0 && bottom <= 65536.0 &&
         left_ == std::floor(left_) && top_ == std::floor(top_);
}

std::size_t Pixel_map::first_word(std::size_t from) const {
  const Word* const words = words_.data();
  const std::size_t end = words_.size();
  while (end - from >= at_once && are_empty(words + from)) from += at_once;
  while (from < end && words[from] == 0) ++from;
  return from;
}

std::size_t Pixel_map::last_word(std::size_t from) const {
  const Word* const words = words_.data();
  while (from >= at_once && are_empty(words + from - at_once + 1)) from -= at_once;
  while (from > 0 && words[from] == 0) --from;
  return from;
}

bool Pixel_map::take_first(std::size_t& from, std::uint32_t& place) {
  from = first_word(from);
  if (from == words_.size()) return false;
  place = static_cast<std::uint32_t>(from) * word_bits + first_of(words_[from]);
  words_[from] &= words_[from] - 1;
  return true;
}

}  // namespace chart_trace
