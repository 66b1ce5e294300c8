#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "test/oracle/oracle.hpp"

namespace oracle {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

void erase_at(Numbers& values, std::size_t index) {
  values.erase(values.begin() + static_cast<std::ptrdiff_t>(index));
}

// Less-than on numbers, with NaN behind all of them.
bool number_before(double a, double b) {
  if (std::isnan(a)) return false;
  if (std::isnan(b)) return true;
  return a < b;
}

// Whether the point visited at step i of the chain is kept under this density code.
bool kept(double density, std::int32_t i) {
  if (density == 0.05) return true;
  if (density == 0.051) return i % 2 == 0;
  if (density == 0.052) return i % 4 == 0;
  if (density == 0.053) return i % 8 == 0;
  if (density == 0.054) return i % 8 == 0;
  if (density == 0.055) return i % 16 == 0;
  return false;
}

bool elongated(std::int32_t nx, std::int32_t ny) {
  const float r = static_cast<float>(static_cast<double>(ny) / static_cast<double>(nx));
  const float q = static_cast<float>(static_cast<double>(nx) / static_cast<double>(ny));
  if (nx == 1 && r >= 4.0F) return true;
  if (ny == 1 && q >= 4.0F) return true;
  if (nx == 2 && r >= 2.0F) return true;
  if (ny == 2 && q >= 2.0F) return true;
  if (nx == 3 && r >= 2.0F) return true;
  if (ny == 3 && q >= 2.0F) return true;
  if (nx >= 4 && r >= 2.0F) return true;
  if (ny >= 4 && q >= 2.0F) return true;
  return false;
}

}  // namespace

std::int32_t to_int32(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) {
    return std::numeric_limits<std::int32_t>::min();
  }
  return static_cast<std::int32_t>(value);
}

std::int32_t wrapping_product(std::int32_t a, std::int32_t b) {
  const std::int64_t exact = static_cast<std::int64_t>(a) * static_cast<std::int64_t>(b);
  const std::int64_t modulus = std::int64_t{1} << 32;
  std::int64_t residue = exact % modulus;
  if (residue < 0) residue += modulus;
  if (residue >= modulus / 2) residue -= modulus;
  return static_cast<std::int32_t>(residue);
}

std::int32_t count_of(const Numbers& values) { return static_cast<std::int32_t>(values.size()); }

double distance(double x1, double y1, double x2, double y2) {
  const double dx = x1 - x2;
  const double dy = y1 - y2;
  return std::sqrt(dx * dx + dy * dy);
}

double average_of_numbers(const Numbers& values) {
  const std::int32_t n = count_of(values);
  if (n == 0) return kNaN;
  double sum = 0.0;
  for (std::int32_t i = 0; i < n; ++i) sum = sum + values[at(i)];
  return sum / static_cast<double>(n);
}

Numbers array_distances(const Numbers& x, const Numbers& y) {
  const std::int32_t n = count_of(x);
  if (n == 0) return {kNaN};
  Numbers distances;
  for (std::int32_t i = 0; i < n; ++i) {
    const double dy = y[0] - y[at(i)];
    const double dx = x[0] - x[at(i)];
    distances.push_back(std::sqrt(dy * dy + dx * dx));
  }
  return distances;
}

int min_index(const Numbers& values) {
  const std::int32_t n = count_of(values);
  if (n == 0) return 1;
  if (n == 1) return 0;
  double m = values[0];
  int index = 0;
  for (std::int32_t i = 1; i < n; ++i) {
    if (m > values[at(i)]) index = i;
    if (values[at(i)] < m) m = values[at(i)];
  }
  return index;
}

bool check_point_in_box(double px, double py, const Numbers& box_x, const Numbers& box_y) {
  if (!(px >= box_x[0])) return false;
  if (!(box_x[1] >= px)) return false;
  if (!(py >= box_y[0])) return false;
  return box_y[1] >= py;
}

Numbers replicate_vector(const Numbers& values) {
  Numbers copy;
  const std::int32_t n = count_of(values);
  for (std::int32_t i = 0; i < n; ++i) copy.push_back(values[at(i)]);
  return copy;
}

double smallest(const Numbers& values) {
  double best = values[0];
  for (std::int32_t i = 1; i < count_of(values); ++i) {
    if (values[at(i)] < best) best = values[at(i)];
  }
  return best;
}

double largest(const Numbers& values) {
  double best = values[0];
  for (std::int32_t i = 1; i < count_of(values); ++i) {
    if (values[at(i)] > best) best = values[at(i)];
  }
  return best;
}

double cluster_radius(const Points& points, std::int32_t count, double fraction) {
  Numbers distances;
  for (std::int32_t k = 1; k < count; ++k) {
    const double dy = points.y[0] - points.y[at(k)];
    const double dx = points.x[0] - points.x[at(k)];
    distances.push_back(std::sqrt(dy * dy + dx * dx));
  }
  std::sort(distances.begin(), distances.end(), number_before);
  const std::int32_t length = count_of(distances);
  std::int32_t m = to_int32(std::ceil(static_cast<double>(length) * fraction));
  if (m > length) m = length;
  Numbers taken;
  for (std::int32_t i = 0; i < m; ++i) taken.push_back(distances[at(i)]);
  return average_of_numbers(taken);
}

Clusters cluster(Numbers x, Numbers y, double fraction) {
  const std::int32_t n = count_of(x);
  const double radius = cluster_radius({x, y}, n, fraction);
  Points centroids;
  if (n < 1) return {centroids, {x, y}, radius};
  std::int32_t t = 0;
  while (true) {
    const Numbers d = array_distances(x, y);
    Points gathered;
    std::vector<double> indices;
    for (std::int32_t i = 0; i < count_of(d); ++i) {
      if (radius > d[at(i)]) {
        gathered.x.push_back(x[at(i)]);
        gathered.y.push_back(y[at(i)]);
        indices.push_back(static_cast<double>(i));
      }
    }
    for (std::size_t j = 0; j < indices.size(); ++j) {
      const auto position = at(to_int32(indices[j] - static_cast<double>(j)));
      erase_at(x, position);
      erase_at(y, position);
    }
    centroids.x.push_back(average_of_numbers(gathered.x));
    centroids.y.push_back(average_of_numbers(gathered.y));
    if (x.empty()) break;
    t = t + 1;
    if (t == n) break;
  }
  return {centroids, {x, y}, radius};
}

std::vector<Numbers> point_density(Numbers x, Numbers y, double density) {
  Points sample;
  if (count_of(x) == 0) return {{kNaN}};
  std::int32_t i = 0;
  while (!x.empty()) {
    if (kept(density, i)) {
      sample.x.push_back(x[0]);
      sample.y.push_back(y[0]);
    }
    Numbers d = array_distances(x, y);
    if (d.size() < 2) {
      erase_at(x, 0);
      erase_at(y, 0);
    } else {
      erase_at(d, 0);
      erase_at(x, 0);
      erase_at(y, 0);
      std::size_t nearest = 0;
      double best = d[0];
      for (std::size_t k = 1; k < d.size(); ++k) {
        if (d[k] < best) {
          best = d[k];
          nearest = k;
        }
      }
      const double next_x = x[nearest];
      const double next_y = y[nearest];
      erase_at(x, nearest);
      erase_at(y, nearest);
      x.insert(x.begin(), next_x);
      y.insert(y.begin(), next_y);
    }
    i = i + 1;
  }
  return {sample.x, sample.y};
}

bool check_solid_filled(const Numbers& x, const Numbers& y, double cell_size) {
  const std::int32_t nx = to_int32(std::ceil((largest(x) - smallest(x)) / cell_size));
  const std::int32_t ny = to_int32(std::ceil((largest(y) - smallest(y)) / cell_size));
  if (elongated(nx, ny)) return false;
  const double cells = static_cast<double>(wrapping_product(nx, ny));
  const float fill_single = static_cast<float>(static_cast<double>(x.size()) / cells);
  const double fill = static_cast<double>(fill_single);
  return x.size() < 4 || fill > 0.65;
}

}  // namespace oracle
