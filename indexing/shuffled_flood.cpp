#include "indexing/shuffled_flood.hpp"

#include <algorithm>

#include "indexing/bits.hpp"

namespace chart_trace {

using Word = Pixel_map::Word;
constexpr std::uint32_t word_bits = Pixel_map::word_bits;

namespace {

// A map of more words does not fit the cache with their ranks.
constexpr std::size_t words_in_cache = 1 << 14;

// The pixels of one band of the map after the other.
std::vector<Placed_pixel> in_bands(const std::vector<std::uint32_t>& places,
                                   std::uint64_t map_size) {
  constexpr std::size_t most_bands = 1 << 11;
  std::uint32_t shift = 0;
  while (map_size >> shift >= most_bands) ++shift;
  std::vector<std::uint32_t> ends(most_bands + 1);
  for (const std::uint32_t place : places) ++ends[(place >> shift) + 1];
  for (std::size_t band = 1; band < ends.size(); ++band) ends[band] += ends[band - 1];
  std::vector<Placed_pixel> pixels(places.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    pixels[ends[places[i] >> shift]++] = {places[i], static_cast<std::uint32_t>(i)};
  }
  return pixels;
}

// Calls visit(place, index) for each pixel, in the order of `banded` unless that is empty.
template <typename Visit>
void for_each_pixel(const std::vector<std::uint32_t>& places,
                    const std::vector<Placed_pixel>& banded, Visit visit) {
  for (const Placed_pixel& pixel : banded) visit(pixel.place, pixel.index);
  if (!banded.empty()) return;
  for (std::size_t i = 0; i < places.size(); ++i) visit(places[i], static_cast<std::uint32_t>(i));
}

}  // namespace

std::optional<Shuffled_flood> Shuffled_flood::of(const std::vector<double>& columns,
                                                 const std::vector<double>& rows) {
  std::vector<std::uint32_t> places;
  std::optional<Pixel_map> map = Pixel_map::blank(columns, rows, places);
  if (!map) return {};
  std::vector<Placed_pixel> banded;
  const std::size_t words = map->words().size();
  if (words > words_in_cache) banded = in_bands(places, std::uint64_t{words} * word_bits);
  bool is_clean = true;
  for_each_pixel(places, banded, [&](std::uint32_t place, std::uint32_t) {
    is_clean &= !map->is_free(place);
    map->flip(place);
  });
  if (!is_clean) return {};
  return Shuffled_flood(*std::move(map), std::move(places), banded);
}

Shuffled_flood::Shuffled_flood(Pixel_map map, std::vector<std::uint32_t> places,
                               const std::vector<Placed_pixel>& banded)
    : map_(std::move(map)),
      pixels_(map_.words()),
      places_(std::move(places)),
      index_of_(places_.size()) {
  before_.reserve(pixels_.size());
  std::uint32_t before = 0;
  for (const Word word : pixels_) {
    before_.push_back(before);
    before += count_bits(word);
  }
  for_each_pixel(places_, banded, [&](std::uint32_t place, std::uint32_t index) {
    index_of_[rank_of(place)] = index;
  });
}

std::uint32_t Shuffled_flood::rank_of(std::uint32_t place) const {
  const std::uint32_t word = place / word_bits;
  return before_[word] + count_bits(pixels_[word] & ~(~Word{0} << place % word_bits));
}

bool Shuffled_flood::next_group(Pixel_writer& group) {
  if (group.count() == places_.size()) return false;
  while (!map_.is_free(places_[next_])) ++next_;
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
      queue_.push_back(corner + first_of(taken));
    }
  }
  if (queue_.size() - first > 1) queue_in_order(first);
}

// Puts the places from `first` on, no more than eight, into input order, by insertion.
void Shuffled_flood::queue_in_order(std::size_t first) {
  std::uint64_t pixels[8];  // input index, then place
  const std::size_t count = queue_.size() - first;
  for (std::size_t k = 0; k < count; ++k) {
    const std::uint32_t place = queue_[first + k];
    std::uint64_t last = std::uint64_t{index_of_[rank_of(place)]} << 32 | place;
    for (std::size_t at = 0; at < k; ++at) {
      const std::uint64_t other = pixels[at];
      pixels[at] = std::min(last, other);
      last = std::max(last, other);
    }
    pixels[k] = last;
  }
  for (std::size_t k = 0; k < count; ++k) queue_[first + k] = static_cast<std::uint32_t>(pixels[k]);
}

void Shuffled_flood::write(Pixel_writer& group) const {
  for (const std::uint32_t place : queue_) group.add_at(place);
}

}  // namespace chart_trace
