#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "indexing/packed_pixels.hpp"
#include "indexing/pixel_map.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// Writes pixels, which it is told by their places on a map, one behind the other.
class Pixel_writer {
 public:
  // Pixels are written in whole blocks, however few are wanted: that is cheaper than a loop whose
  // end cannot be guessed. So many more behind the last one may be overwritten.
  static constexpr std::uint32_t spare = 3;

  // Writes from `pixels` on. The pixel at place 0 is `origin`; sums wrap around on the way to those
  // that are written. If the map is turned, its columns are the rows of the pixels.
  Pixel_writer(const Pixel_map& map, Packed_pixel origin, bool is_turned, Packed_pixel* pixels)
      : along_(is_turned ? &downwards : &rightwards),
        down_(is_turned ? &rightwards : &downwards),
        to_neighbours_(is_turned ? turned.data() : upright.data()),
        across_(along_->to[1]),
        to_row_(down_->to[1] - map.stride() * across_),
        origin_(origin),
        stride_(map.stride()),
        begin_(pixels),
        next_(pixels) {}

  // The number of pixels written.
  std::size_t count() const { return static_cast<std::size_t>(next_ - begin_); }

  // The pixel at a place. One beside a known pixel is known by what to add to it, without the
  // division: to_neighbours()[k] for the k-th of the nine around it, in place order.
  Packed_pixel pixel_at(std::uint32_t place) const {
    return origin_ + place * across_ + place / stride_ * to_row_;
  }
  const Packed_pixel* to_neighbours() const { return to_neighbours_; }

  void add(Packed_pixel pixel) { *next_++ = pixel; }

  void add_at(std::uint32_t place) { add(pixel_at(place)); }

  // `length` pixels side by side on the map, from a place to the right.
  void add_along(std::uint32_t place, std::size_t length) {
    add_blocks(pixel_at(place), *along_, length);
  }

  // `length` pixels one below the other on the map.
  void add_down(std::uint32_t place, std::size_t length) {
    add_blocks(pixel_at(place), *down_, length);
  }

 private:
  static constexpr std::uint32_t block = spare + 1;

  // What leads from a pixel to those of a block.
  struct alignas(16) Steps {
    Packed_pixel to[block];
  };
  static constexpr Steps rightwards{{0, one_right, 2 * one_right, 3 * one_right}};
  static constexpr Steps downwards{{0, one_down, 2 * one_down, 3 * one_down}};

  using Nine = std::array<Packed_pixel, 9>;
  static constexpr Nine upright{packed(-1, -1), packed(0, -1), packed(1, -1),  // above
                                packed(-1, 0),  packed(0, 0),  packed(1, 0),   // beside
                                packed(-1, 1),  packed(0, 1),  packed(1, 1)};
  static constexpr Nine turned{packed(-1, -1), packed(-1, 0), packed(-1, 1),  // before
                               packed(0, -1),  packed(0, 0),  packed(0, 1),   // beside
                               packed(1, -1),  packed(1, 0),  packed(1, 1)};

  void add_blocks(Packed_pixel first, const Steps& steps, std::size_t length) {
    Packed_pixel* place = next_;
    next_ += length;
    const Packed_pixel* const end = next_;
#if defined(__SSE2__)
    // Every 64-bit x86 has these.
    const __m128i to_next = _mm_set1_epi32(static_cast<std::int32_t>(block * steps.to[1]));
    __m128i pixels = _mm_add_epi32(_mm_set1_epi32(static_cast<std::int32_t>(first)),
                                   _mm_load_si128(reinterpret_cast<const __m128i*>(steps.to)));
    for (; place < end; place += block, pixels = _mm_add_epi32(pixels, to_next)) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(place), pixels);
    }
#else
    for (; place < end; place += block, first += block * steps.to[1]) {
      for (std::size_t k = 0; k < block; ++k) place[k] = first + steps.to[k];
    }
#endif
  }

  const Steps* along_;
  const Steps* down_;
  const Packed_pixel* to_neighbours_;
  Packed_pixel across_;  // from a pixel to the next one on its row of the map
  Packed_pixel to_row_;  // from what is behind the last column to the next row
  Packed_pixel origin_;
  std::uint32_t stride_;
  Packed_pixel* begin_;
  Packed_pixel* next_;
};

}  // namespace chart_trace
