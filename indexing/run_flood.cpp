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
  return map.column_of(0) >= -16384.0 && map.column_of(map.stride() - 1) <= 16384.0;
}

Run_flood::Run_flood(Pixel_map map)
    : map_(std::move(map)),
      words_in_row_(static_cast<std::uint32_t>(map_.words_in_row())),
      unwritten_(map_.runs()),
      last_word_(static_cast<std::uint32_t>(map_.words().size() - 1)),
      queue_(queue_size) {}

bool Run_flood::next_group(Point_writer& group) {
  if (unwritten_ == 0) return false;
  first_word_ = static_cast<std::uint32_t>(map_.first_word(first_word_));
  end_ = 0;
  take_run(first_word_ * word_bits + first_of(map_.word(first_word_)));
  fill(group);
  write(end_, group);
  return true;
}

// Breadth first. Straight after a change of reference the first run of the list is not held against
// the end of the search: when it is the only one left, nothing stops it. For the first reference of
// a group that comes to the same, as there is nothing else to take.
void Run_flood::fill(Point_writer& group) {
  Run last = queue_.front();
  bool stopped = true;
  for (std::size_t head = 0; stopped && head < end_; ++head) {
    if (queue_.size() - end_ < most_found) {
      make_room(head, group);
      head = 0;
    }
    Run reference = last;
    if (head + 1 < end_) reference = queue_[head];
    stopped = is_any_below(reference) && unwritten_ - end_ != 1;
    if (take_in_words(reference, last)) continue;
    take_touching(reference);
    last = queue_[end_ - 1];
  }
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
inline bool Run_flood::take_in_words(Run reference, Run& last) {
  const Word pixels = reference.pixels;
  if ((pixels & edges) != 0) return false;
  const Word columns = pixels << 1 | pixels | pixels >> 1;
  return take_in_word(reference.word - words_in_row_, columns, last) &&
         take_in_word(reference.word + words_in_row_, columns, last);
}

// A run is cut out of its word by a carry: adding 1 where it begins clears it, and the carry goes
// into the free column behind it.
inline bool Run_flood::take_in_word(std::uint32_t number, Word columns, Run& last) {
  Word& word = map_.word(number);
  Word left = word;
  Word found = left & columns;
  while (found != 0) {
    const Word free_before = ~left & (found - 1);
    if (free_before == 0) return false;
    const Word others = left & (left + (Word{2} << highest_bit(free_before)));
    const Word pixels = left ^ others;
    if ((pixels & edges) != 0) return false;
    // Field by field: a whole one would be put together in memory and waited for.
    Run& run = queue_[end_++];
    run.pixels = last.pixels = pixels;
    run.word = last.word = number;
    run.rest = last.rest = 0;
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
  if (end_ == queue_.size()) queue_.resize(2 * end_);
  queue_[end_++] = run;
  return end;
}

// Writes the runs before `head`, which have been searched from, and moves the others to the front
// of the queue.
void Run_flood::make_room(std::size_t head, Point_writer& group) {
  write(head, group);
  std::copy(queue_.begin() + static_cast<std::ptrdiff_t>(head),
            queue_.begin() + static_cast<std::ptrdiff_t>(end_), queue_.begin());
  end_ -= head;
  if (end_ > queue_.size() / 2) queue_.resize(2 * queue_.size());
}

// Writes the first runs of the queue, so many.
void Run_flood::write(std::size_t count, Point_writer& group) {
  Point_writer points = group;  // a copy, which need not be in memory meanwhile
  for (std::size_t k = 0; k < count; ++k) {
    const Run run = queue_[k];
    const std::uint32_t place = run.word * word_bits + first_of(run.pixels);
    points.add_along(map_.column_of(place), map_.row_of(place), length_of(run.pixels) + run.rest);
  }
  group = points;
  unwritten_ -= count;
}

}  // namespace chart_trace
