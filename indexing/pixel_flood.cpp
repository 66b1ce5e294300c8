#include "indexing/pixel_flood.hpp"

#include <algorithm>

namespace chart_trace {
namespace {

using Word = Pixel_map::Word;
constexpr std::uint32_t word_bits = Pixel_map::word_bits;
constexpr std::size_t queue_size = 64;

bool is_single(Word pixels) { return pixels != 0 && (pixels & (pixels - 1)) == 0; }

// The columns before the first of `pixels`; all when there are none.
Word before(Word pixels) { return ~pixels & (pixels - 1); }

// The same with the first one.
Word up_to_first(Word pixels) { return pixels ^ (pixels - 1); }

}  // namespace

Pixel_flood::Pixel_flood(Pixel_map map)
    : map_(std::move(map)),
      line_walk_(map_.stride()),
      queue_(queue_size),
      head_(queue_.data()),
      end_(queue_.data()),
      room_end_(queue_.data() + queue_.size()) {}

bool Pixel_flood::next_group(Pixel_writer& group) {
  std::uint32_t seed = 0;
  if (!map_.take_first(seed_word_, seed)) return false;
  group_ = &group;
  clear_queue();
  push({seed, 1});
  fill();
  write(end_);
  return true;
}

// Loads the place and the length of a stretch one by one: where it has grown, the length has been
// stored later than the place, and one load of both would have to wait until both are in the cache.
void Pixel_flood::fill() {
  while (head_ != end_) {
    const std::uint32_t place = head_->place;
    const std::int32_t length = head_->length;
    ++head_;
    if (length > 1) {
      take_along(place, length);
    } else if (length < 0) {
      take_down(place, -length);
    } else {
      take_around(place);
    }
  }
}

// On a line one pixel thick each pixel takes one other. Such pixels stay single: joining them would
// save less than finding out whether they can be joined.
void Pixel_flood::take_around(std::uint32_t place) {
  const Word around = map_.around(place);
  if (around == 0) return;
  if (const std::uint32_t to_taken = line_walk_.to_neighbour(around); to_taken != 0) {
    map_.flip(place + to_taken);
    push({place + to_taken, 1});
    follow_line();
    return;
  }
  const auto [above, own, below] = map_.take_rows(place - 1, 7);
  queue_row(place - 1 - map_.stride(), above);
  queue_row(place - 1, own);
  queue_row(place - 1 + map_.stride(), below);
}

// Where no more than two single pixels are left in the queue, they may be the ends of a line. What
// is left when it has been followed is the queue from then on.
void Pixel_flood::follow_line() {
  if (end_ - head_ > 2 || !head_->is_single() || !end_[-1].is_single()) return;
  write(end_);
  Line_walk::Ends ends{head_->place, end_[-1].place, end_ - head_ == 2};
  ends = line_walk_.follow(ends, map_, *group_);
  clear_queue();
  push({ends.first, 0});
  if (ends.has_second) push({ends.second, 0});
}

// Looks at no more pixels at a time than fit a word with a column on each side.
void Pixel_flood::take_along(std::uint32_t place, std::int32_t length) {
  constexpr std::int32_t most = static_cast<std::int32_t>(word_bits) - 2;
  for (; length > 0; place += most, length -= most) {
    const auto columns = static_cast<std::uint32_t>(std::min(length, most)) + 2;
    const Word mask = ~Word{0} >> (word_bits - columns);
    const std::uint32_t corner = place - 1;
    const auto [above, own, below] = map_.take_rows(corner, mask);
    if (own == 0 && above == 0) {
      queue_row(corner + map_.stride(), below);
    } else if (own == 0 && below == 0) {
      queue_row(corner - map_.stride(), above);
    } else {
      queue_columns(corner, above, own, below);
    }
  }
}

// The first pixel of the stretch takes what is in the first three columns, each further one what is
// in the next; each takes from the row above, then from its own, then from the row below. Columns
// in which one row alone has pixels are taken together.
void Pixel_flood::queue_columns(std::uint32_t corner, Word above, Word own, Word below) {
  Word columns = 7;
  for (Word all = above | own | below; all != 0; all = above | own | below) {
    columns |= up_to_first(all) | before(above | own) | before(above | below) | before(own | below);
    if ((above & columns) != 0) queue_row(corner - map_.stride(), above & columns);
    if ((own & columns) != 0) queue_row(corner, own & columns);
    if ((below & columns) != 0) queue_row(corner + map_.stride(), below & columns);
    above &= ~columns;
    own &= ~columns;
    below &= ~columns;
  }
}

// Goes through the rows from the one above the stretch to the one below it, three columns wide,
// which seldom lie in two words. Pixels alone in their rows, one below the other, are queued as a
// stretch.
void Pixel_flood::take_down(std::uint32_t top, std::int32_t height) {
  const std::uint32_t stride = map_.stride();
  std::uint32_t place = top - 1 - stride;
  auto rows = static_cast<std::uint32_t>(height) + 2;
  const std::uint32_t shift = place % word_bits;
  if (shift > word_bits - 3) {
    for (; rows > 0; --rows, place += stride) queue_row(place, map_.take(place, 7));
    return;
  }
  const Word three = Word{7} << shift;
  const std::size_t words_in_row = map_.words_in_row();
  std::size_t word = place / word_bits;
  const std::size_t end = word + rows * words_in_row;
  place -= shift;
  while (word != end) {
    const Word pixels = map_.word(word) & three;
    map_.word(word) ^= pixels;
    word += words_in_row;
    std::uint32_t count = 1;
    if (is_single(pixels)) {
      for (; word != end; word += words_in_row, ++count) {
        const Word left = map_.word(word) ^ pixels;
        if ((left & three) != 0) break;
        map_.word(word) = left;
      }
      queue_down(place + first_of(pixels), static_cast<std::int32_t>(count));
    } else if (pixels != 0) {
      queue_row(place, pixels);
    }
    place += count * stride;
  }
}

// Queues the pixels of a row from `place` on, a stretch for each that are side by side.
void Pixel_flood::queue_row(std::uint32_t place, Word pixels) {
  while (pixels != 0) {
    const std::uint32_t skipped = first_of(pixels);
    pixels >>= skipped;
    place += skipped;
    const std::uint32_t length = ~pixels == 0 ? word_bits : first_of(~pixels);
    queue_along(place, static_cast<std::int32_t>(length));
    if (length == word_bits) return;
    pixels >>= length;
    place += length;
  }
}

// Pixels that carry on the last stretch are added to it, unless it is in hand already.
void Pixel_flood::queue_along(std::uint32_t place, std::int32_t length) {
  Stretch& last = end_[-1];
  if (last.length > 0 && last.place + static_cast<std::uint32_t>(last.length) == place &&
      end_ != head_) {
    last.length += length;
  } else if (length == 1) {
    queue_down(place, 1);
  } else {
    push({place, length});
  }
}

void Pixel_flood::queue_down(std::uint32_t place, std::int32_t length) {
  Stretch& last = end_[-1];
  const std::int32_t height = last.length == 1 ? 1 : -last.length;
  if (height > 0 && last.place + static_cast<std::uint32_t>(height) * map_.stride() == place &&
      end_ != head_) {
    last.length = -(height + length);
  } else {
    push({place, length == 1 ? 1 : -length});
  }
}

void Pixel_flood::push(Stretch stretch) {
  if (end_ == room_end_) make_room();
  *end_++ = stretch;
}

void Pixel_flood::clear_queue() {
  head_ = queue_.data();
  end_ = queue_.data();
}

// Writes the stretches whose turn is over, and moves the others to the front; where these fill more
// than half of the queue, it becomes twice as long as they are. The one in hand stays as well: it
// may be the last one, which is asked for. There always is one, as a cleared queue has room.
void Pixel_flood::make_room() {
  Stretch* const in_hand = head_ - 1;
  const auto left = end_ - in_hand;
  const std::size_t size = queue_.size();
  write(in_hand);
  queue_.erase(queue_.begin(), queue_.begin() + (in_hand - queue_.data()));
  queue_.resize(std::max(size, 2 * static_cast<std::size_t>(left)));
  head_ = queue_.data() + 1;
  end_ = queue_.data() + left;
  room_end_ = queue_.data() + queue_.size();
}

// Writes the stretches before `end`, which grow no more.
void Pixel_flood::write(const Stretch* end) const {
  for (const Stretch* next = queue_.data(); next != end; ++next) {
    const Stretch stretch = *next;
    if (stretch.length == 1) {
      group_->add_at(stretch.place);
    } else if (stretch.length > 1) {
      group_->add_along(stretch.place, static_cast<std::size_t>(stretch.length));
    } else {
      group_->add_down(stretch.place, static_cast<std::size_t>(-stretch.length));
    }
  }
}

}  // namespace chart_trace
