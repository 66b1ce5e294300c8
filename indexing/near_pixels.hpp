#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "indexing/packed_pixels.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// Whether no two pixels of a picture are farther apart than 32767 across or down, so that squares
// of their distances fit 32 bits.
inline bool are_near(const Pixel_frame& frame) {
  return frame.right - frame.left <= 32767 && frame.bottom - frame.top <= 32767;
}

// The square of the distance between two pixels that are near each other in this way.
inline std::int32_t square_between(Packed_pixel a, Packed_pixel b) {
  const auto dx = static_cast<std::int16_t>(column_of(a) - column_of(b));
  const auto dy = static_cast<std::int16_t>(row_of(a) - row_of(b));
  return dx * dx + dy * dy;
}

// The pixels that lie near a centre: those whose squared distance to it is at most
// `largest_square`. It may be asked only about pixels that are near the centre in the way told
// above.
struct Pixel_disc {
  Packed_pixel centre;
  std::int32_t largest_square;

  bool holds(Packed_pixel pixel) const { return square_between(centre, pixel) <= largest_square; }
};

#if defined(__SSE2__)
// Every 64-bit x86 has these instructions: four pixels at a time. Without branches, as the border
// of a disc cannot be guessed.
class Four_pixels {
 public:
  explicit Four_pixels(const Pixel_disc& disc)
      : centre_(_mm_set1_epi32(static_cast<std::int32_t>(disc.centre))),
        largest_(_mm_set1_epi32(disc.largest_square)) {}

  // All bits of each pixel that the disc does not hold.
  __m128i outside(__m128i pixels) const {
    const __m128i away = _mm_sub_epi16(centre_, pixels);
    return _mm_cmpgt_epi32(_mm_madd_epi16(away, away), largest_);
  }
  __m128i outside(const Packed_pixel* pixels) const {
    return outside(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels)));
  }

 private:
  __m128i centre_;
  __m128i largest_;
};
#endif

// Which of `count` pixels, at most 64, the disc holds: bit k for pixels[k].
inline std::uint64_t near_pixels(const Packed_pixel* pixels, std::size_t count,
                                 const Pixel_disc& disc) {
  std::uint64_t near = 0;
  std::size_t k = 0;
#if defined(__SSE2__)
  const Four_pixels four(disc);
  for (; k + 16 <= count; k += 16) {
    const Packed_pixel* const next = pixels + k;
    const __m128i first = _mm_packs_epi32(four.outside(next), four.outside(next + 4));
    const __m128i second = _mm_packs_epi32(four.outside(next + 8), four.outside(next + 12));
    const int far = _mm_movemask_epi8(_mm_packs_epi16(first, second));
    near |= static_cast<std::uint64_t>(far ^ 0xFFFF) << k;
  }
#endif
  for (; k < count; ++k) near |= static_cast<std::uint64_t>(disc.holds(pixels[k])) << k;
  return near;
}

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
  const Four_pixels four_pixels(disc);
  const __m128i empty = _mm_set1_epi32(static_cast<std::int32_t>(nowhere));
  const __m128i lower_half = _mm_set1_epi32(0xFFFF);
  __m128i counts = _mm_setzero_si128();
  __m128i columns = _mm_setzero_si128();
  __m128i rows = _mm_setzero_si128();
  for (; k + 4 <= count; k += 4) {
    auto* const four = reinterpret_cast<__m128i*>(places + k);
    const __m128i pixels = _mm_loadu_si128(four);
    const __m128i stays = four_pixels.outside(pixels);
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
