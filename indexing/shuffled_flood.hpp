#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "indexing/pixel_map.hpp"
#include "indexing/pixel_writer.hpp"

namespace chart_trace {

struct Placed_pixel {
  std::uint32_t place;
  std::uint32_t index;  // in the input
};

// Flood fill, breadth first, of a picture whose pixels come in any order.
//
// The neighbours of a pixel are found on the map, in reading order; what is asked for is input
// order. So each pixel is given its rank, the number of pixels before it on the map, which a count
// for every word and the bits before it give, and a table from rank to input index. It takes 4
// bytes a pixel and is asked only where a pixel has several free neighbours.
//
// To go all over a large map misses the cache with every pixel, three times until all have their
// ranks. So pixels are sorted into bands of the map first, which are put on it and ranked one after
// the other; in what order that is done makes no difference to map and ranks.
class Shuffled_flood {
 public:
  // Nothing when the points are no clean picture: see Pixel_map::blank.
  static std::optional<Shuffled_flood> of(const std::vector<double>& columns,
                                          const std::vector<double>& rows);

  // Fills the group of the first free pixel in input order; false when there is none left.
  bool next_group(Pixel_writer& group);

  const Pixel_map& map() const { return map_; }

 private:
  Shuffled_flood(Pixel_map map, std::vector<std::uint32_t> places,
                 const std::vector<Placed_pixel>& banded);
  std::uint32_t rank_of(std::uint32_t place) const;
  void take_around(std::uint32_t place);
  void queue_in_order(std::size_t first);
  void write(Pixel_writer& group) const;

  Pixel_map map_;
  std::vector<Pixel_map::Word> pixels_;  // the map as it was before any was taken
  std::vector<std::uint32_t> before_;    // the number of pixels in all words before a word
  std::vector<std::uint32_t> places_;    // by input index
  std::vector<std::uint32_t> index_of_;  // by rank
  std::vector<std::uint32_t> queue_;     // places
  std::size_t next_ = 0;                 // no point before it is free
};

}  // namespace chart_trace
