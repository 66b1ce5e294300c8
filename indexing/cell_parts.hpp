#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

#include "indexing/bits.hpp"
#include "indexing/box.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {

// Where a point lies, in parts of a cell, but for whole multiples of 64 cells.
struct Mark {
  std::uint16_t across;
  std::uint16_t down;
};

// A box, and the parts that its bounds lie in.
struct Window {
  Box box;
  std::uint64_t left, right, low, high;

  Mark corner() const {
    return {static_cast<std::uint16_t>(left), static_cast<std::uint16_t>(low)};
  }
  // How many parts lie between the bounds; all, when there are more than a mark can tell apart.
  Mark size() const { return {least(right - left), least(high - low)}; }

 private:
  static std::uint16_t least(std::uint64_t parts) {
    return static_cast<std::uint16_t>(parts < 0xFFFF ? parts : 0xFFFF);
  }
};

// Divides the plane into square cells as wide as a box, and each cell into parts.
//
// The number of the part that a coordinate lies in never decreases with the coordinate, rounding
// included, and no more does that of its cell. So the parts from that of a box's lower bound to
// that of its upper bound hold every point of the box.
class Cell_parts {
 public:
  static constexpr std::uint64_t in_cell = 1024;

  // `side` is that of the boxes.
  explicit Cell_parts(double side) : in_one_(cells_in_one(side) * static_cast<double>(in_cell)) {}

  // A coordinate counted in parts, without its fraction. Where doubles are further apart than one
  // part, each is a part of its own, numbered by its bits, which rise with it.
  std::uint64_t part_of(double coordinate) const {
    if (in_one_ == 0.0) return zero;
    const double parts = coordinate * in_one_;
    const double size = std::fabs(parts);
    if (size < all_whole)
      return zero + static_cast<std::uint64_t>(static_cast<std::int64_t>(parts));
    const std::uint64_t part =
        bits_of(size) - bits_of(all_whole) + static_cast<std::uint64_t>(all_whole);
    return parts < 0 ? zero - part : zero + part;
  }

  Mark mark_of(double x, double y) const {
    return {static_cast<std::uint16_t>(part_of(x)), static_cast<std::uint16_t>(part_of(y))};
  }

  Window around(const Box& box) const {
    return {box, part_of(box.left), part_of(box.right), part_of(box.low), part_of(box.high)};
  }

 private:
  static constexpr double all_whole = 4503599627370496.0;  // 2^52, from where doubles are one apart
  static constexpr std::uint64_t zero = std::uint64_t{1} << 63;  // the part that 0.0 lies in

  // A box as wide as a cell lies in two of them, or in a third when it is rounded; outside this
  // range of sizes the quotient could overflow or vanish. Boxes that are far smaller than one, or
  // have no size, find their few points in cells that measure one; nearly everything lies in one
  // that is far larger than that.
  static double cells_in_one(double side) {
    if (side > 1e150) return 0.0;
    return side > 1e-150 ? 1.0 / side : 1.0;
  }

  double in_one_;  // parts in a length of one; 0 when all points share a cell
};

// How many marks may be read behind the last one that counts.
constexpr std::uint32_t marks_behind = 7;

#if defined(__SSE2__)

// Every 64-bit x86 has these: eight marks are compared at once.
class Mark_test {
 public:
  explicit Mark_test(const Window& window)
      : corner_(repeated(window.corner())), size_(repeated(window.size())) {}

  // Which of eight points may lie in the window, a bit each. Outside stands for sure.
  std::uint64_t which_of_eight(const Mark* marks) const {
    const __m128i both = _mm_packs_epi32(are_near(marks), are_near(marks + 4));
    return static_cast<std::uint64_t>(_mm_movemask_epi8(_mm_packs_epi16(both, __m128i{})));
  }

 private:
  static __m128i repeated(Mark mark) {
    std::int32_t both = 0;
    std::memcpy(&both, &mark, sizeof both);
    return _mm_set1_epi32(both);
  }

  // Parts wrap around, as marks do; what is left of their distance beyond the size must be 0.
  __m128i are_near(const Mark* marks) const {
    const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(marks));
    const __m128i beyond = _mm_subs_epu16(_mm_sub_epi16(four, corner_), size_);
    return _mm_cmpeq_epi32(beyond, __m128i{});
  }

  __m128i corner_;
  __m128i size_;
};

#else

class Mark_test {
 public:
  explicit Mark_test(const Window& window) : corner_(window.corner()), size_(window.size()) {}

  std::uint64_t which_of_eight(const Mark* marks) const {
    std::uint64_t near = 0;
    for (unsigned k = 0; k < 8; ++k) near |= std::uint64_t{is_near(marks[k])} << k;
    return near;
  }

 private:
  bool is_near(Mark mark) const {
    return static_cast<std::uint16_t>(mark.across - corner_.across) <= size_.across &&
           static_cast<std::uint16_t>(mark.down - corner_.down) <= size_.down;
  }

  Mark corner_;
  Mark size_;
};

#endif

// Which of up to 64 points may lie in a window, a bit each; bits from `count` on say nothing.
inline std::uint64_t which_are_near(const Mark* marks, std::uint32_t count, const Window& window) {
  const Mark_test test(window);
  std::uint64_t near = test.which_of_eight(marks);
  for (std::uint32_t k = 8; k < count; k += 8) near |= test.which_of_eight(marks + k) << k;
  return near;
}

}  // namespace chart_trace
