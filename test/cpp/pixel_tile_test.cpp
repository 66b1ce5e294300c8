#include "indexing/pixel_tile.hpp"

#include <gtest/gtest.h>

#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

using chart_trace::Pixel_tile;
using chart_trace::sums_of;
using chart_trace::Tile_sums;

void expect_sums(Pixel_tile tile) {
  Tile_sums want{0, 0, 0};
  for (int bit = 0; bit < 64; ++bit) {
    if ((tile >> bit & 1U) == 0) continue;
    want = {want.count + 1, want.columns + bit % 8, want.rows + bit / 8};
  }
  const Tile_sums got = sums_of(tile);
  EXPECT_EQ(got.count, want.count) << tile;
  EXPECT_EQ(got.columns, want.columns) << tile;
  EXPECT_EQ(got.rows, want.rows) << tile;
}

TEST(Pixel_tile, sums_of_nothing_and_of_everything_are_right) {
  expect_sums(0);
  expect_sums(~Pixel_tile{0});
}

TEST(Pixel_tile, sums_of_one_pixel_and_of_all_but_one_are_right) {
  for (int bit = 0; bit < 64; ++bit) {
    expect_sums(Pixel_tile{1} << bit);
    expect_sums(~(Pixel_tile{1} << bit));
  }
}

TEST(Pixel_tile, sums_of_any_pixels_are_right) {
  Random random(1);
  for (int i = 0; i < 1000; ++i) {
    const Pixel_tile tile = random.below(~std::uint64_t{0});
    expect_sums(tile);
    expect_sums(tile & random.below(~std::uint64_t{0}));
  }
}

}  // namespace
}  // namespace chart_trace_test
