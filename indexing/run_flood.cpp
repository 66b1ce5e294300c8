#include "indexing/run_flood.hpp"

#include <algorithm>
#include <utility>

#include "indexing/bits.hpp"

namespace chart_trace {
namespace {

using Word = Pixel_map::Word;
constexpr std::uint32_t word_bits = Pixel_map::word_bits;
constexpr Word edges = Word{1} << (word_bits - 1) | 1;

constexpr std::size_t queue_size = 256;
// Above and below a run that lies within a word there are so many others at most.
constexpr std::size_t most_found = word_bits;

// The number of pixels side by side in a word from the first one on.
std::uint32_t length_of(Word pixels) {
  pixels >>= lowest_bit(pixels);
  return ~pixels == 0 ? word_bits : first_of(~pixels);
}

}  // namespace

// Up to 2^14 single precision holds all multiples of 2^-10.
bool Run_flood::holds_exactly(const Pixel_map& map) {
  return map.left() >= -16384.0 && map.left() + (map.stride() - 1) <= 16384.0;
}

Run_flood::Run_flood(Pixel_map map)
    : map_(std::move(map)),
      words_in_row_(static_cast<std::uint32_t>(map_.words_in_row())),
      runs_(map_.runs()),
      last_word_(static_cast<std::uint32_t>(map_.words().size() - 1)),
      pixels_(queue_size),
      words_(queue_size) {}

bool Run_flood::next_group(Pixel_writer& group) {
  if (runs_ == 0) return false;
  first_word_ = static_cast<std::uint32_t>(map_.first_word(first_word_));
  end_ = 0;
  take_run(first_word_ * word_bits + first_of(map_.word(first_word_)));
  fill(group);
  return true;
}

inline Run_flood::Run Run_flood::queued(std::size_t k) const {
  return {pixels_[k], static_cast<std::uint32_t>(words_[k]),
          static_cast<std::uint32_t>(words_[k] >> 32)};
}

inline void Run_flood::push(Run run) {
  pixels_[end_] = run.pixels;
  words_[end_] = run.word | std::uint64_t{run.rest} << 32;
  ++end_;
}

inline void Run_flood::write(Run run, Pixel_writer& points) const {
  const std::uint32_t place = run.word * word_bits + first_of(run.pixels);
  points.add_along(place, length_of(run.pixels) + run.rest);
}

// Breadth first. Straight after a change of reference the first run of the list is not held against
// the end of the search: when it is the only one left, nothing stops it. For the first reference of
// a group that comes to the same, as there is nothing else to take.
void Run_flood::fill(Pixel_writer& group) {
  Pixel_writer points = group;  // a copy, which need not be in memory meanwhile
  bool stopped = true;
  std::size_t head = 0;
  while (stopped && head < end_) {
    if (pixels_.size() - end_ < most_found) {
      make_room(head);
      head = 0;
    }
    const Run reference = queued(head++);
    write(reference, points);
    stopped = is_any_below(reference) && runs_ - end_ != 1;
    if (!take_in_words(reference)) take_touching(reference);
  }
  for (; head < end_; ++head) write(queued(head), points);
  runs_ -= end_;
  group = points;
}

// Whether a run is left that lies two rows or more below.
inline bool Run_flood::is_any_below(Run reference) {
  if (map_.word(last_word_) == 0) find_last_word();
  return reference.word < stopped_;
}

void Run_flood::find_last_word() {
  last_word_ = static_cast<std::uint32_t>(map_.last_word(last_word_));
  const std::uint32_t row = last_word_ / words_in_row_;
  stopped_ = (std::max(row, 1U) - 1) * words_in_row_;
}

// Takes the runs that touch the reference, if it and all of them lie within words. Otherwise it
// gives up with false, at the first one that may not, and take_touching() is to go on.
inline bool Run_flood::take_in_words(Run reference) {
  const Word pixels = reference.pixels;
  if ((pixels & edges) != 0) return false;
  const Word columns = pixels << 1 | pixels | pixels >> 1;
  return take_in_word(reference.word - words_in_row_, columns) &&
         take_in_word(reference.word + words_in_row_, columns);
}

// A run is cut out of its word by a carry: adding 1 where it begins clears it, and the carry goes
// into the free column behind it.
inline bool Run_flood::take_in_word(std::uint32_t number, Word columns) {
  Word& word = map_.word(number);
  Word left = word;
  Word found = left & columns;
  while (found != 0) {
    const Word free_before = ~left & (found - 1);
    if (free_before == 0) return false;
    const Word others = left & (left + (Word{2} << highest_bit(free_before)));
    const Word pixels = left ^ others;
    if ((pixels & edges) != 0) return false;
    push({pixels, number, 0});
    word = left = others;
    found &= left;
  }
  return true;
}

// The same for every reference.
void Run_flood::take_touching(Run reference) {
  const std::uint32_t begin = reference.word * word_bits + first_of(reference.pixels);
  const std::uint32_t end = begin + length_of(reference.pixels) + reference.rest;
  take_between(begin - 1 - map_.stride(), end + 1 - map_.stride());
  take_between(begin - 1 + map_.stride(), end + 1 + map_.stride());
}

// Takes the runs that have pixels from `place` to before `end`.
void Run_flood::take_between(std::uint32_t place, std::uint32_t end) {
  while (place < end) {
    const Word pixels = map_.word(place / word_bits) >> place % word_bits;
    if (pixels == 0) {
      place = (place / word_bits + 1) * word_bits;
      continue;
    }
    place += first_of(pixels);
    if (place >= end) return;
    while (map_.is_free(place - 1)) --place;
    place = take_run(place);
  }
}

// Takes the run that begins at `place` and returns the place behind it.
std::uint32_t Run_flood::take_run(std::uint32_t place) {
  Word& word = map_.word(place / word_bits);
  const Word others = word & (word + (Word{1} << place % word_bits));
  Run run{word ^ others, place / word_bits, 0};
  word = others;
  std::uint32_t end = place + length_of(run.pixels);
  while (end % word_bits == 0) {
    Word& next = map_.word(end / word_bits);
    const Word pixels = next & ~(next & (next + 1));
    if (pixels == 0) break;
    next ^= pixels;
    run.rest += length_of(pixels);
    end += length_of(pixels);
  }
  if (end_ == pixels_.size()) grow();
  push(run);
  return end;
}

// Moves the runs from `head` on, which have not been searched from, to the front of the queue.
void Run_flood::make_room(std::size_t head) {
  const std::size_t end = end_;
  runs_ -= head;
  end_ = 0;
  while (head < end) push(queued(head++));
  if (end_ > pixels_.size() / 2) grow();
}

void Run_flood::grow() {
  const std::size_t size = 2 * pixels_.size();
  pixels_.resize(size);
  words_.resize(size);
}

}  // namespace chart_trace
