#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "indexing/bits.hpp"
#include "indexing/run_pairs.hpp"

namespace chart_trace {

// A map of the pixels that runs cover, for runs whose ends and rows are whole numbers and whose
// step is 1: finds the runs left that touch a given one, whatever their order in the list.
//
// Two such runs touch just when one has a pixel among the eight neighbours of a pixel of the other:
// rows less than 1.5 apart are the same or next to each other, and a gap of at most 1 lies between
// neighbouring columns. Only the ends in single precision count, as in the stated comparison, and
// up to 2^24 single precision holds whole numbers exactly. So each row of the map is looked at from
// the column before the run to the column behind it. A run is found by the rank of its pixels:
// their number in reading order, which a count at every 64th column and the bits before a pixel
// give. Cost: the map takes 2.5 bits a pixel of its bounding box, which is limited; a search some
// 10 ns a row.
class Run_map {
 public:
  // Nothing when the runs are no such pixels, cover a pixel twice, or lie too far apart for a map.
  static std::optional<Run_map> of(const Run_pairs& pairs);

  // Calls visit(run) for every run left that touches `reference`, in no particular order.
  template <typename Visit>
  void for_each_touching(Run reference, Visit visit) const {
    const Span span = spans_[reference];
    const std::size_t around = span.place - 1;
    for (const std::size_t place : {around - stride_, around, around + stride_}) {
      visit_between(place, place + span.length + 2, visit);
    }
  }

  // Takes a run off the map.
  void remove(Run run) {
    for_each_word(run, [this](std::size_t word, Word mask) { left_[word] &= ~mask; });
  }

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t word_bits = 64;
  struct Span {
    std::uint32_t place;  // where the run begins: its row times stride_ plus its column
    std::uint32_t length;
  };

  Run_map() = default;
  bool place_runs(const Run_pairs& pairs);
  bool mark_pixels();
  void rank_runs();

  std::uint32_t rank_of(std::size_t place) const {
    const std::size_t word = place / word_bits;
    return before_[word] + count_bits(pixels_[word] & ~(~Word{0} << place % word_bits));
  }

  template <typename Visit>
  void visit_between(std::size_t place, std::size_t end, Visit visit) const {
    while (place < end) {
      const Word left = left_[place / word_bits] >> place % word_bits;
      if (left == 0) {
        place = (place / word_bits + 1) * word_bits;
        continue;
      }
      place += static_cast<std::size_t>(lowest_bit(left));
      if (place >= end) return;
      const Run run = run_of_[rank_of(place)];
      visit(run);
      place = spans_[run].place + spans_[run].length;
    }
  }

  // Calls visit(word, mask) for each word that holds pixels of the run.
  template <typename Visit>
  void for_each_word(Run run, Visit visit) {
    std::size_t place = spans_[run].place;
    const std::size_t end = place + spans_[run].length;
    while (place < end) {
      const std::size_t bit = place % word_bits;
      const std::size_t count = std::min(end - place, word_bits - bit);
      visit(place / word_bits, ~Word{0} >> (word_bits - count) << bit);
      place += count;
    }
  }

  std::size_t stride_ = 0;
  std::vector<Span> spans_;  // of each run
  // The map, 64 pixels a word; apart, since most looks find no run and need no more than the first.
  std::vector<Word> left_;             // the pixels of the runs left
  std::vector<Word> pixels_;           // of all runs
  std::vector<std::uint32_t> before_;  // the number of pixels in all words before
  std::vector<Run> run_of_;            // by rank, for each pixel
};

}  // namespace chart_trace
