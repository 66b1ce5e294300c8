#include "indexing/pixel_cells.hpp"

#include <algorithm>
#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {
namespace {

// So many pixels to a cell, on average: enough that sorting them is quick, and few enough that
// discs look at little beyond their edge.
constexpr double in_a_cell = 48.0;
constexpr std::int32_t smallest_shift = 3;
// No picture is wider or higher. What lies nowhere is farther from every pixel than any other
// pixel, but not so far that a square leaves 32 bits.
constexpr std::int32_t longest = 16384;
constexpr std::int32_t beyond = 2 * longest - 1;
constexpr double largest_of_squares = 2.0 * (longest - 1) * (longest - 1);
// So many places are taken from at once.
constexpr std::uint32_t most_at_once = 1U << 18;

std::int32_t root_of(std::int32_t square) {
  return static_cast<std::int32_t>(std::sqrt(static_cast<double>(square)));
}

}  // namespace

std::optional<Pixel_cells> Pixel_cells::of(const Packed_set& set, double largest_square) {
  if (set.pixels.size() == 0) return std::nullopt;
  Pixel_cells cells;
  cells.frame_ = set.frame;
  if (!cells.set_cells(set.pixels.size(), largest_square)) return std::nullopt;
  cells.number_cells(set.pixels);
  cells.lay_out_cells();
  cells.deal_out(set.pixels);
  return cells;
}

// False when the picture does not fit.
bool Pixel_cells::set_cells(std::size_t count, double largest_square) {
  const std::int32_t width = frame_.right - frame_.left + 1;
  const std::int32_t height = frame_.bottom - frame_.top + 1;
  if (width > longest || height > longest) return false;
  largest_square_ = static_cast<std::int32_t>(std::min(largest_square, largest_of_squares));
  reach_ = root_of(largest_square_);
  const auto pixels = static_cast<double>(count);
  const double side = std::sqrt(in_a_cell * width * height / pixels);
  // The power of two next to what is shorter, that side or the reach: at most 1.4 times as long.
  shift_ = smallest_shift;
  while (2 << shift_ <= 1.4 * std::min<double>(side, reach_)) ++shift_;
  across_ = (frame_.right >> shift_) - (frame_.left >> shift_) + 1;
  const std::int32_t cells = across_ * ((frame_.bottom >> shift_) - (frame_.top >> shift_) + 1);
  if (cells > 2.0 * pixels + 64.0) return false;
  cells_.resize(static_cast<std::size_t>(cells) + 1);
  first_number_ = (frame_.top >> shift_) * across_ + (frame_.left >> shift_);
  nowhere_ = static_cast<Packed_pixel>((frame_.left + beyond) & 0xFFFF) |
             static_cast<Packed_pixel>(frame_.top + beyond) << 16;
  return true;
}

// Writes down the number of each pixel's cell where its place will stand.
void Pixel_cells::number_cells(const Packed_pixels& pixels) {
  count_ = pixels.size();
  place_of_.reset(new std::uint32_t[count_]);
  std::size_t i = 0;
#if defined(__SSE2__)
  // Both halves are shifted, multiplied and added up at once: a sixth of the time.
  const __m128i shift = _mm_cvtsi32_si128(shift_);
  const __m128i factors = _mm_set1_epi32(1 | across_ << 16);
  const __m128i first_number = _mm_set1_epi32(first_number_);
  for (; i + 4 <= count_; i += 4) {
    const auto* const four = reinterpret_cast<const __m128i*>(pixels.data() + i);
    const __m128i cells = _mm_srl_epi16(_mm_loadu_si128(four), shift);
    const __m128i numbers = _mm_sub_epi32(_mm_madd_epi16(cells, factors), first_number);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(&place_of_[i]), numbers);
  }
#endif
  for (; i < count_; ++i) {
    const auto column = static_cast<std::int32_t>(column_of(pixels[i])) >> shift_;
    const auto row = static_cast<std::int32_t>(row_of(pixels[i])) >> shift_;
    place_of_[i] = static_cast<std::uint32_t>(row * across_ + column - first_number_);
  }
}

// Pixels that follow each other often share a cell, whose count would have to wait for the one
// before it. So the input is counted from four places by turns, and dealt out in the same way.
void Pixel_cells::lay_out_cells() {
  const std::size_t quarter = count_ / 4;
  const std::uint32_t* const cell_of = place_of_.get();
  Cell* const cells = cells_.data();
  for (std::size_t i = 0; i < quarter; ++i) {
    ++cells[cell_of[i]].left;
    ++cells[cell_of[i + quarter]].left;
    ++cells[cell_of[i + 2 * quarter]].left;
    ++cells[cell_of[i + 3 * quarter]].left;
  }
  for (std::size_t i = 4 * quarter; i < count_; ++i) ++cells[cell_of[i]].left;
  std::uint32_t end = 0;
  for (Cell& cell : cells_) {
    cell.begin = end;
    end += (cell.left + 3) / 4 * 4;
  }
  // Only the last places of a cell may stay empty, so that no others are cleared. Where a cell is
  // full these are the four behind it, which are filled later; the last cell has four more for it.
  places_ = Packed_pixels(end + 4);
  for (const Cell& cell : cells_) {
    const std::size_t filled = cell.begin + cell.left;
    std::fill_n(places_.data() + (filled - filled % 4), 4, nowhere_);
  }
}

// Four places are looked up before anything is moved there. A processor that does not know where a
// store goes may keep the next look-up waiting for it: 6 ns a pixel instead of 1.
void Pixel_cells::deal_out(const Packed_pixels& pixels) {
  const std::size_t quarter = count_ / 4;
  const auto next_place = [cells = cells_.data(), cell_of = place_of_.get()](std::size_t i) {
    return cells[cell_of[i]].begin++;
  };
  const auto move = [from = pixels.data(), to = places_.data(), place_of = place_of_.get()](
                        std::size_t i, std::uint32_t place) {
    to[place] = from[i];
    place_of[i] = place;
  };
  for (std::size_t i = 0; i < quarter; ++i) {
    const std::uint32_t first = next_place(i);
    const std::uint32_t second = next_place(i + quarter);
    const std::uint32_t third = next_place(i + 2 * quarter);
    const std::uint32_t fourth = next_place(i + 3 * quarter);
    move(i, first);
    move(i + quarter, second);
    move(i + 2 * quarter, third);
    move(i + 3 * quarter, fourth);
  }
  for (std::size_t i = 4 * quarter; i < count_; ++i) move(i, next_place(i));
  for (Cell& cell : cells_) cell.begin -= cell.left;
}

std::optional<Taken_points> Pixel_cells::take_next() {
  const std::optional<Packed_pixel> seed = first_left();
  if (!seed) return std::nullopt;
  const Pixel_disc disc{*seed, largest_square_};
  const auto y = static_cast<std::int32_t>(row_of(disc.centre));
  const std::int32_t first = std::max(y - reach_, frame_.top) >> shift_;
  const std::int32_t last = std::min(y + reach_, frame_.bottom) >> shift_;
  Pixel_sums sums;
  for (std::int32_t row = first; row <= last; ++row) take_from_row(row, disc, sums);
  return Taken_points{static_cast<std::int32_t>(sums.count), static_cast<double>(sums.x),
                      static_cast<double>(sums.y)};
}

std::optional<Packed_pixel> Pixel_cells::first_left() {
  const Packed_pixel* const places = places_.data();
  const std::uint32_t* const place_of = place_of_.get();
  const std::size_t count = count_;
  const Packed_pixel nowhere = nowhere_;
  std::size_t i = next_;
  while (i < count && places[place_of[i]] == nowhere) ++i;
  next_ = i;
  if (i == count) return std::nullopt;
  return places[place_of[i]];
}

// Takes what the disc holds of one row of cells.
void Pixel_cells::take_from_row(std::int32_t row, const Pixel_disc& disc, Pixel_sums& sums) {
  const auto x = static_cast<std::int32_t>(column_of(disc.centre));
  const auto y = static_cast<std::int32_t>(row_of(disc.centre));
  const std::int32_t top = row << shift_;
  const std::int32_t bottom = top + (1 << shift_) - 1;
  const std::int32_t dy = std::max({top - y, y - bottom, 0});
  const std::int32_t half_width = root_of(largest_square_ - dy * dy);
  const std::int32_t first = std::max(x - half_width, frame_.left) >> shift_;
  const std::int32_t last = std::min(x + half_width, frame_.right) >> shift_;
  const std::int32_t row_begin = row * across_ - first_number_;
  for (std::int32_t column = first; column <= last; ++column) {
    take_from_cell(row_begin + column, disc, sums);
  }
}

void Pixel_cells::take_from_cell(std::int32_t number, const Pixel_disc& disc, Pixel_sums& sums) {
  Cell& cell = cells_[static_cast<std::size_t>(number)];
  if (cell.left == 0) return;
  const std::uint32_t end = cells_[static_cast<std::size_t>(number) + 1].begin;
  for (std::uint32_t first = cell.begin; first < end; first += most_at_once) {
    const std::uint32_t count = std::min(end - first, most_at_once);
    const Pixel_sums taken = take_near(places_.data() + first, count, disc, nowhere_);
    cell.left -= static_cast<std::uint32_t>(taken.count);
    sums.count += taken.count;
    sums.x += taken.x;
    sums.y += taken.y;
  }
}

}  // namespace chart_trace
