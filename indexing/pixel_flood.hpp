#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "indexing/line_walk.hpp"
#include "indexing/pixel_map.hpp"
#include "indexing/pixel_writer.hpp"

namespace chart_trace {

// Flood fill, breadth first, of a picture in raster order: each pixel of the queue takes the free
// ones among its eight neighbours, in input order, which is place order.
//
// In a filled shape the queue is made of stretches: pixels side by side on a row, or one below the
// other in a column. They are taken, queued and written as such, so that most pixels cost a few
// bits. What a stretch takes is found for its pixels together, for the order of taking is known: of
// a stretch along a row, each pixel after the first finds nothing new but in the column on its
// right; of one down a column, nothing new but in the row below it. When the queue is full, the
// stretches whose turn is over are written to their group and leave it, so that it stays short.
//
// A line one pixel thick has no stretches to speak of: it is left to a Line_walk.
class Pixel_flood {
 public:
  // Whether a box with this half side around a pixel holds its eight neighbours and no others.
  // Distances on the map are whole: 1 is inside whatever the rounding, and 2 outside, since the
  // bound is at least 2^-10 nearer, which is not lost in rounding.
  static bool reaches_eight(double half) { return half >= 1.0 && half <= 2.0 - 1.0 / 1024; }

  explicit Pixel_flood(Pixel_map map);
  Pixel_flood(const Pixel_flood&) = delete;
  Pixel_flood& operator=(const Pixel_flood&) = delete;

  // Fills the group of the first free pixel and writes it; false when there is none left.
  bool next_group(Pixel_writer& group);

  const Pixel_map& map() const { return map_; }

 private:
  // `length` pixels from `place` on along a row, or -length pixels down a column; 1 when single, 0
  // when single and already written, so that it must not grow.
  struct Stretch {
    std::uint32_t place;
    std::int32_t length;

    bool is_single() const { return length == 0 || length == 1; }
  };

  // What is done once or more for each stretch is inline: the calls would take a tenth of the time.
  void fill();
  void take_around(std::uint32_t place);
  void follow_line();
  inline void take_along(std::uint32_t place, std::int32_t length);
  inline void take_down(std::uint32_t place, std::int32_t height);
  void queue_columns(std::uint32_t corner, Pixel_map::Word above, Pixel_map::Word own,
                     Pixel_map::Word below);
  void queue_row(std::uint32_t place, Pixel_map::Word pixels);
  inline void queue_along(std::uint32_t place, std::int32_t length);
  inline void queue_down(std::uint32_t place, std::int32_t length);
  inline void push(Stretch stretch);
  void clear_queue();
  void make_room();
  void write(const Stretch* end) const;

  Pixel_map map_;
  Line_walk line_walk_;
  std::size_t seed_word_ = 0;      // no pixel before it is free
  Pixel_writer* group_ = nullptr;  // the one in hand
  std::vector<Stretch> queue_;     // of the group in hand, from the first that is not written on
  Stretch* head_;                  // the stretch that is in hand next
  Stretch* end_;                   // of the queue
  Stretch* room_end_;              // of the room for it
};

}  // namespace chart_trace
