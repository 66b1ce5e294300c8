#include "indexing/near_pixels.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::column_of;
using chart_trace::Packed_pixel;
using chart_trace::Pixel_disc;
using chart_trace::Pixel_sums;
using chart_trace::row_of;

Packed_pixel packed(std::int64_t x, std::int64_t y) {
  return static_cast<Packed_pixel>(x) | static_cast<Packed_pixel>(y) << 16;
}

bool is_near(Packed_pixel a, Packed_pixel b, std::int64_t largest_square) {
  const std::int64_t dx = std::int64_t{column_of(a)} - column_of(b);
  const std::int64_t dy = std::int64_t{row_of(a)} - row_of(b);
  return dx * dx + dy * dy <= largest_square;
}

// Squares of whole numbers lie at just the largest one here and there. Pixels lie around the centre
// and as far away as is allowed, in the middle of all places and at their end.
TEST(near_pixels, are_taken_whatever_their_number) {
  for (const std::int64_t origin : {0, 32700, 65500}) {
    for (const std::int32_t square : {0, 25, 100000}) {
      for (std::size_t count = 0; count <= 40; ++count) {
        Random random(count);
        const Pixel_disc disc{packed(origin + 20, origin + 15), square};
        const Packed_pixel nowhere = origin < 60000 ? packed(origin + 20, origin + 15 + 32767)
                                                    : packed(origin + 20, origin + 15 - 32767);
        std::vector<Packed_pixel> places(count);
        for (Packed_pixel& place : places) {
          place = random.one_in(9) ? nowhere
                                   : packed(origin + static_cast<std::int64_t>(random.below(36)),
                                            origin + static_cast<std::int64_t>(random.below(36)));
        }
        std::vector<Packed_pixel> left = places;
        Pixel_sums want;
        for (Packed_pixel& place : left) {
          ASSERT_EQ(disc.holds(place), is_near(place, disc.centre, square));
          if (!is_near(place, disc.centre, square)) continue;
          ++want.count;
          want.x += column_of(place);
          want.y += row_of(place);
          place = nowhere;
        }
        const std::uint64_t near = chart_trace::near_pixels(places.data(), count, disc);
        for (std::size_t k = 0; k < 64; ++k) {
          ASSERT_EQ(near >> k & 1U, k < count && disc.holds(places[k]) ? 1U : 0U) << k;
        }
        const Pixel_sums got = chart_trace::take_near(places.data(), count, disc, nowhere);
        ASSERT_EQ(got.count, want.count) << count << " places at " << origin << ", " << square;
        ASSERT_EQ(got.x, want.x) << count << " places at " << origin << ", " << square;
        ASSERT_EQ(got.y, want.y) << count << " places at " << origin << ", " << square;
        ASSERT_EQ(places, left) << count << " places at " << origin << ", " << square;
      }
    }
  }
}

TEST(near_pixels, are_all_of_64) {
  const std::vector<Packed_pixel> places(64, packed(9, 9));
  EXPECT_EQ(chart_trace::near_pixels(places.data(), 64, {packed(9, 8), 1}), ~std::uint64_t{0});
  EXPECT_EQ(chart_trace::near_pixels(places.data(), 64, {packed(9, 8), 0}), 0U);
}

TEST(near_pixels, lie_in_a_picture_of_at_most_32768_columns_and_rows) {
  const auto far = [](std::int32_t across, std::int32_t down) {
    return chart_trace::are_near({30, 30 + across, 20, 20 + down});
  };
  EXPECT_TRUE(far(32767, 32767));
  EXPECT_FALSE(far(32768, 0));
  EXPECT_FALSE(far(0, 32768));
}

// As many as may be, in the last column and row.
TEST(near_pixels, have_sums_beyond_32_bits) {
  const Packed_pixel last = packed(65535, 65535);
  std::vector<Packed_pixel> places(std::size_t{1} << 18, last);
  const Pixel_sums got = chart_trace::take_near(places.data(), places.size(), {last, 0}, 0);
  EXPECT_EQ(got.count, 262144U);
  EXPECT_EQ(got.x, std::uint64_t{262144} * 65535);
  EXPECT_EQ(got.y, std::uint64_t{262144} * 65535);
  EXPECT_EQ(places, std::vector<Packed_pixel>(places.size(), 0));
}

}  // namespace
}  // namespace chart_trace_test
