#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace chart_trace {

// Which places of a list are still free, a bit each.
class Free_places {
 public:
  using Word = std::uint64_t;
  static constexpr std::uint32_t word_bits = 64;

  // The places from 0 to count - 1, all of them free.
  explicit Free_places(std::size_t count) : words_(count / word_bits + 2, ~Word{0}) {}

  bool is_free(std::uint32_t place) const {
    return (words_[place / word_bits] >> place % word_bits & 1) != 0;
  }

  // Those among the `count` places from `place` on, 64 at most; bit k is place + k.
  Word among(std::uint32_t place, std::uint32_t count) const {
    if (count == 0) return 0;
    const Word* const word = &words_[place / word_bits];
    const std::uint32_t shift = place % word_bits;
    const Word both = word[0] >> shift | word[1] << 1 << (word_bits - 1 - shift);
    return both & ~Word{0} >> (word_bits - count);
  }

  void take(std::uint32_t place) { words_[place / word_bits] &= ~(Word{1} << place % word_bits); }

  // Takes place + k for every bit k.
  void take(std::uint32_t place, Word bits) {
    Word* const word = &words_[place / word_bits];
    const std::uint32_t shift = place % word_bits;
    word[0] &= ~(bits << shift);
    word[1] &= ~(bits >> 1 >> (word_bits - 1 - shift));
  }

 private:
  std::vector<Word> words_;
};

}  // namespace chart_trace
