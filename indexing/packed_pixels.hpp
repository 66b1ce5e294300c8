#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace chart_trace {

// A point whose coordinates are whole numbers from 0 to 65535, as those of pixels are: its x in the
// lower half, its y in the upper one.
using Packed_pixel = std::uint32_t;
inline std::uint32_t column_of(Packed_pixel pixel) { return pixel & 0xFFFFU; }
inline std::uint32_t row_of(Packed_pixel pixel) { return pixel >> 16; }
// What leads from a pixel to the next one on its row, and to the one below it.
constexpr Packed_pixel one_right = 1;
constexpr Packed_pixel one_down = 1 << 16;
// The pixel at (x, y). Of a place just outside it is a number from which these lead back to pixels,
// as sums wrap around.
constexpr Packed_pixel packed(std::int32_t x, std::int32_t y) {
  return static_cast<Packed_pixel>(x) * one_right + static_cast<Packed_pixel>(y) * one_down;
}

// So many pixels, a quarter of their size as points: what is read again and again, or sorted, stays
// in a near cache. Until they are written they are anything, as clearing them first would take as
// long as reading them.
class Packed_pixels {
 public:
  explicit Packed_pixels(std::size_t count) : pixels_(new Packed_pixel[count]), size_(count) {}

  std::size_t size() const { return size_; }
  // Forgets all behind the first `count`, in the same memory.
  void shrink(std::size_t count) { size_ = count; }
  Packed_pixel* data() { return pixels_.get(); }
  const Packed_pixel* data() const { return pixels_.get(); }
  Packed_pixel operator[](std::size_t i) const { return pixels_[i]; }

  // The coordinates of the first of them, as many as `x` and `y` hold, are written there.
  void unpack(std::vector<double>& x, std::vector<double>& y) const;

 private:
  std::unique_ptr<Packed_pixel[]> pixels_;
  std::size_t size_;
};

// The outermost columns and rows that hold a pixel.
struct Pixel_frame {
  std::int32_t left = 65535, right = 0, top = 65535, bottom = 0;
  void include(Packed_pixel pixel) {
    const auto column = static_cast<std::int32_t>(column_of(pixel));
    const auto row = static_cast<std::int32_t>(row_of(pixel));
    left = std::min(left, column);
    right = std::max(right, column);
    top = std::min(top, row);
    bottom = std::max(bottom, row);
  }
};

// The frame of some pixels, at least one, and the sums of their columns and of their rows.
struct Pixel_totals {
  Pixel_frame frame;
  std::uint64_t columns = 0;
  std::uint64_t rows = 0;
};
// Cost: one pass, some 0.2 ns a pixel.
Pixel_totals totals_of(const Packed_pixel* pixels, std::size_t count);

// All points of a set in input order.
struct Packed_set {
  Packed_pixels pixels;
  Pixel_frame frame;
};

// Nothing if any of the points is no pixel; a -0.0 is none, as its sign would be lost.
// Exact: a coordinate is taken for the whole number that converts to the same bits.
// Cost: one pass, some 0.7 ns a point.
std::optional<Packed_set> packed_set(const std::vector<double>& x, const std::vector<double>& y);

// The same of packed pixels.
Packed_set framed(Packed_pixels pixels);

}  // namespace chart_trace
