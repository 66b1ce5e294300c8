#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "indexing/bits.hpp"
#include "indexing/runs.hpp"

namespace chart_trace {

// A picture as a bitmap: the pixels of a point set that no group has taken yet. A place on the map
// is row times stride plus column; the map has an empty column and row on each side, so that every
// look around a pixel stays on it. Which coordinate is called column is the caller's choice.
//
// Rebuilding a coordinate from its place is exact: columns and rows lie whole numbers from the
// first one, which is a multiple of 2^-10, and measure less than 2^29, so no sum is rounded. No map
// is wider or higher than 65535 places, so that pixels can be packed as they lie on it.
class Pixel_map {
 public:
  using Word = std::uint64_t;
  static constexpr std::uint32_t word_bits = 64;

  // The map of a clean picture in raster order: row after row, left to right, no pixel twice, all
  // whole steps of one apart. Nothing for every other set: one with a NaN or an infinity, a -0.0
  // (which would come back as 0.0), another order, a picture wider or higher than some 65,400
  // pixels, or one so sparse that the map would take more than 32 bytes a point. Cost: two passes,
  // three when the picture reaches left of 0.
  static std::optional<Pixel_map> of_raster(const std::vector<double>& columns,
                                            const std::vector<double>& rows);

  // An empty map, half as large at most, for a picture in any order, and in `places` the place of
  // each point on it. Refuses what of_raster() refuses, but for the order and for a pixel that
  // comes twice: whoever puts the pixels on the map finds that out. Cost: three passes.
  static std::optional<Pixel_map> blank(const std::vector<double>& columns,
                                        const std::vector<double>& rows,
                                        std::vector<std::uint32_t>& places);

  // Takes the free pixels among the 64 from `place` on that `mask` names; bit k is place + k.
  Word take(std::uint32_t place, Word mask) {
    Word* const word = &words_[place / word_bits];
    const std::uint32_t shift = place % word_bits;
    const Word taken = (word[0] >> shift | word[1] << 1 << (word_bits - 1 - shift)) & mask;
    if (taken == 0) return 0;
    word[0] &= ~(taken << shift);
    word[1] &= ~(taken >> 1 >> (word_bits - 1 - shift));
    return taken;
  }

  // The same for the three pixels from `place` on, which seldom lie in two words.
  Word take_three(std::uint32_t place) {
    const std::uint32_t shift = place % word_bits;
    if (shift > word_bits - 3) return take(place, 7);
    Word& word = words_[place / word_bits];
    const Word taken = word >> shift & 7;
    word ^= taken << shift;
    return taken;
  }

  // What is taken on three rows one below the other.
  struct Three_rows {
    Word above, own, below;
  };

  // The same from `place` on, above and below it. Most often each row lies in one word.
  Three_rows take_rows(std::uint32_t place, Word mask) {
    const std::uint32_t shift = place % word_bits;
    const Word in_word = mask << shift;
    if (in_word >> shift != mask) {
      const Word above = take(place - stride_, mask);
      const Word own = take(place, mask);
      return {above, own, take(place + stride_, mask)};
    }
    const auto take_row = [&](Word& word) {
      const Word taken = word & in_word;
      word ^= taken;
      return taken >> shift;
    };
    const std::size_t k = place / word_bits;
    const Word above = take_row(words_[k - words_in_row()]);
    const Word own = take_row(words_[k]);
    return {above, own, take_row(words_[k + words_in_row()])};
  }

  // The free pixels from place k * word_bits on; those below them are words_in_row() words later.
  Word& word(std::size_t k) { return words_[k]; }
  std::size_t words_in_row() const { return stride_ / word_bits; }

  // The free pixels of three rows of three around `place`, a bit each in place order.
  Word around(std::uint32_t place) const {
    const std::uint32_t corner = place - 1;
    const std::uint32_t shift = corner % word_bits;
    if (shift > word_bits - 3) return around_in_two_words(place);
    const Word* const own = &words_[corner / word_bits];
    const Word above = *(own - words_in_row());
    const Word below = own[words_in_row()];
    return (above >> shift & 7) | (*own >> shift & 7) << 3 | (below >> shift & 7) << 6;
  }

  bool is_free(std::uint32_t place) const {
    return (words_[place / word_bits] >> place % word_bits & 1) != 0;
  }

  // Takes a free pixel, or frees a taken one.
  void flip(std::uint32_t place) { words_[place / word_bits] ^= Word{1} << place % word_bits; }

  // The number of the first word from `from` on that has a free pixel; the number of all words,
  // which `from` may be too, if there is none.
  std::size_t first_word(std::size_t from) const;

  // The number of the last word up to word `from` that has a free pixel; 0 if there is none.
  std::size_t last_word(std::size_t from) const;

  // Takes the first free pixel from word `from` on, and moves `from` to its word; false if none is.
  bool take_first(std::size_t& from, std::uint32_t& place);

  // The column and the row of place 0.
  double left() const { return left_; }
  double top() const { return top_; }

  // Whether all pixels that the map has room for can be packed, wherever it lies.
  bool holds_packed() const;

  const std::vector<Word>& words() const { return words_; }
  std::uint32_t stride() const { return stride_; }
  // How many stretches of pixels side by side of_raster() has found.
  std::size_t runs() const { return runs_; }

 private:
  Pixel_map(double left, double top, std::uint32_t stride, std::size_t rows)
      : left_(left), top_(top), stride_(stride), words_(rows * (stride / word_bits) + 1) {}
  static std::optional<Pixel_map> framing(double left, double right, double top, double bottom,
                                          std::uint64_t most_places);
  bool paint(const std::vector<double>& columns, const std::vector<double>& rows,
             const Found_runs& runs);
  bool runs_lose_nothing(const std::vector<double>& columns, const std::vector<double>& rows) const;
  bool place_each(const std::vector<double>& columns, const std::vector<double>& rows,
                  std::vector<std::uint32_t>& places) const;
  Word around_in_two_words(std::uint32_t place) const;

  double left_;           // the column of places 0, stride, ...
  double top_;            // the row of place 0
  std::uint32_t stride_;  // a multiple of word_bits
  std::vector<Word> words_;
  std::size_t runs_ = 0;
};

// The number of the first pixel in a part of a row, which must not be empty.
inline std::uint32_t first_of(Pixel_map::Word pixels) {
  return static_cast<std::uint32_t>(lowest_bit(pixels));
}

}  // namespace chart_trace
