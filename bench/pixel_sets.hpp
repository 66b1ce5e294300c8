#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

// The inputs that every benchmark runs on: pixels of one colour as five kinds of charts have them,
// each in three orders. The same arguments give the same pixels on every run.

namespace chart_trace_bench {

// A point set: point i is (x[i], y[i]), in image pixels, y growing downwards.
struct Pixels {
  std::vector<double> x;
  std::vector<double> y;
};

enum class Shape {
  discs,   // scatter markers: discs of 13 pixels across that do not touch
  bars,    // a bar chart: bars 24 pixels wide with gaps between them
  areas,   // a histogram: one filled area under bins 16 pixels wide
  curves,  // wavy lines one pixel thick, one below the other
  steps,   // step lines one pixel thick, one below the other
};

enum class Order {
  raster,    // row by row from the top, each from left to right
  columns,   // column by column from the left, each from the top
  shuffled,  // any
};

constexpr std::array<Shape, 5> all_shapes = {Shape::discs, Shape::bars, Shape::areas, Shape::curves,
                                             Shape::steps};
constexpr std::array<Order, 3> all_orders = {Order::raster, Order::columns, Order::shuffled};

std::string name_of(Shape shape);
std::string name_of(Order order);

// The other way round. Throws std::invalid_argument when there is none of that name.
Shape shape_named(const std::string& name);
Order order_named(const std::string& name);

// Exactly `count` different pixels. The picture grows with `count` as a larger chart would; the
// thickness of lines and the size of markers stay.
Pixels pixels_of(Shape shape, Order order, std::size_t count);

// `count` points with fractional coordinates, evenly distributed over a square with this side.
Pixels random_points(std::size_t count, double side);

}  // namespace chart_trace_bench
