#include "test/cpp/shapes.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <set>
#include <sstream>
#include <utility>

#include "test/cpp/same_bits.hpp"

namespace chart_trace_test {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kTiniest = std::numeric_limits<double>::denorm_min();
constexpr double kTwo24 = 16777216.0;
constexpr double kTwo53 = 9007199254740992.0;

// --- Shapes: pixels on the integer grid, at or near the origin -----------------------------------

struct Pixel {
  std::int64_t x;
  std::int64_t y;
};

using Pixels = std::vector<Pixel>;

void add_block(Pixels& pixels, Pixel corner, std::int64_t width, std::int64_t height) {
  for (std::int64_t y = 0; y < height; ++y) {
    for (std::int64_t x = 0; x < width; ++x) pixels.push_back({corner.x + x, corner.y + y});
  }
}

// The pixels whose squared distance from the origin lies between the two squared radii.
void add_annulus(Pixels& pixels, std::int64_t reach, std::int64_t from, std::int64_t to) {
  for (std::int64_t y = -reach; y <= reach; ++y) {
    for (std::int64_t x = -reach; x <= reach; ++x) {
      const std::int64_t square = x * x + y * y;
      if (from <= square && square <= to) pixels.push_back({x, y});
    }
  }
}

Pixels disc(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t r = random.between(1, std::max<std::int64_t>(1, extent / 2));
  add_annulus(pixels, r, 0, r * r);
  return pixels;
}

Pixels ring(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t r = random.between(2, std::max<std::int64_t>(2, extent));
  const std::int64_t inner = r - random.between(1, 2);
  add_annulus(pixels, r, inner * inner + 1, r * r);
  return pixels;
}

// Points at exactly equal distances from the origin, which is drawn too: nearly everything ties.
Pixels circle_of_ties(Random& random, std::int64_t) {
  const std::int64_t square = random.pick(std::vector<std::int64_t>{25, 50, 65, 100, 325, 625});
  Pixels pixels = {{0, 0}};
  add_annulus(pixels, 25, square, square);
  return pixels;
}

Pixels line(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t length = random.between(1, 3 * extent);
  const Pixel per_pixel = random.pick(
      std::vector<Pixel>{{1, 0}, {0, 1}, {1, 1}, {1, -1}, {2, 1}, {1, 2}, {3, -1}, {2, 0}});
  for (std::int64_t i = 0; i < length; ++i) {
    pixels.push_back({i * per_pixel.x, i * per_pixel.y});
    // A steep line has all its pixels: the step along the longer axis is filled.
    if (per_pixel.x == 3) add_block(pixels, {i * 3, -i}, 3, 1);
    if (per_pixel.y == 2) add_block(pixels, {i, i * 2}, 1, 2);
  }
  return pixels;
}

Pixels spiral(Random& random, std::int64_t extent) {
  Pixels pixels = {{0, 0}};
  const std::int64_t pitch = random.between(2, 3);
  const std::int64_t turns = random.between(1, std::max<std::int64_t>(2, extent / 2));
  const std::vector<Pixel> directions = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
  Pixel at = {0, 0};
  for (std::int64_t side = 0; side < 2 * turns; ++side) {
    const Pixel direction = directions[static_cast<std::size_t>(side % 4)];
    for (std::int64_t i = 0; i < (side / 2 + 1) * pitch; ++i) {
      at = {at.x + direction.x, at.y + direction.y};
      pixels.push_back(at);
    }
  }
  return pixels;
}

// Treads of random length and thickness, some missing, without the risers between them.
Pixels staircase_with_gaps(Random& random, std::int64_t extent) {
  Pixels pixels;
  Pixel at = {0, 0};
  for (std::int64_t tread = 0; tread < extent; ++tread) {
    const std::int64_t length = random.between(1, 6);
    if (!random.one_in(4)) add_block(pixels, at, length, random.between(1, 2));
    at = {at.x + length, at.y + random.between(-3, 4)};
  }
  return pixels;
}

// The line of a step graph: thin treads joined by tall risers.
Pixels step_line(Random& random, std::int64_t extent) {
  Pixels pixels;
  Pixel at = {0, 0};
  if (random.one_in(2)) add_block(pixels, {-1, -5}, 1, 9);
  for (std::int64_t tread = 0; tread < extent / 2 + 1; ++tread) {
    const std::int64_t length = random.between(1, 8);
    add_block(pixels, at, length, 1);
    const std::int64_t rise = random.between(-12, 12);
    at = {at.x + length, at.y};
    add_block(pixels, {at.x, std::min(at.y, at.y + rise)}, random.between(1, 2),
              std::abs(rise) + 1);
    at = {at.x + 1, at.y + rise};
  }
  return pixels;
}

Pixels bars(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t gap = random.between(0, 3);
  const std::int64_t width = random.between(1, 4);
  const bool lying = random.one_in(2);
  for (std::int64_t bar = 0; bar < 1 + extent / 4; ++bar) {
    const std::int64_t length = random.between(1, extent + 1);
    const std::int64_t place = bar * (width + gap);
    if (lying) {
      add_block(pixels, {0, place}, length, width);
    } else {
      add_block(pixels, {place, -length}, width, length);
    }
  }
  return pixels;
}

// Columns side by side, neighbours often equally high or nearly so.
Pixels histogram_columns(Random& random, std::int64_t extent) {
  Pixels pixels;
  std::int64_t height = random.between(1, extent + 1);
  for (std::int64_t column = 0; column < extent + 1; ++column) {
    if (random.one_in(3)) height = random.between(1, 4 * extent);
    if (random.one_in(5)) height = std::max<std::int64_t>(1, height + random.between(-1, 1));
    if (random.one_in(2)) {
      add_block(pixels, {column, -height}, 1, height);
    } else {
      pixels.push_back({column, -height});
    }
  }
  return pixels;
}

Pixels checkerboard(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t side = random.between(1, extent + 1);
  for (std::int64_t y = 0; y < side; ++y) {
    for (std::int64_t x = y % 2; x < side; x += 2) pixels.push_back({x, y});
  }
  return pixels;
}

Pixels comb(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t width = random.between(1, 2 * extent);
  const std::int64_t pitch = random.between(2, 4);
  const bool upwards = random.one_in(2);
  add_block(pixels, {0, 0}, width, random.between(1, 2));
  for (std::int64_t x = 0; x < width; x += pitch) {
    const std::int64_t length = random.between(1, extent + 1);
    add_block(pixels, {x, upwards ? -length : 1}, 1, length);
  }
  return pixels;
}

// Sides that differ by small whole factors: the shapes at the edge between marker and line.
Pixels filled_block(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t width = random.between(1, extent + 2);
  const std::int64_t height =
      random.one_in(2) ? random.between(1, extent + 2) : random.between(1, 4) * width + 1;
  add_block(pixels, {0, 0}, width, height);
  if (random.one_in(3)) {
    pixels.erase(std::remove_if(pixels.begin(), pixels.end(),
                                [&random](const Pixel&) { return random.one_in(3); }),
                 pixels.end());
  }
  return pixels;
}

Pixels random_cloud(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t side = extent * random.between(1, 4);
  for (std::int64_t i = 0; i < extent * extent / 2 + 1; ++i) {
    pixels.push_back({random.between(-side, side), random.between(-side, side)});
  }
  return pixels;
}

// A sampled parabola drawn without gaps, with a few discs on it: points and a curve in one colour.
Pixels curve_with_markers(Random& random, std::int64_t extent) {
  Pixels pixels;
  const std::int64_t bend = random.between(3, 9);
  std::int64_t before = 0;
  for (std::int64_t x = 0; x < 3 * extent; ++x) {
    const std::int64_t y = (x - extent) * (x - extent) / (bend * extent);
    add_block(pixels, {x, std::min(y, before)}, 1, std::max<std::int64_t>(1, std::abs(y - before)));
    before = y;
  }
  const std::int64_t markers = random.between(0, 3);
  for (std::int64_t i = 0; i < markers; ++i) {
    add_block(pixels, {random.between(0, 3 * extent), -random.between(3, 12)}, 3, 3);
  }
  return pixels;
}

struct Shape {
  const char* name;
  Pixels (*draw)(Random& random, std::int64_t extent);
};

const std::vector<Shape>& shapes() {
  static const std::vector<Shape> all = {{"disc", disc},
                                         {"ring", ring},
                                         {"circle of ties", circle_of_ties},
                                         {"line", line},
                                         {"spiral", spiral},
                                         {"staircase with gaps", staircase_with_gaps},
                                         {"step line", step_line},
                                         {"bars", bars},
                                         {"histogram columns", histogram_columns},
                                         {"checkerboard", checkerboard},
                                         {"comb", comb},
                                         {"filled block", filled_block},
                                         {"random cloud", random_cloud},
                                         {"curve with markers", curve_with_markers}};
  return all;
}

// One picture: copies of the shape, side by side and in rows below one another, until there are
// `size` different pixels. Rows and columns of copies touch when the gap is 0.
Pixels picture(const Shape& shape, Random& random, std::size_t size) {
  struct Row_before_column {
    bool operator()(const Pixel& a, const Pixel& b) const {
      return std::make_pair(a.y, a.x) < std::make_pair(b.y, b.x);
    }
  };
  std::set<Pixel, Row_before_column> drawn;
  const auto extent = static_cast<std::int64_t>(std::sqrt(static_cast<double>(size))) + 1;
  const std::int64_t gap = random.between(0, 4);
  Pixel place = {0, 0};
  std::int64_t row_height = 0;
  while (drawn.size() < size) {
    const Pixels copy = shape.draw(random, extent);
    Pixel low = {0, 0};
    Pixel high = {0, 0};
    for (const Pixel& pixel : copy) {
      low = {std::min(low.x, pixel.x), std::min(low.y, pixel.y)};
      high = {std::max(high.x, pixel.x), std::max(high.y, pixel.y)};
    }
    for (const Pixel& pixel : copy) {
      drawn.insert({place.x + pixel.x - low.x, place.y + pixel.y - low.y});
    }
    row_height = std::max(row_height, high.y - low.y + 1);
    place.x += high.x - low.x + 1 + gap;
    if (place.x > 6 * extent) {
      place = {0, place.y + row_height + gap};
      row_height = 0;
    }
  }
  return {drawn.begin(), drawn.end()};
}

void shuffle(Random& random, Pixels& pixels) {
  for (std::size_t i = pixels.size(); i > 1; --i) {
    std::swap(pixels[i - 1], pixels[static_cast<std::size_t>(random.below(i))]);
  }
}

// Reorders raster pixels and returns the name of the order.
std::string put_in_some_order(Random& random, Pixels& pixels) {
  switch (random.below(8)) {
    case 0:
    case 1:
      std::stable_sort(pixels.begin(), pixels.end(),
                       [](const Pixel& a, const Pixel& b) { return a.x < b.x; });
      return "column-major";
    case 2:
    case 3:
      shuffle(random, pixels);
      return "shuffled";
    case 4:
      std::reverse(pixels.begin(), pixels.end());
      return "reversed raster";
    default:
      return "raster";
  }
}

// --- From pixels to coordinates ------------------------------------------------------------------

// origin + index * pitch, either multiplied or reached by repeated addition: the two differ in the
// last bits when the pitch is no dyadic fraction.
class Axis {
 public:
  Axis(double origin, double pitch, bool accumulated)
      : origin_(origin), pitch_(pitch), accumulated_(accumulated) {}

  double at(std::int64_t index) const {
    if (!accumulated_) return origin_ + static_cast<double>(index) * pitch_;
    double value = origin_;
    for (std::int64_t i = 0; i < index; ++i) value += pitch_;
    return value;
  }

 private:
  double origin_;
  double pitch_;
  bool accumulated_;
};

double some_pitch(Random& random) {
  static const std::vector<double> pitches = {1.0,  1.0,  1.0,   1.0, 1.0, 1.0,
                                              1.0,  0.5,  0.5,   0.1, 0.1, 2.0,
                                              0.25, 0.75, 1.0e3, 0.7, 2.5, 1.0 / 3.0};
  return random.pick(pitches);
}

double some_origin(Random& random) {
  static const std::vector<double> origins = {
      0.0,          0.0,           0.0,          0.0,          0.0,        0.0,
      1.0,          17.0,          -6.0,         -37.0,        -0.5,       0.1,
      100.25,       1.0e6 + 0.3,   kTwo24 - 4.0, kTwo24 + 1.0, 4 * kTwo24, -kTwo24 - 3.0,
      kTwo53 - 4.0, -kTwo53 + 2.0, 4 * kTwo53,   1.0e300};
  return random.pick(origins);
}

double some_step(Random& random, double pitch) {
  static const std::vector<double> steps = {
      1.0,  0.5,  0.1,      1.0 / 3.0, 2.0,    3.0,   7.5,     0.0,      -0.0,      -1.0,
      -0.5, kNaN, kTiniest, 1.0e-300,  1.0e-9, 1.0e9, 1.0e300, kLargest, kInfinity, -kInfinity};
  if (random.below(100) < 70) return pitch;
  if (random.one_in(3)) return pitch * static_cast<double>(random.between(1, 12)) * 0.25;
  return random.pick(steps);
}

double some_fraction(Random& random) {
  static const std::vector<double> codes = {0.05, 0.05, 0.051, 0.052, 0.053, 0.054, 0.055};
  static const std::vector<double> others = {
      0.0, -0.0, -1.0,   0.06,    0.34, 0.5,    0.9,        1.0,       1.5,
      2.0, 30.0, 1.0e12, 1.0e300, kNaN, 1.0e-9, -kInfinity, kInfinity, std::nextafter(0.05, 1.0)};
  if (random.below(100) < 65) return random.pick(codes);
  if (random.one_in(2)) return random.fraction();
  return random.pick(others);
}

// --- Twists --------------------------------------------------------------------------------------

std::size_t some_index(Random& random, const Case& made) {
  return static_cast<std::size_t>(random.below(made.x.size()));
}

double some_special(Random& random) {
  static const std::vector<double> specials = {kNaN, kNaN,     kInfinity, -kInfinity, -0.0,
                                               0.0,  kLargest, -kLargest, kTiniest,   1.0e-310};
  return random.pick(specials);
}

// Points that repeat another one, right behind it or anywhere.
void duplicate_some(Random& random, Case& made, double) {
  const std::size_t count = 1 + made.x.size() / 6;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t from = some_index(random, made);
    const std::size_t next = std::min(from + 1, made.x.size() - 1);
    const std::size_t to = random.one_in(2) ? next : some_index(random, made);
    made.x[to] = made.x[from];
    made.y[to] = made.y[from];
  }
}

// Points put beside another one by whole and half pitches up to two: among them the 1.5 at which a
// box closes and a row stops being near.
void move_to_edges(Random& random, Case& made, double pitch) {
  static const std::vector<double> reaches = {0.0, 0.5, -0.5, 1.0, -1.0, 1.5, -1.5, 1.5, -1.5, 2.0};
  const std::size_t count = 1 + made.x.size() / 4;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t from = some_index(random, made);
    const std::size_t to = some_index(random, made);
    made.x[to] = made.x[from] + random.pick(reaches) * pitch;
    made.y[to] = made.y[from] + random.pick(reaches) * pitch;
  }
}

void change_last_bits(Random& random, Case& made, double) {
  const std::size_t count = 1 + made.x.size() / 3;
  for (std::size_t i = 0; i < count; ++i) {
    std::vector<double>& values = random.one_in(2) ? made.x : made.y;
    const std::size_t at = some_index(random, made);
    values[at] = std::nextafter(values[at], random.one_in(2) ? kInfinity : -kInfinity);
  }
}

// One point alone, and if there is such a one, where the difference from its neighbours is rounded
// to what it was: at -4.0, for example, with a pitch of 1.
void hide_a_last_bit(Random& random, Case& made, double pitch) {
  std::vector<double>& values = random.one_in(2) ? made.x : made.y;
  std::size_t at = some_index(random, made);
  for (std::size_t i = 0; i < values.size(); ++i) {
    at = (at + 1) % values.size();
    const double changed = std::nextafter(values[at], 0.0);
    if (values[at] != 0.0 && changed - pitch == values[at] - pitch) break;
  }
  values[at] = std::nextafter(values[at], 0.0);
}

void put_specials_anywhere(Random& random, Case& made, double) {
  const std::int64_t count = random.between(1, 4);
  for (std::int64_t i = 0; i < count; ++i) {
    std::vector<double>& values = random.one_in(2) ? made.x : made.y;
    values[some_index(random, made)] = some_special(random);
  }
}

void put_specials_first(Random& random, Case& made, double) {
  if (random.one_in(2)) made.x[0] = some_special(random);
  if (random.one_in(2)) made.y[0] = some_special(random);
}

// Multiplying by -1 turns every 0.0 into -0.0.
void mirror(Random& random, Case& made, double) {
  const std::uint64_t which = random.below(3);
  if (which != 0) {
    for (double& value : made.x) value = -value;
  }
  if (which != 1) {
    for (double& value : made.y) value = -value;
  }
}

void put_one_far_away(Random& random, Case& made, double pitch) {
  static const std::vector<double> far = {1.0e3, -1.0e3, 1.0e4, 1.0e6, -1.0e9, 1.0e18, 1.0e300};
  const std::size_t at = some_index(random, made);
  if (random.one_in(2)) made.x[at] = random.pick(far) * pitch;
  if (random.one_in(2)) made.y[at] = random.pick(far) * pitch;
}

void flatten(Random& random, Case& made, double) {
  std::vector<double>& values = random.one_in(2) ? made.x : made.y;
  std::fill(values.begin(), values.end(), values[0]);
}

// Coordinates of a free-hand drawing: no two lie on one grid.
void jitter(Random& random, Case& made, double pitch) {
  for (double& value : made.x) value += random.fraction() * pitch;
  for (double& value : made.y) value += random.fraction() * pitch;
}

struct Twist {
  const char* name;
  void (*apply)(Random& random, Case& made, double pitch);
};

void twist_some(Random& random, Case& made, double pitch) {
  static const std::vector<Twist> twists = {{"duplicates", duplicate_some},
                                            {"1.5 pitches away", move_to_edges},
                                            {"1.5 pitches away", move_to_edges},
                                            {"last bits", change_last_bits},
                                            {"a hidden last bit", hide_a_last_bit},
                                            {"specials anywhere", put_specials_anywhere},
                                            {"specials anywhere", put_specials_anywhere},
                                            {"specials first", put_specials_first},
                                            {"mirrored", mirror},
                                            {"one far away", put_one_far_away},
                                            {"flattened", flatten},
                                            {"jitter", jitter}};
  static const std::vector<int> counts = {0, 0, 0, 1, 1, 1, 2};
  const int count = random.pick(counts);
  for (int i = 0; i < count; ++i) {
    const Twist& twist = random.pick(twists);
    twist.apply(random, made, pitch);
    made.twists += std::string(made.twists.empty() ? "" : ", ") + twist.name;
  }
}

}  // namespace

std::int64_t Random::between(std::int64_t low, std::int64_t high) {
  return low + static_cast<std::int64_t>(below(static_cast<std::uint64_t>(high - low) + 1));
}

double Random::fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

std::string Case::text() const {
  std::ostringstream text;
  text << "shape \"" << shape << "\", order " << order << ", twists [" << twists << "], seed "
       << seed << ", n " << x.size() << ", step " << text_of(step) << ", fraction "
       << text_of(fraction);
  if (x.size() <= 40) text << "\n  x " << text_of(x) << "\n  y " << text_of(y);
  return text.str();
}

Case make_case(std::uint64_t seed, std::size_t size) {
  Random random(seed * 1000003 + size);
  Case made;
  made.seed = seed;
  const Shape& shape = random.pick(shapes());
  made.shape = shape.name;
  Pixels pixels = picture(shape, random, size);
  made.order = put_in_some_order(random, pixels);
  pixels.resize(size);

  const double pitch = some_pitch(random);
  const bool accumulated = random.one_in(3);
  const Axis x_axis(some_origin(random), pitch, accumulated);
  const Axis y_axis(random.one_in(2) ? 0.0 : some_origin(random), pitch, accumulated);
  for (const Pixel& pixel : pixels) {
    made.x.push_back(x_axis.at(pixel.x));
    made.y.push_back(y_axis.at(pixel.y));
  }
  if (size > 0) twist_some(random, made, pitch);
  made.step = some_step(random, pitch);
  made.fraction = some_fraction(random);
  return made;
}

std::vector<std::string> shape_names() {
  std::vector<std::string> names;
  for (const Shape& shape : shapes()) names.emplace_back(shape.name);
  return names;
}

double bounded_width(const std::vector<double>& x, double width, std::size_t limit) {
  if (x.empty()) return width;
  double left = x[0];
  double right = x[0];
  for (const double value : x) {
    if (value < left) left = value;
    if (value > right) right = value;
  }
  double border = left;
  for (std::size_t made = 0; made < limit; ++made) {
    const double next = width + border;
    if (!(next > border) || !(next <= right)) return width;
    border = next;
  }
  // Both are wide enough to be done well below the limit; halving first keeps the range finite.
  const double part = (right * 0.5 - left * 0.5) / 16.0;
  return std::isfinite(part) ? part : kLargest;
}

}  // namespace chart_trace_test
