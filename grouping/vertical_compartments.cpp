#include "grouping/vertical_compartments.hpp"

#include <cstddef>

#include "indexing/compartment_index.hpp"
#include "indexing/pixel_sort.hpp"

namespace {

std::vector<Group_of_arrays> groups_of(std::vector<std::vector<double>> parts) {
  std::vector<Group_of_arrays> groups;
  groups.reserve(parts.size());
  for (std::vector<double>& part : parts) groups.emplace_back(std::move(part));
  return groups;
}

}  // namespace

Vertical_compartments::Vertical_compartments(std::vector<double> x, std::vector<double> y,
                                             double compartment_width)
    : x_points(std::move(x)), y_points(std::move(y)), compartment_width(compartment_width) {
  const auto sorted =
      chart_trace::pixels_by_compartment(x_points, y_points, this->compartment_width);
  if (sorted) {
    unpack(*sorted);
  } else {
    divide();
  }
}

// A counting sort: the points of every compartment are counted, then moved there in input order.
void Vertical_compartments::divide() {
  const chart_trace::Compartment_index index(x_points, y_points, compartment_width);
  // The last one is for the points that no compartment takes.
  std::vector<std::size_t> sizes(index.count() + 1);
  index.for_each_stretch([&](std::size_t compartment, std::size_t begin, std::size_t end) {
    sizes[compartment] += end - begin;
  });

  struct Place {
    double* x;
    double* y;
  };
  std::vector<Place> places;
  std::vector<std::vector<double>> x_parts;
  std::vector<std::vector<double>> y_parts;
  places.reserve(sizes.size());
  x_parts.reserve(sizes.size());
  y_parts.reserve(sizes.size());
  for (const std::size_t size : sizes) {
    x_parts.emplace_back(size);
    y_parts.emplace_back(size);
    places.push_back({x_parts.back().data(), y_parts.back().data()});
  }
  index.for_each_stretch([&](std::size_t compartment, std::size_t begin, std::size_t end) {
    Place place = places[compartment];
    for (std::size_t i = begin; i < end; ++i) {
      *place.x++ = x_points[i];
      *place.y++ = y_points[i];
    }
    places[compartment] = place;
  });

  x_points = std::move(x_parts.back());
  y_points = std::move(y_parts.back());
  x_parts.pop_back();
  y_parts.pop_back();
  x_groups = groups_of(std::move(x_parts));
  y_groups = groups_of(std::move(y_parts));
}

void Vertical_compartments::unpack(const chart_trace::Sorted_pixels& sorted) {
  // Not clear(), which would keep the memory: every point is in a compartment.
  x_points = std::vector<double>();
  y_points = std::vector<double>();
  x_groups.reserve(sorted.ends.size());
  y_groups.reserve(sorted.ends.size());
  std::size_t begin = 0;
  for (const std::size_t end : sorted.ends) {
    std::vector<double> x(end - begin);
    std::vector<double> y(end - begin);
    for (std::size_t i = begin; i < end; ++i) {
      x[i - begin] = sorted.pixels[i].x;
      y[i - begin] = sorted.pixels[i].y;
    }
    x_groups.emplace_back(std::move(x));
    y_groups.emplace_back(std::move(y));
    begin = end;
  }
}
