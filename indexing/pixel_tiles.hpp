#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "indexing/pixel_tile.hpp"
#include "indexing/taken_points.hpp"

namespace chart_trace {

// The pixels of a picture, to be taken out disc by disc, each around the first pixel left in input
// order: a bitmap of their bounding box, cut into tiles.
//
// Why the answers are exact: coordinates are whole numbers, few and small enough that neither the
// square of a distance nor any sum of them needs rounding. So a disc holds the same pixels in
// whole-number arithmetic, and the order of a sum does not matter: it can be taken tile by tile.
//
// Cost: a pass over the points to find the runs of pixels, and one over the runs to paint them. A
// disc costs its tiles, 64 pixels at a time; tiles that are empty, or have become so, are skipped
// 64 at a time.
class Pixel_tiles {
 public:
  // Nothing unless the points are all different, all whole numbers, dense enough, at least one to
  // every two tiles and to every four rows and columns, and no side or sum grows beyond what is
  // exact. A disc is the pixels whose squared distance to its centre is at most `largest_square`, a
  // finite number not below 0.
  static std::optional<Pixel_tiles> of(const std::vector<double>& x, const std::vector<double>& y,
                                       double largest_square);

  // Takes the disc around the first pixel left; nothing when none is left.
  std::optional<Taken_points> take_next();

 private:
  // Pixels side by side on a row that follow each other in the input. If the picture comes column
  // by column, columns are rows here: x and y are exchanged in all that follows.
  struct Run {
    std::uint32_t start;  // the first point's index; once painted, its place: 64 * tile + bit
    std::uint32_t length;
  };
  // The bounding box: the corner pixel and the number of pixels to each side.
  struct Frame {
    double left, top;
    std::int64_t width, height;
  };
  // Sums over pixels, in pixels from the left and from the top edge of the frame.
  struct Sums {
    std::int64_t count = 0;
    std::int64_t x = 0;
    std::int64_t y = 0;
  };

  Pixel_tiles() = default;
  bool find_runs(const std::vector<double>& x, const std::vector<double>& y);
  bool set_frame(double left, double right, double top, double bottom, double count);
  bool paint(const std::vector<double>& x, const std::vector<double>& y);
  void measure_disc(double largest_square);
  Sums take_disc(std::int64_t x, std::int64_t y);
  void take_from_row(std::int64_t tile_row, std::int64_t x, std::int64_t y, Sums& sums);
  Pixel_tile disc_in_tile(std::int64_t dx, std::int64_t dy) const;

  bool is_exchanged_ = false;
  std::unique_ptr<Run[]> runs_;  // room for a run a point, of which only what is needed is touched
  std::size_t run_count_ = 0;
  std::size_t next_run_ = 0;  // none before it has a pixel left
  Frame frame_{};
  std::int64_t tiles_across_ = 0, tiles_down_ = 0;
  std::vector<Pixel_tile> tiles_;        // row by row
  std::vector<std::uint64_t> occupied_;  // a bit for each tile that is not empty
  // half_widths_[d]: how far the disc reaches to both sides d rows from its centre, up to reach_;
  // -1 in the rows that follow.
  std::vector<std::int32_t> half_widths_;
  std::int64_t reach_ = 0;
};

}  // namespace chart_trace
