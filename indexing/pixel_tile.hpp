#pragma once

#include <cstdint>

namespace chart_trace {

// 8 by 8 pixels as a word: bit 8 * row + column is the pixel in that row and column.
using Pixel_tile = std::uint64_t;

// The number of pixels of a tile, and the sums of their columns and of their rows.
struct Tile_sums {
  std::int64_t count;
  std::int64_t columns;
  std::int64_t rows;
};

// Adds up all pixels at once: fields of 2, 4 and at last 8 bits, a row each, hold the number of
// their pixels and the sum of their columns; a multiplication adds up the rows.
inline Tile_sums sums_of(Pixel_tile tile) {
  constexpr std::uint64_t twos = 0x5555555555555555;
  constexpr std::uint64_t fours = 0x3333333333333333;
  constexpr std::uint64_t eights = 0x0f0f0f0f0f0f0f0f;
  constexpr std::uint64_t every_row = 0x0101010101010101;
  constexpr std::uint64_t row_numbers = 0x0001020304050607;
  const std::uint64_t odd = tile >> 1U & twos;
  const std::uint64_t pairs = (tile & twos) + odd;
  const std::uint64_t upper_pairs = pairs >> 2U & fours;
  const std::uint64_t quads = (pairs & fours) + upper_pairs;
  const std::uint64_t quad_sums = (odd & fours) + (odd >> 2U & fours) + 2 * upper_pairs;
  const std::uint64_t upper_quads = quads >> 4U & eights;
  const std::uint64_t counts = (quads & eights) + upper_quads;
  const std::uint64_t sums = (quad_sums & eights) + (quad_sums >> 4U & eights) + 4 * upper_quads;
  return {static_cast<std::int64_t>(counts * every_row >> 56U),
          static_cast<std::int64_t>(sums * every_row >> 56U),
          static_cast<std::int64_t>(counts * row_numbers >> 56U)};
}

}  // namespace chart_trace
