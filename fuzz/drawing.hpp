// Turns any bytes into an input of the module: a small drawing language, so that a search that
// changes bytes at random still meets pictures, and from there everything that is no picture.
//
// The first bytes choose what is run and with which step and fraction; each further command moves a
// cursor on a lattice, draws runs and rectangles, repeats or copies what is there, puts the points
// into another order, or adds doubles that lie on no lattice: NaN, infinities, -0.0, the neighbours
// of 2^24 and 2^53, any 64 bits. Every byte string is a drawing; one that ends early is one of
// fewer commands. The drawing is a function of the bytes alone, on every platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace chart_trace_fuzz {

struct Drawing {
  std::size_t subject = 0;  // which class or mode to run; taken modulo their number
  double step = 1.0;
  double fraction = 0.05;
  std::vector<double> x;
  std::vector<double> y;
};

// At most this many points are drawn: the oracle's time grows with their square.
constexpr std::size_t most_points = 1200;

Drawing draw(const std::uint8_t* bytes, std::size_t size);

}  // namespace chart_trace_fuzz
