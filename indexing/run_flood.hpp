#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "indexing/pixel_map.hpp"
#include "indexing/pixel_writer.hpp"

namespace chart_trace {

// Horizontal grouping of a picture in raster order with a step of 1: takes the groups of touching
// runs off a bitmap.
//
// On whole steps two runs touch just when one has a pixel among the eight neighbours of a pixel of
// the other. No two of a row do, or they would be one run. So those that touch a given run have
// pixels above or below it, from the column before it to the column behind it, and list order is:
// first those above, then those below, each row from left to right. All of them stand before those
// that lie too far below; and whether one of these is left, so that the search stops, is answered
// by the last pixel that is left on the map, for none lies lower.
//
// Lines have runs of a few pixels, most of which lie in one word of the map, as what they touch
// does: then a search is a few operations on two words. A run is written when its turn comes to be
// searched from, while the processor waits for what that search finds.
// Cost: some 12 ns a run, and what it takes to write the pixels of longer ones; 16 bytes for each
// run in the queue.
class Run_flood {
 public:
  // Whether single precision, in which touching is decided, holds the columns of a map, multiples
  // of 2^-10, exactly.
  static bool holds_exactly(const Pixel_map& map);

  // The map must be one in raster order.
  explicit Run_flood(Pixel_map map);

  // Takes the group of the first run left and writes it; false when there is none left. As in
  // Horizontal_grouping_algm, a search that nothing stopped is the last one of its group.
  bool next_group(Pixel_writer& group);

  const Pixel_map& map() const { return map_; }

 private:
  using Word = Pixel_map::Word;
  struct Run {
    Word pixels;         // those in the word where it begins
    std::uint32_t word;  // the number of that word
    std::uint32_t rest;  // the number of pixels in the words behind it
  };

  void fill(Pixel_writer& group);
  bool is_any_below(Run reference);
  void find_last_word();
  bool take_in_words(Run reference);
  bool take_in_word(std::uint32_t number, Word columns);
  void take_touching(Run reference);
  void take_between(std::uint32_t place, std::uint32_t end);
  std::uint32_t take_run(std::uint32_t place);
  Run queued(std::size_t k) const;
  void push(Run run);
  void make_room(std::size_t head);
  void grow();
  void write(Run run, Pixel_writer& points) const;

  Pixel_map map_;
  std::uint32_t words_in_row_;
  std::size_t runs_;              // those on the map and in the queue
  std::uint32_t first_word_ = 0;  // no pixel before it is left
  std::uint32_t last_word_;       // no pixel behind it is left
  std::uint32_t stopped_ = 0;     // searches from runs in words before this one are stopped
  // The queue of the group in hand: of each run its pixels, and its word with the rest above it. In
  // two arrays, as the compiler would load a run as a whole, which has to wait until its members,
  // just stored one by one, are put together in the cache.
  std::vector<Word> pixels_;
  std::vector<std::uint64_t> words_;
  std::size_t end_ = 0;  // of the queue
};

}  // namespace chart_trace
