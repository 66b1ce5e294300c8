#include "indexing/crowd.hpp"

#include <algorithm>
#include <limits>
#include <utility>

namespace chart_trace {
namespace {

constexpr std::uint32_t leaf_size = Loose_points::most_at_once;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Box nothing = {infinity, -infinity, infinity, -infinity};

bool meet(const Box& a, const Box& b) {
  return a.left <= b.right && b.left <= a.right && a.low <= b.high && b.low <= a.high;
}

bool is_spot(const Box& box) { return box.left == box.right && box.low == box.high; }

// Of two infinities too.
double distance(double low, double high) { return low == high ? 0.0 : high - low; }

void include(Box& bounds, const Box& other) {
  bounds = {std::min(bounds.left, other.left), std::max(bounds.right, other.right),
            std::min(bounds.low, other.low), std::max(bounds.high, other.high)};
}

void include(Box& bounds, const Indexed_point& point) {
  include(bounds, Box{point.x, point.x, point.y, point.y});
}

// Puts the points that lie below the middle of the bounds in front and returns the first that does
// not. Without a branch on the comparison, which would be guessed wrongly as often as not.
template <typename Coordinate>
Indexed_point* part(Indexed_point* begin, Indexed_point* end, double middle,
                    Coordinate coordinate) {
  Indexed_point* front = begin;
  for (Indexed_point* point = begin; point != end; ++point) {
    const Indexed_point here = *point;
    *point = *front;
    *front = here;
    front += coordinate(here) < middle;
  }
  return front;
}

template <typename Coordinate>
Indexed_point* halve(Indexed_point* begin, Indexed_point* end, double low, double high,
                     Coordinate coordinate) {
  Indexed_point* const front = part(begin, end, low + (high - low) / 2, coordinate);
  const auto least = (end - begin) / 8;
  if (front - begin > least && end - front > least) return front;
  Indexed_point* const middle = begin + (end - begin) / 2;
  std::nth_element(begin, middle, end,
                   [coordinate](const Indexed_point& a, const Indexed_point& b) {
                     return coordinate(a) < coordinate(b);
                   });
  return middle;
}

}  // namespace

Crowd::Crowd(Indexed_point* points, std::uint32_t begin, std::uint32_t end) {
  add_node(points, begin, end);
  for (std::uint32_t number = 0; number < nodes_.size(); ++number) {
    const Node node = nodes_[number];
    if (node.end - node.begin <= leaf_size || is_spot(node.bounds)) continue;
    const Box& box = node.bounds;
    Indexed_point* const first = points + node.begin;
    Indexed_point* const last = points + node.end;
    const Indexed_point* const middle =
        distance(box.left, box.right) > distance(box.low, box.high)
            ? halve(first, last, box.left, box.right, [](const Indexed_point& p) { return p.x; })
            : halve(first, last, box.low, box.high, [](const Indexed_point& p) { return p.y; });
    nodes_[number].halves = static_cast<std::uint32_t>(nodes_.size());
    add_node(points, node.begin, static_cast<std::uint32_t>(middle - points));
    add_node(points, static_cast<std::uint32_t>(middle - points), node.end);
  }
}

void Crowd::add_node(Indexed_point* points, std::uint32_t begin, std::uint32_t end) {
  Box bounds = nothing;
  for (std::uint32_t place = begin; place < end; ++place) include(bounds, points[place]);
  nodes_.push_back({bounds, begin, end, 0});
}

Taken_place* Crowd::take_from(std::uint32_t number, Loose_points& points, const Window& window,
                              Taken_place* out) {
  Node& node = nodes_[number];
  if (!meet(node.bounds, window.box)) return out;
  if (node.halves != 0) {
    Taken_place* const end =
        take_from(node.halves + 1, points, window, take_from(node.halves, points, window, out));
    if (end == out) return out;
    node.bounds = nodes_[node.halves].bounds;
    include(node.bounds, nodes_[node.halves + 1].bounds);
    return end;
  }
  Taken_place* end = out;
  Box left = nothing;
  for (std::uint32_t place = node.begin; place < node.end; place += leaf_size) {
    const std::uint32_t count = std::min(leaf_size, node.end - place);
    end = points.take(place, count, window, end);
    for (std::uint64_t bits = points.free.among(place, count); bits != 0; bits &= bits - 1) {
      include(left, points.points[place + static_cast<std::uint32_t>(lowest_bit(bits))]);
    }
  }
  if (end != out) node.bounds = left;
  return end;
}

}  // namespace chart_trace
