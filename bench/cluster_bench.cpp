// Clusters on the pixel sets, few large ones and thousands of small ones, and the chain through
// random points.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "bench/on_pixel_sets.hpp"
#include "primitives/cluster_algm.hpp"
#include "primitives/point_density.hpp"
#include "test/oracle/oracle.hpp"

#ifdef CHART_TRACE_NANOFLANN
#include <nanoflann.hpp>
#endif

namespace chart_trace_bench {
namespace {

constexpr double some_tens = 0.05;  // the fractions that make so many clusters
constexpr double thousands = 0.001;
constexpr double every_point = 0.05;  // a density code

bool add_clusters(const std::string& name, double fraction) {
  const auto run = [fraction](Pixels pixels) {
    benchmark::DoNotOptimize(Cluster_algm(std::move(pixels.x), std::move(pixels.y), fraction));
  };
  const auto is_right = [fraction](const Pixels& pixels) {
    const Cluster_algm got(pixels.x, pixels.y, fraction);
    const oracle::Points want = oracle::cluster(pixels.x, pixels.y, fraction).centroids;
    return same_bits(got.arr_x_centroid(), want.x) && same_bits(got.arr_y_centroid(), want.y);
  };
  return on_pixel_sets({name, taking_over(run), is_right});
}

bool chain_is_right(const Pixels& points) {
  const auto got = point_density(points.x, points.y, every_point);
  return same_bits(got, oracle::point_density(points.x, points.y, every_point));
}

void walk_chain(Pixels points) {
  benchmark::DoNotOptimize(point_density(std::move(points.x), std::move(points.y), every_point));
}

void measure_chain(benchmark::State& state, std::size_t size) {
  if (!chain_is_right(random_points(2'000, 1000.0))) {
    state.SkipWithError("the answer is wrong");
    return;
  }
  time_calls(state, taking_over(walk_chain), random_points(size, 1000.0));
}

bool add_chain() {
  for (const std::size_t size : {1'000U, 10'000U, 100'000U, 1'000'000U}) {
    const std::string name = "point_density/random points/any order/" + std::to_string(size);
    benchmark::RegisterBenchmark(name.c_str(), measure_chain, size);
  }
  return true;
}

#ifdef CHART_TRACE_NANOFLANN

// What the index asks of a point set.
struct Cloud {
  const Pixels& pixels;
  std::size_t kdtree_get_point_count() const { return pixels.x.size(); }
  double kdtree_get_pt(std::size_t i, std::size_t dimension) const {
    return dimension == 0 ? pixels.x[i] : pixels.y[i];
  }
  template <class Box>
  bool kdtree_get_bbox(Box&) const {
    return false;
  }
};

double radius_of(const Pixels& pixels, double fraction) {
  std::vector<double> distances;
  for (std::size_t i = 1; i < pixels.x.size(); ++i) {
    distances.push_back(std::hypot(pixels.x[i] - pixels.x[0], pixels.y[i] - pixels.y[0]));
  }
  const auto taken =
      static_cast<std::ptrdiff_t>(std::ceil(static_cast<double>(distances.size()) * fraction));
  std::nth_element(distances.begin(), distances.begin() + taken - 1, distances.end());
  return std::accumulate(distances.begin(), distances.begin() + taken, 0.0) /
         static_cast<double>(taken);
}

// The same clusters by radius searches in a tree: of the points found, those that are free are
// gathered in input order.
void gather_by_nanoflann(const Pixels& pixels) {
  const double radius = radius_of(pixels, some_tens);
  using Index =
      nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 2>;
  const Cloud cloud{pixels};
  const Index index(2, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(10));
  nanoflann::SearchParams params;
  params.sorted = false;
  std::vector<bool> is_free(pixels.x.size(), true);
  std::vector<std::pair<std::uint32_t, double>> found;
  std::vector<std::uint32_t> gathered;
  std::vector<double> x_centroids;
  std::vector<double> y_centroids;
  for (std::size_t seed = 0; seed < pixels.x.size(); ++seed) {
    if (!is_free[seed]) continue;
    const double centre[2] = {pixels.x[seed], pixels.y[seed]};
    index.radiusSearch(centre, radius * radius, found, params);
    gathered.clear();
    for (const auto& [i, square] : found) {
      if (is_free[i]) gathered.push_back(i);
    }
    std::sort(gathered.begin(), gathered.end());
    double x_sum = 0.0;
    double y_sum = 0.0;
    for (const std::uint32_t i : gathered) {
      is_free[i] = false;
      x_sum += pixels.x[i];
      y_sum += pixels.y[i];
    }
    x_centroids.push_back(x_sum / static_cast<double>(gathered.size()));
    y_centroids.push_back(y_sum / static_cast<double>(gathered.size()));
  }
  benchmark::DoNotOptimize(x_centroids.data());
  benchmark::DoNotOptimize(y_centroids.data());
}

bool add_anchor() {
  return on_pixel_sets(
      {"Cluster_algm, fraction 0.05:nanoflann", looking_at(gather_by_nanoflann), nullptr});
}

#else

bool add_anchor() { return true; }

#endif

const bool registered = add_clusters("Cluster_algm, fraction 0.05", some_tens) && add_anchor() &&
                        add_clusters("Cluster_algm, fraction 0.001", thousands) && add_chain();

}  // namespace
}  // namespace chart_trace_bench
