#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "indexing/packed_pixels.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// The pixels that lie near a centre: those whose squared distance to it is at most
// `largest_square`. No pixel that it is asked about may be farther away than 32767 across or down,
// so that squares fit 32 bits.
struct Pixel_disc {
  Packed_pixel centre;
  std::int32_t largest_square;

  bool holds(Packed_pixel pixel) const {
    const auto dx = static_cast<std::int16_t>(column_of(centre) - column_of(pixel));
    const auto dy = static_cast<std::int16_t>(row_of(centre) - row_of(pixel));
    return dx * dx + dy * dy <= largest_square;
  }
};

// Pixels that were taken: their number, and the sums of their columns and of their rows.
struct Pixel_sums {
  std::uint64_t count = 0;
  std::uint64_t x = 0;
  std::uint64_t y = 0;
};

// Takes the pixels that the disc holds of those in `count` places, at most 2^18. A place that one
// is taken from holds `nowhere` instead, a pixel that must not lie in the disc.
inline Pixel_sums take_near(Packed_pixel* places, std::size_t count, const Pixel_disc& disc,
                            Packed_pixel nowhere) {
  Pixel_sums sums;
  std::size_t k = 0;
#if defined(__SSE2__)
  // Every 64-bit x86 has these: four places at a time. Without branches, as the border of a disc
  // cannot be guessed.
  const __m128i centre = _mm_set1_epi32(static_cast<std::int32_t>(disc.centre));
  const __m128i largest = _mm_set1_epi32(disc.largest_square);
  const __m128i empty = _mm_set1_epi32(static_cast<std::int32_t>(nowhere));
  const __m128i lower_half = _mm_set1_epi32(0xFFFF);
  __m128i counts = _mm_setzero_si128();
  __m128i columns = _mm_setzero_si128();
  __m128i rows = _mm_setzero_si128();
  for (; k + 4 <= count; k += 4) {
    auto* const four = reinterpret_cast<__m128i*>(places + k);
    const __m128i pixels = _mm_loadu_si128(four);
    const __m128i away = _mm_sub_epi16(centre, pixels);
    const __m128i stays = _mm_cmpgt_epi32(_mm_madd_epi16(away, away), largest);
    const __m128i taken = _mm_andnot_si128(stays, pixels);
    counts = _mm_sub_epi32(counts, _mm_cmpeq_epi32(stays, _mm_setzero_si128()));
    columns = _mm_add_epi32(columns, _mm_and_si128(taken, lower_half));
    rows = _mm_add_epi32(rows, _mm_srli_epi32(taken, 16));
    const __m128i left = _mm_or_si128(_mm_and_si128(stays, pixels), _mm_andnot_si128(stays, empty));
    _mm_storeu_si128(four, left);
  }
  const auto sum_of = [](__m128i numbers) {
    std::uint32_t parts[4];
    std::memcpy(parts, &numbers, sizeof parts);
    return std::uint64_t{parts[0]} + parts[1] + parts[2] + parts[3];
  };
  sums = {sum_of(counts), sum_of(columns), sum_of(rows)};
#endif
  for (; k < count; ++k) {
    const Packed_pixel pixel = places[k];
    if (!disc.holds(pixel)) continue;
    ++sums.count;
    sums.x += column_of(pixel);
    sums.y += row_of(pixel);
    places[k] = nowhere;
  }
  return sums;
}

}  // namespace chart_trace
