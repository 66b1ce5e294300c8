#include "primitives/groups.hpp"

#include <algorithm>
#include <utility>

namespace chart_trace {
namespace {

using Ends = std::vector<std::uint32_t>;

Values part_of(const std::vector<double>& values, std::size_t begin, std::size_t end) {
  return {values.data() + begin, values.data() + end};
}

// Sums of whole numbers as small as these are never rounded, whatever their order.
Group_figures figures_of(const Packed_pixel* pixels, std::size_t count) {
  const Pixel_totals totals = totals_of(pixels, count);
  const auto divisor = static_cast<double>(count);
  const auto mean_of = [&](std::uint64_t sum) { return static_cast<double>(sum) / divisor; };
  const auto extremes_of = [](std::int32_t min, std::int32_t max) {
    return Extremes{static_cast<double>(min), static_cast<double>(max)};
  };
  const Pixel_frame& frame = totals.frame;
  return {mean_of(totals.columns), mean_of(totals.rows), extremes_of(frame.left, frame.right),
          extremes_of(frame.top, frame.bottom)};
}

// Moves the points of the groups named to the front, of whatever they are made; returns how many
// there are.
template <typename Point>
std::size_t move_to_front(Point* points, const Ends& ends, const std::vector<std::size_t>& kept) {
  Point* place = points;
  for (const std::size_t k : kept) {
    const Point* const begin = points + (k == 0 ? 0 : ends[k - 1]);
    const Point* const end = points + ends[k];
    if (place != begin) std::copy(begin, end, place);
    place += end - begin;
  }
  return static_cast<std::size_t>(place - points);
}

}  // namespace

Groups::Groups(std::vector<double> x, std::vector<double> y, std::vector<std::uint32_t> ends)
    : points_{{}, std::move(x), std::move(y)}, ends_(std::move(ends)) {}

Groups::Groups(Packed_pixels pixels, std::vector<std::uint32_t> ends)
    : points_{std::move(pixels), {}, {}}, ends_(std::move(ends)) {}

Group_figures Groups::figures(std::size_t k) const {
  const std::size_t begin = begin_of(k);
  const std::size_t end = ends_[k];
  if (points_.pixels) return figures_of(points_.pixels->data() + begin, end - begin);
  return chart_trace::figures_of(part_of(points_.x, begin, end), part_of(points_.y, begin, end));
}

Point_list Groups::joined(const std::vector<std::size_t>& kept) && {
  if (points_.pixels) {
    points_.pixels->shrink(move_to_front(points_.pixels->data(), ends_, kept));
  } else {
    points_.x.resize(move_to_front(points_.x.data(), ends_, kept));
    points_.y.resize(move_to_front(points_.y.data(), ends_, kept));
  }
  ends_.clear();
  return std::move(points_);
}

std::vector<Group_of_arrays> Groups::x_groups() const { return copies(points_.x, column_of); }
std::vector<Group_of_arrays> Groups::y_groups() const { return copies(points_.y, row_of); }

// Of one coordinate, which `coordinate_of` gives for a pixel.
std::vector<Group_of_arrays> Groups::copies(const std::vector<double>& values,
                                            std::uint32_t (*coordinate_of)(Packed_pixel)) const {
  std::vector<Group_of_arrays> groups;
  groups.reserve(size());
  for (std::size_t k = 0; k < size(); ++k) {
    std::vector<double> group(count(k));
    if (points_.pixels) {
      const Packed_pixel* const first = points_.pixels->data() + begin_of(k);
      std::transform(first, first + group.size(), group.begin(), coordinate_of);
    } else {
      std::copy_n(values.data() + begin_of(k), group.size(), group.begin());
    }
    groups.emplace_back(std::move(group));
  }
  return groups;
}

}  // namespace chart_trace
