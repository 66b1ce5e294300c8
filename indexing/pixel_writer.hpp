#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "indexing/packed_pixels.hpp"
#include "indexing/pixel_map.hpp"
#include "indexing/point_writer.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// Writes pixels, which it is told by their places on a map, one behind the other: packed, a quarter
// of the memory, or as points where the map is not one of packed pixels.
class Pixel_writer {
 public:
  // Packed pixels are written in whole blocks, however few are wanted: that is cheaper than a loop
  // whose end cannot be guessed. So many more behind the last one may be overwritten.
  static constexpr std::uint32_t spare = 3;

  // Writes packed pixels from `pixels` on; the map must be one that holds_packed(). Its columns are
  // those of the pixels, or their rows if it is turned.
  Pixel_writer(const Pixel_map& map, bool is_turned, Packed_pixel* pixels)
      : map_(&map),
        to_neighbours_(is_turned ? turned.data() : upright.data()),
        along_(is_turned ? &downwards : &rightwards),
        down_(is_turned ? &rightwards : &downwards),
        across_(along_->to[1]),
        origin_(whole(map.column_of(0)) * across_ + whole(map.row_of(0)) * down_->to[1]),
        to_row_(down_->to[1] - map.stride() * across_),
        stride_(map.stride()),
        begin_(pixels),
        next_(pixels) {}

  // Writes points; what a column is on the map is one there.
  Pixel_writer(const Pixel_map& map, Point_writer& points) : map_(&map), points_(&points) {}

  // The number of pixels written.
  std::size_t count() const {
    return points_ == nullptr ? static_cast<std::size_t>(next_ - begin_) : points_->count();
  }

  void add(std::uint32_t place) { add(place, pixel_at(place)); }

  // The same of a pixel that is known already: see pixel_at().
  void add(std::uint32_t place, Packed_pixel pixel) {
    if (points_ == nullptr) {
      *next_++ = pixel;
    } else {
      add_points_along(*map_, place, 1, *points_);
    }
  }

  // The packed pixel at a place; anything where points are written. A pixel beside a known one is
  // known by what to add to it, without the division: to_neighbours()[k] for the k-th of the nine
  // around it, in place order. Sums wrap around on the way to what lies on the map.
  Packed_pixel pixel_at(std::uint32_t place) const {
    return origin_ + place * across_ + place / stride_ * to_row_;
  }
  const Packed_pixel* to_neighbours() const { return to_neighbours_; }

  // `length` pixels side by side, each one to the right of the one before.
  void add_along(std::uint32_t place, std::size_t length) {
    if (points_ == nullptr) {
      add_blocks(pixel_at(place), *along_, length);
    } else {
      add_points_along(*map_, place, length, *points_);
    }
  }

  // `length` pixels one below the other.
  void add_down(std::uint32_t place, std::size_t length) {
    if (points_ == nullptr) {
      add_blocks(pixel_at(place), *down_, length);
    } else {
      add_points_down(*map_, place, length, *points_);
    }
  }

 private:
  static constexpr std::uint32_t block = spare + 1;

  // What leads from a pixel to those of a block.
  struct alignas(16) Steps {
    Packed_pixel to[block];
  };
  static constexpr Steps rightwards{{0, one_right, 2 * one_right, 3 * one_right}};
  static constexpr Steps downwards{{0, one_down, 2 * one_down, 3 * one_down}};
  static const std::array<Packed_pixel, 9> upright, turned;
  static void add_points_along(const Pixel_map& map, std::uint32_t place, std::size_t length,
                               Point_writer& points);
  static void add_points_down(const Pixel_map& map, std::uint32_t place, std::size_t length,
                              Point_writer& points);

  // One place before the first pixel, the column or row may be -1.
  static Packed_pixel whole(double value) {
    return static_cast<Packed_pixel>(static_cast<std::int32_t>(value));
  }

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

  const Pixel_map* map_;
  Point_writer* points_ = nullptr;
  const Packed_pixel* to_neighbours_ = upright.data();
  const Steps* along_ = &rightwards;  // on the map
  const Steps* down_ = &downwards;
  Packed_pixel across_ = 0;  // from a pixel to the next one on the same row of the map
  Packed_pixel origin_ = 0;  // the pixel at place 0
  Packed_pixel to_row_ = 0;  // from what is behind the last column to the next row
  std::uint32_t stride_ = 1;
  Packed_pixel* begin_ = nullptr;
  Packed_pixel* next_ = nullptr;
};

}  // namespace chart_trace
