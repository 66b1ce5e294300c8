#include "bench/pixel_sets.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace chart_trace_bench {
namespace {

struct Pixel {
  int x;
  int y;
};

// The standard fixes what the engine yields but not what its distributions do with it, so numbers
// are drawn by hand: the same on every machine.
class Dice {
 public:
  // A whole number from `low` to `high`, both included.
  int between(int low, int high) {
    return low + static_cast<int>(engine_() % static_cast<std::uint32_t>(high - low + 1));
  }
  // A number in [0, 1).
  double fraction() { return static_cast<double>(engine_()) / 4294967296.0; }

 private:
  std::mt19937 engine_{20240607};
};

// Takes pixels until it has as many as are wanted; what comes later is dropped, so that the last
// shape may be cut.
class Canvas {
 public:
  explicit Canvas(std::size_t wanted) : wanted_(wanted) { pixels_.reserve(wanted); }

  bool is_full() const { return pixels_.size() == wanted_; }
  void add(int x, int y) {
    if (!is_full()) pixels_.push_back({x, y});
  }
  void add_column(int x, int top, int bottom) {
    for (int y = top; y <= bottom; ++y) add(x, y);
  }
  std::vector<Pixel> take() && { return std::move(pixels_); }

 private:
  std::size_t wanted_;
  std::vector<Pixel> pixels_;
};

int side_of(double area) { return static_cast<int>(std::ceil(std::sqrt(area))); }

// A picture of 16 to 9, one marker to a cell, somewhere in it.
void paint_discs(Canvas& canvas, Dice& dice, double count) {
  constexpr int radius = 6;
  constexpr int cell = 24;
  const int cells_across = side_of(count / 113.0 * 16.0 / 9.0);
  for (int k = 0; !canvas.is_full(); ++k) {
    const int centre_x = k % cells_across * cell + dice.between(radius, cell - radius - 2);
    const int centre_y = k / cells_across * cell + dice.between(radius, cell - radius - 2);
    for (int dx = -radius; dx <= radius; ++dx) {
      const int reach = static_cast<int>(std::sqrt(radius * radius - dx * dx));
      canvas.add_column(centre_x + dx, centre_y - reach, centre_y + reach);
    }
  }
}

// Columns of `width` pixels that stand on one line, `pitch` pixels apart.
void paint_columns(Canvas& canvas, Dice& dice, int highest, int width, int pitch) {
  for (int left = 0; !canvas.is_full(); left += pitch) {
    const int top = highest - dice.between(highest / 5 + 1, highest);
    for (int x = left; x < left + width; ++x) canvas.add_column(x, top, highest);
  }
}

// Lines lie in bands of this height; a longer picture has more of them.
constexpr int band = 100;
int line_length(double count) { return 8 * side_of(count); }

void paint_curves(Canvas& canvas, Dice& dice, double count) {
  const int length = line_length(count);
  for (int middle = band / 2; !canvas.is_full(); middle += band) {
    const double phase = 6.28 * dice.fraction();
    const double long_wave = 0.02 / (1.0 + dice.fraction());
    const double short_wave = 0.1 / (1.0 + dice.fraction());
    int before = middle;
    for (int x = 0; x < length; ++x) {
      const int now = middle + static_cast<int>(35.0 * std::sin(long_wave * x + phase) +
                                                12.0 * std::sin(short_wave * x));
      // From the row next to the last column's end, so that the line is nowhere thicker than one.
      const int start = x == 0 || now == before ? now : now > before ? before + 1 : before - 1;
      canvas.add_column(x, std::min(start, now), std::max(start, now));
      before = now;
    }
  }
}

void paint_steps(Canvas& canvas, Dice& dice, double count) {
  const int length = line_length(count);
  for (int top = 0; !canvas.is_full(); top += band) {
    int height = top + dice.between(0, band - 10);
    for (int x = 0; x < length;) {
      for (const int end = x + dice.between(20, 60); x < end && x < length; ++x) {
        canvas.add(x, height);
      }
      const int next = top + dice.between(0, band - 10);
      if (x < length) canvas.add_column(x++, std::min(height, next), std::max(height, next));
      height = next;
    }
  }
}

std::vector<Pixel> paint(Shape shape, std::size_t wanted) {
  Canvas canvas(wanted);
  Dice dice;
  const auto count = static_cast<double>(wanted);
  switch (shape) {
    case Shape::discs:
      paint_discs(canvas, dice, count);
      break;
    case Shape::bars:
      paint_columns(canvas, dice, side_of(count * 1.5), 24, 40);
      break;
    case Shape::areas:
      paint_columns(canvas, dice, side_of(count * 0.9), 16, 16);
      break;
    case Shape::curves:
      paint_curves(canvas, dice, count);
      break;
    case Shape::steps:
      paint_steps(canvas, dice, count);
      break;
  }
  return std::move(canvas).take();
}

void arrange(std::vector<Pixel>& pixels, Order order) {
  const auto in_rows = [](Pixel a, Pixel b) { return std::tie(a.y, a.x) < std::tie(b.y, b.x); };
  const auto in_columns = [](Pixel a, Pixel b) { return std::tie(a.x, a.y) < std::tie(b.x, b.y); };
  if (order == Order::raster) std::sort(pixels.begin(), pixels.end(), in_rows);
  if (order == Order::columns) std::sort(pixels.begin(), pixels.end(), in_columns);
  if (order == Order::shuffled) {
    Dice dice;
    for (std::size_t i = pixels.size(); i > 1; --i) {
      std::swap(pixels[i - 1],
                pixels[static_cast<std::size_t>(dice.between(0, static_cast<int>(i) - 1))]);
    }
  }
}

template <class Values>
typename Values::value_type named(const Values& values, const std::string& name) {
  for (const auto value : values) {
    if (name_of(value) == name) return value;
  }
  throw std::invalid_argument("no pixel set is called " + name);
}

}  // namespace

std::string name_of(Shape shape) {
  switch (shape) {
    case Shape::discs:
      return "discs";
    case Shape::bars:
      return "bars";
    case Shape::areas:
      return "areas";
    case Shape::curves:
      return "curves";
    case Shape::steps:
      return "steps";
  }
  return "";
}

std::string name_of(Order order) {
  switch (order) {
    case Order::raster:
      return "raster";
    case Order::columns:
      return "columns";
    case Order::shuffled:
      return "shuffled";
  }
  return "";
}

Shape shape_named(const std::string& name) { return named(all_shapes, name); }
Order order_named(const std::string& name) { return named(all_orders, name); }

Pixels pixels_of(Shape shape, Order order, std::size_t count) {
  std::vector<Pixel> painted = paint(shape, count);
  arrange(painted, order);
  Pixels pixels;
  pixels.x.reserve(count);
  pixels.y.reserve(count);
  for (const Pixel pixel : painted) {
    pixels.x.push_back(pixel.x);
    pixels.y.push_back(pixel.y);
  }
  return pixels;
}

Pixels random_points(std::size_t count, double side) {
  Dice dice;
  Pixels points;
  for (std::size_t i = 0; i < count; ++i) {
    points.x.push_back(side * dice.fraction());
    points.y.push_back(side * dice.fraction());
  }
  return points;
}

}  // namespace chart_trace_bench
