#include "indexing/shuffled_flood.hpp"

#include <algorithm>

#include "indexing/bits.hpp"

namespace chart_trace {

using Word = Pixel_map::Word;
constexpr std::uint32_t word_bits = Pixel_map::word_bits;

std::optional<Shuffled_flood> Shuffled_flood::of(const std::vector<double>& columns,
                                                 const std::vector<double>& rows) {
  std::vector<std::uint32_t> places;
  std::optional<Pixel_map> map = Pixel_map::of_any_order(columns, rows, places);
  if (!map) return {};
  return Shuffled_flood(*std::move(map), std::move(places));
}

Shuffled_flood::Shuffled_flood(Pixel_map map, std::vector<std::uint32_t> places)
    : map_(std::move(map)), pixels_(map_.words()), places_(std::move(places)) {
  before_.reserve(pixels_.size());
  std::uint32_t before = 0;
  for (const Word word : pixels_) {
    before_.push_back(before);
    before += count_bits(word);
  }
  index_of_.resize(places_.size());
  for (std::size_t i = 0; i < places_.size(); ++i) {
    index_of_[rank_of(places_[i])] = static_cast<std::uint32_t>(i);
  }
}

std::uint32_t Shuffled_flood::rank_of(std::uint32_t place) const {
  const std::uint32_t word = place / word_bits;
  return before_[word] + count_bits(pixels_[word] & ~(~Word{0} << place % word_bits));
}

bool Shuffled_flood::next_group(Point_writer& group) {
  while (next_ < places_.size() && !map_.is_free(places_[next_])) ++next_;
  if (next_ == places_.size()) return false;
  queue_.assign(1, places_[next_]);
  map_.flip(places_[next_]);
  for (std::size_t head = 0; head < queue_.size(); ++head) take_around(queue_[head]);
  write(group);
  return true;
}

void Shuffled_flood::take_around(std::uint32_t place) {
  const std::size_t first = queue_.size();
  const std::uint32_t stride = map_.stride();
  for (const std::uint32_t corner : {place - stride - 1, place - 1, place + stride - 1}) {
    for (Word taken = map_.take_three(corner); taken != 0; taken &= taken - 1) {
      queue_.push_back(corner + static_cast<std::uint32_t>(lowest_bit(taken)));
    }
  }
  if (queue_.size() - first > 1) queue_in_order(first);
}

// Puts the places from `first` on, no more than eight, into input order, by insertion.
void Shuffled_flood::queue_in_order(std::size_t first) {
  std::uint32_t indices[8];
  const std::size_t count = queue_.size() - first;
  for (std::size_t k = 0; k < count; ++k) {
    const std::uint32_t index = index_of_[rank_of(queue_[first + k])];
    std::size_t at = k;
    for (; at > 0 && indices[at - 1] > index; --at) indices[at] = indices[at - 1];
    indices[at] = index;
  }
  for (std::size_t k = 0; k < count; ++k) queue_[first + k] = places_[indices[k]];
}

void Shuffled_flood::write(Point_writer& group) const {
  for (const std::uint32_t place : queue_) {
    group.add(map_.column_of(place), map_.row_of(place));
  }
}

}  // namespace chart_trace
