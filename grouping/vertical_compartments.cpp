#include "grouping/vertical_compartments.hpp"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "grouping/compartment_index.hpp"
#include "grouping/pixels_by_compartment.hpp"

Vertical_compartments::Vertical_compartments(std::vector<double> x, std::vector<double> y,
                                             double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)), compartment_width(compartment_width) {
  auto sorted = chart_trace::pixels_by_compartment(x_points, y_points, this->compartment_width);
  if (sorted) {
    unpack(*std::move(sorted));
  } else {
    divide();
  }
}

// A counting sort: the points of every compartment are counted, then moved there in input order.
void Vertical_compartments::divide() {
  using chart_trace::Compartment_index;
  const Compartment_index index(x_points, y_points, compartment_width,
                                Compartment_index::Empty::each);
  // The last one is for the points that no compartment takes.
  std::vector<std::uint32_t> places(index.count() + 1);
  index.for_each_stretch([&](std::size_t compartment, std::size_t begin, std::size_t end) {
    places[compartment] += static_cast<std::uint32_t>(end - begin);
  });
  std::uint32_t place = 0;
  for (std::uint32_t& size : places) place += std::exchange(size, place);

  std::vector<double> x(x_points.size());
  std::vector<double> y(x_points.size());
  index.for_each_stretch([&](std::size_t compartment, std::size_t begin, std::size_t end) {
    std::uint32_t to = places[compartment];
    for (std::size_t i = begin; i < end; ++i, ++to) {
      x[to] = x_points[i];
      y[to] = y_points[i];
    }
    places[compartment] = to;
  });
  places.pop_back();
  const auto taken = static_cast<std::ptrdiff_t>(places.empty() ? 0 : places.back());
  x_points.assign(x.begin() + taken, x.end());
  y_points.assign(y.begin() + taken, y.end());
  x_groups = {std::move(x), places};
  y_groups = {std::move(y), std::move(places)};
}

// The pixels are the points, all of them, in the order of their compartments.
void Vertical_compartments::unpack(chart_trace::Sorted_pixels sorted) {
  for (std::size_t i = 0; i < x_points.size(); ++i) {
    x_points[i] = sorted.pixels[i].x;
    y_points[i] = sorted.pixels[i].y;
  }
  x_groups = {std::move(x_points), sorted.ends};
  y_groups = {std::move(y_points), std::move(sorted.ends)};
}
