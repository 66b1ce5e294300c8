#include "test/cpp/hard_pictures.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "test/cpp/shapes.hpp"

namespace chart_trace_test {
namespace {

// The side of a square of `area`, in whole pixels.
int side_of(double area) { return static_cast<int>(std::ceil(std::sqrt(area))); }
int side_of(std::size_t area) { return side_of(static_cast<double>(area)); }

void add(Pixels& set, double x, double y) {
  set.x.push_back(x);
  set.y.push_back(y);
}

// Row by row, the pixels of a square picture for which `is_painted` says so.
template <typename Is_painted>
Pixels raster(int side, Is_painted is_painted) {
  Pixels set;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      if (is_painted(x, y)) add(set, x, y);
    }
  }
  return set;
}

Pixels shuffled(Pixels set) {
  Random random(1);
  for (std::size_t i = set.x.size(); i > 1; --i) {
    const auto other = static_cast<std::size_t>(random.below(i));
    std::swap(set.x[i - 1], set.x[other]);
    std::swap(set.y[i - 1], set.y[other]);
  }
  return set;
}

Pixels reversed(Pixels set) {
  std::reverse(set.x.begin(), set.x.end());
  std::reverse(set.y.begin(), set.y.end());
  return set;
}

Pixels turned(Pixels set) {
  std::swap(set.x, set.y);
  return set;
}

// Anywhere in a square.
Pixels cloud(std::size_t count, double side) {
  Random random(2);
  Pixels set;
  while (set.x.size() < count) {
    const double x = side * random.fraction();
    add(set, x, side * random.fraction());
  }
  return set;
}

Pixels one_spot(std::size_t count) { return {Doubles(count, 3.5), Doubles(count, 8.0)}; }
Pixels one_cell(std::size_t count) { return cloud(count, 0.9); }
// Rows in which all points touch each other, and then what keeps searches going to the end.
Pixels two_spots(std::size_t count) {
  const Doubles spot(count / 2, 5.0);
  const Doubles row_below(spot.size(), 1.0);
  return joined({{spot, Doubles(spot.size(), 0.0)}, {spot, row_below}, pixels({{3.0, 0.0}})});
}
Pixels spot_above_two_pixels(std::size_t count) {
  return joined({{Doubles(count, 5.0), Doubles(count, 0.0)}, pixels({{5.0, 9.0}, {50.0, 9.0}})});
}
Pixels nothing_but_nan(std::size_t count) {
  return {Doubles(count, not_a_number), Doubles(count, not_a_number)};
}
Pixels nothing_but_infinity(std::size_t count) {
  return {Doubles(count, infinity), Doubles(count, -infinity)};
}

Pixels block_of(std::size_t count) {
  return raster(side_of(count), [](int, int) { return true; });
}
Pixels block_by_columns(std::size_t count) { return turned(block_of(count)); }
Pixels block_backwards(std::size_t count) { return reversed(block_of(count)); }
Pixels block_shuffled(std::size_t count) { return shuffled(block_of(count)); }

// As a pen would fill it.
Pixels block_to_and_fro(std::size_t count) {
  const int side = side_of(count);
  Pixels set = block_of(count);
  for (std::size_t i = 0; i < set.x.size(); ++i) {
    if (std::fmod(set.y[i], 2.0) == 1.0) set.x[i] = side - 1.0 - set.x[i];
  }
  return set;
}

Pixels every_other_nan(std::size_t count) {
  Pixels set = block_of(count);
  for (std::size_t i = 0; i < set.x.size(); i += 2) set.x[i] = not_a_number;
  return set;
}

// The pixels of a small block again and again, in any order.
Pixels duplicates(std::size_t count) {
  const Pixels once = block_of(static_cast<std::size_t>(side_of(count)));
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) {
    add(set, once.x[i % once.x.size()], once.y[i % once.y.size()]);
  }
  return shuffled(set);
}

Pixels outlier_first(std::size_t count) { return joined({pixels({{1e9, 1e9}}), block_of(count)}); }
Pixels outlier_last(std::size_t count) { return joined({block_of(count), pixels({{-1e9, -1e9}})}); }
Pixels outlier_beyond_measure(std::size_t count) {
  return joined({block_of(count), pixels({{0.0, 1e300}})});
}

// Teeth one pixel wide, that hang from the first row or stand on the last one.
Pixels comb_that_hangs(std::size_t count) {
  return raster(side_of(3 * count), [](int x, int y) { return y == 0 || x % 3 == 0; });
}
Pixels comb_that_stands(std::size_t count) {
  const int side = side_of(3 * count);
  return raster(side, [=](int x, int y) { return y == side - 1 || x % 3 == 0; });
}
Pixels comb_by_columns(std::size_t count) { return turned(comb_that_hangs(count)); }

Pixels checkerboard(std::size_t count) {
  return raster(side_of(2 * count), [](int x, int y) { return (x + y) % 2 == 0; });
}
Pixels checkerboard_shuffled(std::size_t count) { return shuffled(checkerboard(count)); }

// Pixels of which none touches another, and points of which each lies on the edge of what the
// others reach.
Pixels lonely_pixels(std::size_t count) {
  return raster(side_of(9 * count), [](int x, int y) { return x % 3 == 0 && y % 3 == 0; });
}
Pixels just_in_reach(std::size_t count) {
  Pixels set = block_of(count);
  for (double& x : set.x) x *= 1.5;
  for (double& y : set.y) y *= 1.5;
  return set;
}

Pixels nested_squares(std::size_t count) {
  const int middle = side_of(3 * count) / 2;
  return raster(2 * middle + 1, [=](int x, int y) {
    return std::max(std::abs(x - middle), std::abs(y - middle)) % 3 == 0;
  });
}

// Salt and pepper.
Pixels noise(std::size_t count) {
  Random random(3);
  return raster(side_of(2 * count), [&](int, int) { return random.below(2) == 0; });
}
Pixels noise_shuffled(std::size_t count) { return shuffled(noise(count)); }
Pixels sparse_noise(std::size_t count) {
  Random random(4);
  return raster(side_of(50 * count), [&](int, int) { return random.below(50) == 0; });
}

// One pixel wide, with arms three apart, from the middle as it is drawn.
Pixels spiral_as_drawn(std::size_t count) {
  Pixels set;
  int x = 0;
  int y = 0;
  int right = 1;
  int down = 0;
  for (int arm = 3; set.x.size() < count; arm += 3) {
    for (int half = 0; half < 2; ++half) {
      for (int i = 0; i < arm && set.x.size() < count; ++i) {
        add(set, x, y);
        x += right;
        y += down;
      }
      std::swap(right, down);
      right = -right;
    }
  }
  return set;
}

Pixels spiral(std::size_t count) {
  const Pixels drawn = spiral_as_drawn(count);
  std::vector<std::pair<double, double>> rows;
  for (std::size_t i = 0; i < drawn.x.size(); ++i) rows.emplace_back(drawn.y[i], drawn.x[i]);
  std::sort(rows.begin(), rows.end());
  Pixels set;
  for (const auto& [y, x] : rows) add(set, x, y);
  return set;
}

Pixels row(std::size_t count) {
  Pixels set;
  for (std::size_t i = 0; i < count; ++i) add(set, static_cast<double>(i), 4.0);
  return set;
}
// Points that lie far apart, so that many compartments stay empty; or half of them, beside a
// column.
Pixels row_of_every_other(std::size_t count) {
  Pixels set = row(count);
  for (double& x : set.x) x *= 2.0;
  return set;
}
Pixels row_of_every_eighth(std::size_t count) {
  Pixels set = row(count);
  for (double& x : set.x) x *= 7.9;
  return set;
}
Pixels row_beside_a_column(std::size_t count) {
  Pixels line = row_of_every_other(count / 2);
  for (double& x : line.x) x *= 2.0;
  return joined({turned(row(count / 2)), line});
}
Pixels one_column(std::size_t count) { return turned(row(count)); }
Pixels diagonal(std::size_t count) {
  Pixels set = row(count);
  set.y = set.x;
  return set;
}
Pixels diagonal_shuffled(std::size_t count) { return shuffled(diagonal(count)); }

// A centre, and all others equally far from it.
Pixels circle(std::size_t count) {
  Pixels set = pixels({{0.0, 0.0}});
  const auto all = static_cast<double>(count);
  while (set.x.size() < count) {
    const double angle = 6.283185307179586 * static_cast<double>(set.x.size()) / all;
    add(set, all * std::cos(angle), all * std::sin(angle));
  }
  return set;
}

// A cloud in which each ring, half as wide as the one around it, holds as many points.
Pixels ever_denser(std::size_t count, int widest) {
  Random random(5);
  Pixels set;
  while (set.x.size() < count) {
    const int scale = static_cast<int>(random.between(-500, widest));
    const double x = std::ldexp(random.fraction() - 0.5, scale);
    add(set, x, std::ldexp(random.fraction() - 0.5, scale));
  }
  return set;
}
Pixels ever_denser_cloud(std::size_t count) { return ever_denser(count, 500); }

// A curve whose clusters are narrower than anything in the set, so that each of its points is one.
// For that it begins with a tenth of the points almost in one place, and two lines keep the whole
// from being a solid marker.
Pixels chain_of(const Pixels& set) {
  const std::size_t count = set.x.size();
  Pixels line = row(2 * static_cast<std::size_t>(side_of(count)));
  line.y = Doubles(line.x.size(), 0.0);
  return joined({cloud(count / 10, 1e-140), line, turned(line), set});
}
Pixels chain_of_a_cloud(std::size_t count) { return chain_of(cloud(count, side_of(count))); }
Pixels chain_of_an_ever_denser_cloud(std::size_t count) { return chain_of(ever_denser(count, 0)); }
Pixels chain_of_a_circle(std::size_t count) { return chain_of(circle(count)); }

}  // namespace

const std::vector<Hard_picture>& hard_pictures() {
  static const std::vector<Hard_picture> all = {
      {"one spot", one_spot},
      {"two spots", two_spots},
      {"spot above two pixels", spot_above_two_pixels},
      {"one cell", one_cell},
      {"duplicates", duplicates},
      {"block by columns", block_by_columns},
      {"block backwards", block_backwards},
      {"block to and fro", block_to_and_fro},
      {"block, shuffled", block_shuffled},
      {"comb that hangs", comb_that_hangs},
      {"comb that stands", comb_that_stands},
      {"comb by columns", comb_by_columns},
      {"spiral", spiral},
      {"spiral as drawn", spiral_as_drawn},
      {"nested squares", nested_squares},
      {"checkerboard", checkerboard},
      {"checkerboard, shuffled", checkerboard_shuffled},
      {"noise", noise},
      {"noise, shuffled", noise_shuffled},
      {"sparse noise", sparse_noise},
      {"lonely pixels", lonely_pixels},
      {"just in reach", just_in_reach},
      {"row", row},
      {"row of every other pixel", row_of_every_other},
      {"row of every eighth pixel", row_of_every_eighth},
      {"row beside a column", row_beside_a_column},
      {"column", one_column},
      {"diagonal", diagonal},
      {"diagonal, shuffled", diagonal_shuffled},
      {"circle", circle},
      {"outlier first", outlier_first},
      {"outlier last", outlier_last},
      {"outlier beyond measure", outlier_beyond_measure},
      {"ever denser cloud", ever_denser_cloud},
      {"chain of a cloud", chain_of_a_cloud},
      {"chain of an ever denser cloud", chain_of_an_ever_denser_cloud},
      {"chain of a circle", chain_of_a_circle},
      {"every other NaN", every_other_nan},
      {"nothing but NaN", nothing_but_nan},
      {"nothing but infinity", nothing_but_infinity},
  };
  return all;
}

}  // namespace chart_trace_test
