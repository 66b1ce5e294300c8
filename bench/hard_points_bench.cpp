// Points that are no clean picture: anywhere between the pixels, far apart, crowded, at fractional
// steps, many times over. What they have in common is that no bitmap can hold them.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "bench/on_pixel_sets.hpp"
#include "grouping/fission_algm.hpp"
#include "grouping/horizontal_grouping_algm.hpp"
#include "primitives/cluster_algm.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_bench {
namespace {

constexpr double step = 0.7;  // on which no difference of two places is exact
constexpr double fraction = 0.05;

struct Subject_on_points {
  std::string name;
  Preparation call;
  bool (*is_right)(const Pixels&);
};

template <class Grouping>
void group(Pixels points) {
  benchmark::DoNotOptimize(Grouping(std::move(points.x), std::move(points.y), step));
}

template <class Grouping,
          oracle::Groups (*wanted)(const oracle::Numbers&, const oracle::Numbers&, double)>
bool groups_are_right(const Pixels& points) {
  const Grouping got(points.x, points.y, step);
  const oracle::Groups want = wanted(points.x, points.y, step);
  return same_bits(got.x_groups_func(), want.x) && same_bits(got.y_groups_func(), want.y);
}

void cluster(Pixels points) {
  benchmark::DoNotOptimize(Cluster_algm(std::move(points.x), std::move(points.y), fraction));
}

bool clusters_are_right(const Pixels& points) {
  const Cluster_algm got(points.x, points.y, fraction);
  const oracle::Points want = oracle::cluster(points.x, points.y, fraction).centroids;
  return same_bits(got.arr_x_centroid(), want.x) && same_bits(got.arr_y_centroid(), want.y);
}

// Evenly distributed points, `spacing` steps apart on average; one is NaN and one a far outlier.
Pixels cloud_of(std::size_t count, double spacing) {
  Pixels points = random_points(count, spacing * step * std::sqrt(static_cast<double>(count)));
  points.x.back() = 1e300;
  points.y[count / 2] = std::numeric_limits<double>::quiet_NaN();
  return points;
}

Pixels dense_cloud(std::size_t count) { return cloud_of(count, 0.7); }
Pixels cloud(std::size_t count) { return cloud_of(count, 2.0); }
Pixels far_cloud(std::size_t count) { return cloud_of(count, 1e6); }

Pixels discs_at_fractional_steps(std::size_t count) {
  Pixels discs = pixels_of(Shape::discs, Order::raster, count);
  for (double& x : discs.x) x *= step;
  for (double& y : discs.y) y *= step;
  return discs;
}

Pixels each_pixel_four_times(std::size_t count) {
  const Pixels once = pixels_of(Shape::discs, Order::shuffled, count / 4);
  Pixels points;
  for (std::size_t i = 0; i < count; ++i) {
    points.x.push_back(once.x[i % once.x.size()]);
    points.y.push_back(once.y[i % once.y.size()]);
  }
  return points;
}

Pixels one_spot(std::size_t count) {
  return {std::vector<double>(count, 3.5), std::vector<double>(count, 8.0)};
}

void measure(benchmark::State& state, const Subject_on_points& subject,
             Pixels (*points_of)(std::size_t), std::size_t size) {
  if (!subject.is_right(points_of(2'000))) {
    state.SkipWithError("the answer is wrong");
    return;
  }
  time_calls(state, subject.call, points_of(size));
}

bool add(const Subject_on_points& subject) {
  struct Kind {
    const char* name;
    Pixels (*points_of)(std::size_t);
  };
  for (const Kind& kind : {Kind{"dense cloud/any order", dense_cloud},
                           Kind{"cloud/any order", cloud}, Kind{"far cloud/any order", far_cloud},
                           Kind{"discs at fractional steps/raster", discs_at_fractional_steps},
                           Kind{"each pixel four times/shuffled", each_pixel_four_times},
                           Kind{"one spot/any order", one_spot}}) {
    for (const std::size_t size : {10'000U, 100'000U, 1'000'000U}) {
      const std::string name = subject.name + '/' + kind.name + '/' + std::to_string(size);
      benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        measure(state, subject, kind.points_of, size);
      });
    }
  }
  return true;
}

const bool registered =
    add({"Fission_algm", taking_over(group<Fission_algm>),
         groups_are_right<Fission_algm, oracle::fission>}) &&
    add({"Horizontal_grouping_algm", taking_over(group<Horizontal_grouping_algm>),
         groups_are_right<Horizontal_grouping_algm, oracle::horizontal>}) &&
    add({"Cluster_algm, fraction 0.05", taking_over(cluster), clusters_are_right});

}  // namespace
}  // namespace chart_trace_bench
