#include "indexing/pixel_tiles.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "indexing/bits.hpp"
#include "indexing/runs.hpp"

namespace chart_trace {
namespace {

constexpr std::uint64_t all_bits = ~std::uint64_t{0};

// Doubles of this size are one apart: adding and subtracting it rounds to a whole number. An
// infinity passes for one.
bool is_whole(double value) {
  constexpr double rounder = 6755399441055744.0;
  return (value + rounder) - rounder == value;
}

// Whether pixels that follow each other lie below each other more often than side by side, as far
// as the first few tell.
bool comes_by_columns(const std::vector<double>& x, const std::vector<double>& y) {
  const std::size_t count = std::min<std::size_t>(x.size(), 256);
  std::ptrdiff_t balance = 0;
  for (std::size_t i = 1; i < count; ++i) balance += (x[i] == x[i - 1]) - (y[i] == y[i - 1]);
  return balance > 0;
}

// Calls visit(tile, pixels) for one tile after the other that the pixels from `place` on lie in,
// until it returns false.
template <typename Visit>
void for_each_tile(std::uint32_t place, std::uint32_t length, Visit visit) {
  for (;;) {
    const std::uint32_t here = std::min(8 - place % 8, length);
    const Pixel_tile pixels = (Pixel_tile{1} << here) - 1;
    if (!visit(place / 64, pixels << place % 64)) return;
    length -= here;
    if (length == 0) return;
    place += 64 - place % 8;
  }
}

}  // namespace

std::optional<Pixel_tiles> Pixel_tiles::of(const std::vector<double>& x,
                                           const std::vector<double>& y, double largest_square) {
  Pixel_tiles tiles;
  tiles.is_exchanged_ = comes_by_columns(x, y);
  const std::vector<double>& columns = tiles.is_exchanged_ ? y : x;
  const std::vector<double>& rows = tiles.is_exchanged_ ? x : y;
  if (!tiles.find_runs(columns, rows) || !tiles.paint(columns, rows)) return std::nullopt;
  tiles.measure_disc(largest_square);
  return tiles;
}

// False when a point is no pixel or the picture does not fit. In a run each x is the next one less
// 1, so when the last is a whole number, all are.
bool Pixel_tiles::find_runs(const std::vector<double>& x, const std::vector<double>& y) {
  if (x.empty()) return false;
  runs_.reset(new Run[x.size()]);
  Run* next = runs_.get();
  double left = x[0];
  double right = x[0];
  double top = y[0];
  double bottom = y[0];
  bool whole = true;
  for_each_run(x.data(), y.data(), x.size(), 1.0, [&](std::size_t first, std::size_t end) {
    const double last = x[end - 1];
    whole &= is_whole(last);
    whole &= is_whole(y[first]);
    left = left < x[first] ? left : x[first];
    right = right > last ? right : last;
    top = top < y[first] ? top : y[first];
    bottom = bottom > y[first] ? bottom : y[first];
    *next++ = {static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(end - first)};
  });
  run_count_ = static_cast<std::size_t>(next - runs_.get());
  return whole && set_frame(left, right, top, bottom, static_cast<double>(x.size()));
}

bool Pixel_tiles::set_frame(double left, double right, double top, double bottom, double count) {
  constexpr double exact_limit = 9007199254740992.0;  // whole numbers have no gaps up to here
  constexpr double longest = 67108864.0;              // 2^26: two squares of it are exact
  const double width = right - left;
  const double height = bottom - top;
  const double farthest = std::max(std::max(-left, right), std::max(-top, bottom));
  const double tiles = (width / 8.0 + 1.0) * (height / 8.0 + 1.0);
  const bool is_exact = farthest * count <= exact_limit && width < longest && height < longest;
  const bool is_dense = tiles <= 2.0 * count + 64.0 && width + height <= 4.0 * count + 64.0;
  const bool has_short_places = tiles * 64.0 < 4294967296.0;
  if (!is_exact || !is_dense || !has_short_places) return false;
  frame_ = {left, top, static_cast<std::int64_t>(width) + 1, static_cast<std::int64_t>(height) + 1};
  tiles_across_ = (frame_.width + 7) / 8;
  tiles_down_ = (frame_.height + 7) / 8;
  return true;
}

// False when two points are the same pixel.
bool Pixel_tiles::paint(const std::vector<double>& x, const std::vector<double>& y) {
  tiles_.resize(static_cast<std::size_t>(tiles_across_ * tiles_down_));
  occupied_.resize(tiles_.size() / 64 + 1);
  Pixel_tile* const tiles = tiles_.data();
  std::uint64_t* const occupied = occupied_.data();
  const auto across = static_cast<std::uint32_t>(tiles_across_);
  Pixel_tile twice = 0;
  for (std::size_t k = 0; k < run_count_; ++k) {
    Run& run = runs_[k];
    const auto column =
        static_cast<std::uint32_t>(static_cast<std::int32_t>(x[run.start] - frame_.left));
    const auto row =
        static_cast<std::uint32_t>(static_cast<std::int32_t>(y[run.start] - frame_.top));
    run.start = (row / 8 * across + column / 8) * 64 + row % 8 * 8 + column % 8;
    for_each_tile(run.start, run.length, [&](std::uint32_t in, Pixel_tile pixels) {
      twice |= tiles[in] & pixels;
      tiles[in] |= pixels;
      occupied[in / 64] |= std::uint64_t{1} << in % 64;
      return true;
    });
  }
  return twice == 0;
}

void Pixel_tiles::measure_disc(double largest_square) {
  const double diagonal = static_cast<double>(frame_.width + frame_.height);
  const auto square = static_cast<std::int64_t>(std::min(largest_square, diagonal * diagonal));
  std::int64_t half_width = frame_.width - 1;
  for (std::int64_t d = 0; d < frame_.height && d * d <= square; ++d) {
    while (half_width * half_width + d * d > square) --half_width;
    half_widths_.push_back(static_cast<std::int32_t>(half_width));
  }
  reach_ = static_cast<std::int64_t>(half_widths_.size()) - 1;
  half_widths_.resize(half_widths_.size() + 8, -1);
}

std::optional<Taken_points> Pixel_tiles::take_next() {
  const Pixel_tile* const tiles = tiles_.data();
  std::int64_t tile = 0;
  Pixel_tile left = 0;
  for (; next_run_ < run_count_; ++next_run_) {
    const Run run = runs_[next_run_];
    for_each_tile(run.start, run.length, [&](std::uint32_t k, Pixel_tile pixels) {
      tile = k;
      left = tiles[k] & pixels;
      return left == 0;
    });
    if (left != 0) break;
  }
  if (left == 0) return std::nullopt;
  const std::int64_t pixel = lowest_bit(left);
  const Sums sums =
      take_disc(tile % tiles_across_ * 8 + pixel % 8, tile / tiles_across_ * 8 + pixel / 8);
  const auto count = static_cast<double>(sums.count);
  Taken_points taken{static_cast<std::int32_t>(sums.count),
                     static_cast<double>(sums.x) + count * frame_.left,
                     static_cast<double>(sums.y) + count * frame_.top};
  if (is_exchanged_) std::swap(taken.x_sum, taken.y_sum);
  return taken;
}

Pixel_tiles::Sums Pixel_tiles::take_disc(std::int64_t x, std::int64_t y) {
  const std::int64_t first = std::max<std::int64_t>(y - reach_, 0) / 8;
  const std::int64_t last = std::min(y + reach_, frame_.height - 1) / 8;
  Sums sums;
  for (std::int64_t row = first; row <= last; ++row) take_from_row(row, x, y, sums);
  return sums;
}

// Takes what the disc around (x, y) holds of one row of tiles.
void Pixel_tiles::take_from_row(std::int64_t tile_row, std::int64_t x, std::int64_t y, Sums& sums) {
  const std::int64_t above = y - tile_row * 8;  // rows from the first of the tiles to the centre
  const std::int64_t nearest = above < 0 ? -above : std::max<std::int64_t>(above - 7, 0);
  const std::int64_t farthest = std::max(std::abs(above), std::abs(above - 7));
  const std::int64_t widest = half_widths_[static_cast<std::size_t>(nearest)];
  const std::int64_t narrowest =
      farthest > reach_ ? -8 : half_widths_[static_cast<std::size_t>(farthest)];
  const std::int64_t row_begin = tile_row * tiles_across_;
  const std::int64_t first = row_begin + std::max<std::int64_t>(x - widest, 0) / 8;
  const std::int64_t last = row_begin + std::min(x + widest, frame_.width - 1) / 8;
  Pixel_tile* const tiles = tiles_.data();
  Sums row;
  for (std::int64_t word = first / 64; word <= last / 64; ++word) {
    std::uint64_t& occupied = occupied_[static_cast<std::size_t>(word)];
    std::uint64_t marks = occupied;
    if (word == first / 64) marks &= all_bits << (first % 64);
    if (word == last / 64) marks &= all_bits >> (63 - last % 64);
    for (; marks != 0; marks &= marks - 1) {
      const std::int64_t k = word * 64 + lowest_bit(marks);
      const std::int64_t column = (k - row_begin) * 8;
      const std::int64_t left = column - x;
      Pixel_tile found = tiles[k];
      if (left < -narrowest || left + 7 > narrowest) found &= disc_in_tile(left, -above);
      tiles[k] ^= found;
      if (tiles[k] == 0) occupied ^= marks & (~marks + 1);
      const Tile_sums here = sums_of(found);
      row.count += here.count;
      row.x += here.columns + here.count * column;
      row.y += here.rows;
    }
  }
  sums.count += row.count;
  sums.x += row.x;
  sums.y += row.y + row.count * tile_row * 8;
}

// The pixels of the disc in the tile whose first pixel is (dx, dy) away from the centre.
Pixel_tile Pixel_tiles::disc_in_tile(std::int64_t dx, std::int64_t dy) const {
  Pixel_tile pixels = 0;
  for (std::int64_t row = 0; row < 8; ++row) {
    const std::int64_t d = std::min(std::abs(dy + row), reach_ + 1);
    const std::int64_t half_width = half_widths_[static_cast<std::size_t>(d)];
    const std::int64_t first = std::clamp<std::int64_t>(-half_width - dx, 0, 8);
    const std::int64_t last = std::clamp<std::int64_t>(half_width - dx, -1, 7);
    const std::uint64_t from_first = 0xffU << first & 0xffU;
    const std::uint64_t to_last = 0xffU >> (7 - last);
    pixels |= (from_first & to_last) << (8 * row);
  }
  return pixels;
}

}  // namespace chart_trace
