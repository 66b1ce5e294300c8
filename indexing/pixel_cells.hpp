#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "indexing/near_pixels.hpp"
#include "indexing/packed_pixels.hpp"
#include "indexing/taken_points.hpp"

namespace chart_trace {

// The pixels of a picture, to be taken out disc by disc, each around the first pixel left in input
// order: sorted by the cells of a grid, some fifty to a cell.
//
// Why the answers are exact: coordinates are whole numbers, few and small enough that neither the
// square of a distance nor any sum of them needs rounding. So a disc holds the same pixels in
// whole-number arithmetic, and the order of a sum does not matter: it can be taken cell by cell.
// A cell only proposes its pixels, and each is asked in which a place of the disc lies.
//
// Why it is fast: pixels take 4 bytes, and most are looked at just once, four at a time: the first
// disc that comes by takes most cells whole, and an empty cell is passed over. Whatever a cell
// holds, few discs come by: seeds lie at least a radius apart, and a cell is no larger than about a
// radius, or 8 places to each side.
class Pixel_cells {
 public:
  // Nothing unless there are pixels, dense enough, at least one to every 128 places or so, and no
  // two farther apart than 16383 across or down. A disc is the pixels whose squared distance to its
  // centre is at most `largest_square`, a finite number not below 0. Cost: three short passes.
  static std::optional<Pixel_cells> of(const Packed_set& set, double largest_square);

  // Takes the disc around the first pixel left; nothing when none is left.
  std::optional<Taken_points> take_next();

 private:
  // Its places end where those of the next cell begin: a multiple of four, so that there may be a
  // few more than it has had pixels.
  struct Cell {
    std::uint32_t begin;
    std::uint32_t left;  // so many of its pixels have not been taken
  };

  Pixel_cells() = default;
  bool set_cells(std::size_t count, double largest_square);
  void number_cells(const Packed_pixels& pixels);
  void lay_out_cells();
  void deal_out(const Packed_pixels& pixels);
  std::optional<Packed_pixel> first_left();
  void take_from_row(std::int32_t row, const Pixel_disc& disc, Pixel_sums& sums);
  void take_from_cell(std::int32_t number, const Pixel_disc& disc, Pixel_sums& sums);

  Pixel_frame frame_;
  std::int32_t largest_square_ = 0;
  std::int32_t reach_ = 0;         // of a disc, to each side
  std::int32_t shift_ = 0;         // a cell has 2^shift_ places to each side
  std::int32_t across_ = 0;        // so many cells lie side by side
  std::int32_t first_number_ = 0;  // of the cells, counted row by row from place (0, 0)
  Packed_pixel nowhere_ = 0;       // out of reach of every disc: what an empty place holds
  std::vector<Cell> cells_;        // row by row, and one more, where the last one ends
  Packed_pixels places_{0};
  std::size_t count_ = 0;                      // of the pixels
  std::unique_ptr<std::uint32_t[]> place_of_;  // by pixel, in input order; not cleared first
  std::size_t next_ = 0;                       // no pixel before it is left
};

}  // namespace chart_trace
