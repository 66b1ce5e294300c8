#include "fuzz/drawing.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <utility>

namespace chart_trace_fuzz {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// Coordinates at which rules and their quick ways change: signs of zero, single precision, whole
// numbers that doubles and 32-bit integers cannot hold, the ends of the range.
constexpr std::array<double, 24> special_coordinates = {0.0,
                                                        -0.0,
                                                        nan,
                                                        infinity,
                                                        -infinity,
                                                        16777215.0,
                                                        16777216.0,
                                                        16777217.0,
                                                        2147483647.0,
                                                        2147483648.0,
                                                        -2147483648.0,
                                                        4294967296.0,
                                                        4503599627370496.0,
                                                        9007199254740991.0,
                                                        9007199254740992.0,
                                                        1e15,
                                                        1e150,
                                                        1e154,
                                                        1e300,
                                                        1.7976931348623157e308,
                                                        -1.7976931348623157e308,
                                                        2.2250738585072014e-308,
                                                        4.9406564584124654e-324,
                                                        0.5};

constexpr std::array<double, 20> steps = {1.0,      1.0,    1.0,   2.0,   0.5, 0.1,  1.0 / 3.0,
                                          1.5,      3.0,    0.25,  -1.0,  0.0, -0.0, nan,
                                          infinity, 1e-300, 1e300, 1e-17, 7.0, 0.7};

constexpr std::array<double, 16> fractions = {0.05,  0.051, 0.052, 0.053,   0.054, 0.055,
                                              0.001, 0.5,   1.0,   2.0,     0.0,   -1.0,
                                              nan,   1e300, 0.2,   infinity};

constexpr std::array<double, 12> pitches = {1.0, 1.0, 1.0,   0.5, 0.1,  1.0 / 3.0,
                                            1.5, 2.0, 1e-17, 0.7, 1e10, 4503599627370496.0};

class Bytes {
 public:
  Bytes(const std::uint8_t* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

  bool at_end() const { return next_ == end_; }

  // 0 once the bytes have come to their end.
  std::uint8_t byte() { return at_end() ? std::uint8_t{0} : *next_++; }

  // From -128 to 127.
  double offset() { return static_cast<double>(byte()) - 128.0; }

  // From 1 to `most`.
  std::size_t count(std::size_t most) { return byte() % most + 1; }

  double any_double() {
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits = bits << 8U | byte();
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  // One of the table, or, where the byte lies beyond it, any double.
  template <std::size_t size>
  double one_of(const std::array<double, size>& table) {
    const std::size_t index = byte();
    return index < 255 ? table[index % size] : any_double();
  }

 private:
  const std::uint8_t* next_;
  const std::uint8_t* end_;
};

class Pen {
 public:
  Pen(Bytes& bytes, Drawing& drawing) : bytes_(bytes), x_(drawing.x), y_(drawing.y) {}

  void obey_one_command() {
    switch (bytes_.byte() % 14) {
      case 0:
        return rectangle(1, 1);
      case 1:
        return rectangle(bytes_.count(80), 1);
      case 2:
        return rectangle(1, bytes_.count(80));
      case 3: {
        const std::size_t width = bytes_.count(40);
        return rectangle(width, bytes_.count(40));
      }
      case 4:
        return move();
      case 5:
        return copy(0.0, 0.0);
      case 6: {
        const double right = bytes_.offset();
        return copy(right * pitch_, bytes_.offset() * pitch_);
      }
      case 7: {
        const double x = bytes_.any_double();
        return add(x, bytes_.any_double());
      }
      case 8:
        return special_point();
      case 9:
        pitch_ = bytes_.one_of(pitches);
        return;
      case 10:
        return move_origin();
      case 11:
        return rearrange();
      case 12:
        return nudge();
      default:
        return diagonal();
    }
  }

 private:
  void add(double x, double y) {
    if (x_.size() >= most_points) return;
    x_.push_back(x);
    y_.push_back(y);
  }

  void add_at_cursor(double columns, double rows) {
    add(origin_x_ + (column_ + columns) * pitch_, origin_y_ + (row_ + rows) * pitch_);
  }

  void move() {
    column_ += bytes_.offset();
    row_ += bytes_.offset();
  }

  // Row by row from the top; then the cursor stands to the right of it.
  void rectangle(std::size_t width, std::size_t height) {
    for (std::size_t row = 0; row < height; ++row) {
      for (std::size_t column = 0; column < width; ++column) {
        add_at_cursor(static_cast<double>(column), static_cast<double>(row));
      }
    }
    column_ += static_cast<double>(width);
  }

  void diagonal() {
    const std::size_t length = bytes_.count(80);
    for (std::size_t i = 0; i < length; ++i) {
      add_at_cursor(0.0, 0.0);
      column_ += 1.0;
      row_ += 1.0;
    }
  }

  // The last points once more, moved.
  void copy(double right, double down) {
    const std::size_t count = std::min(bytes_.count(256), x_.size());
    const std::size_t first = x_.size() - count;
    for (std::size_t i = first; i < first + count; ++i) add(x_[i] + right, y_[i] + down);
  }

  void special_point() {
    add_at_cursor(0.0, 0.0);
    if (x_.empty()) return;
    const std::uint8_t which = bytes_.byte();
    if (which % 3 != 0) x_.back() = bytes_.one_of(special_coordinates);
    if (which % 3 != 1) y_.back() = bytes_.one_of(special_coordinates);
  }

  void move_origin() {
    origin_x_ = bytes_.one_of(special_coordinates);
    origin_y_ = bytes_.one_of(special_coordinates);
  }

  // The next double on one side of the last point, in x or y.
  void nudge() {
    if (x_.empty()) return;
    const std::uint8_t way = bytes_.byte();
    double& value = way % 2 == 0 ? x_.back() : y_.back();
    value = std::nextafter(value, way / 2 % 2 == 0 ? infinity : -infinity);
  }

  // Rows from the top, columns from the left, backwards, or shuffled.
  void rearrange() {
    std::vector<std::size_t> order(x_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    switch (bytes_.byte() % 4) {
      case 0:
        sort_by(order, y_, x_);
        break;
      case 1:
        sort_by(order, x_, y_);
        break;
      case 2:
        std::reverse(order.begin(), order.end());
        break;
      default:
        shuffle(order, bytes_.byte());
        break;
    }
    const std::vector<double> old_x = x_;
    const std::vector<double> old_y = y_;
    for (std::size_t i = 0; i < order.size(); ++i) {
      x_[i] = old_x[order[i]];
      y_[i] = old_y[order[i]];
    }
  }

  // NaN stands behind all numbers, so that the order is one for which a sort is defined.
  static void sort_by(std::vector<std::size_t>& order, const std::vector<double>& major,
                      const std::vector<double>& minor) {
    const auto less = [](double a, double b) { return std::isnan(b) ? !std::isnan(a) : a < b; };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      if (less(major[a], major[b])) return true;
      if (less(major[b], major[a])) return false;
      return less(minor[a], minor[b]);
    });
  }

  static void shuffle(std::vector<std::size_t>& order, std::uint32_t state) {
    for (std::size_t i = order.size(); i > 1; --i) {
      state = state * 1664525U + 1013904223U;
      std::swap(order[i - 1], order[(state >> 8U) % i]);
    }
  }

  Bytes& bytes_;
  std::vector<double>& x_;
  std::vector<double>& y_;
  double origin_x_ = 0.0;
  double origin_y_ = 0.0;
  double column_ = 0.0;
  double row_ = 0.0;
  double pitch_ = 1.0;
};

}  // namespace

Drawing draw(const std::uint8_t* bytes, std::size_t size) {
  Bytes left(bytes, size);
  Drawing drawing;
  drawing.subject = left.byte();
  drawing.step = left.one_of(steps);
  drawing.fraction = left.one_of(fractions);
  Pen pen(left, drawing);
  while (!left.at_end() && drawing.x.size() < most_points) pen.obey_one_command();
  return drawing;
}

}  // namespace chart_trace_fuzz
