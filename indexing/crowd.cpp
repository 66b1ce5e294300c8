#include "indexing/crowd.hpp"

#include <algorithm>
#include <limits>

namespace chart_trace {
namespace {

// A leaf has at most this many points: a handful is compared sooner than searched.
constexpr std::size_t leaf_size = 16;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr Box nothing = {infinity, -infinity, infinity, -infinity};

bool is_nothing(const Box& box) { return box.left > box.right; }

bool meet(const Box& a, const Box& b) {
  return a.left <= b.right && b.left <= a.right && a.low <= b.high && b.low <= a.high;
}

bool is_inside(const Box& inner, const Box& outer) {
  return outer.contains(inner.left, inner.low) && outer.contains(inner.right, inner.high);
}

Box around_both(const Box& a, const Box& b) {
  return {std::min(a.left, b.left), std::max(a.right, b.right), std::min(a.low, b.low),
          std::max(a.high, b.high)};
}

}  // namespace

Crowd::Crowd(Indexed_point* points, std::size_t count) : points_(points) {
  std::size_t leaves = 1;
  while (leaves * leaf_size < count) leaves *= 2;
  first_leaf_ = leaves - 1;
  nodes_.resize(2 * leaves - 1);
  build(0, 0, static_cast<std::uint32_t>(count));
}

void Crowd::build(std::size_t node, std::uint32_t begin, std::uint32_t end) {
  Node& here = nodes_[node];
  here.begin = begin;
  here.end = end;
  find_bounds(here);
  if (node >= first_leaf_) return;
  const std::uint32_t middle = begin + (end - begin) / 2;
  const Box& bounds = here.bounds;
  const bool is_wide = bounds.right - bounds.left > bounds.high - bounds.low;
  std::nth_element(points_ + begin, points_ + middle, points_ + end,
                   [is_wide](const Indexed_point& a, const Indexed_point& b) {
                     return is_wide ? a.x < b.x : a.y < b.y;
                   });
  build(2 * node + 1, begin, middle);
  build(2 * node + 2, middle, end);
}

void Crowd::find_bounds(Node& leaf) const {
  leaf.bounds = nothing;
  for (const Indexed_point* p = points_ + leaf.begin; p != points_ + leaf.end; ++p) {
    leaf.bounds = around_both(leaf.bounds, {p->x, p->x, p->y, p->y});
  }
}

Indexed_point* Crowd::take_from(std::size_t node, const Box& box, Indexed_point* out) {
  Node& here = nodes_[node];
  if (!meet(here.bounds, box)) return out;
  if (is_inside(here.bounds, box)) return take_all(node, out);
  if (node >= first_leaf_) {
    std::uint32_t left = here.begin;
    for (std::uint32_t k = here.begin; k < here.end; ++k) {
      const Indexed_point& point = points_[k];
      if (box.contains(point.x, point.y)) {
        *out++ = point;
      } else {
        points_[left++] = point;
      }
    }
    here.end = left;
    find_bounds(here);
    return out;
  }
  out = take_from(2 * node + 1, box, out);
  out = take_from(2 * node + 2, box, out);
  here.bounds = around_both(nodes_[2 * node + 1].bounds, nodes_[2 * node + 2].bounds);
  return out;
}

Indexed_point* Crowd::take_all(std::size_t node, Indexed_point* out) {
  Node& here = nodes_[node];
  if (is_nothing(here.bounds)) return out;
  here.bounds = nothing;
  if (node >= first_leaf_) {
    out = std::copy(points_ + here.begin, points_ + here.end, out);
    here.end = here.begin;
    return out;
  }
  out = take_all(2 * node + 1, out);
  return take_all(2 * node + 2, out);
}

}  // namespace chart_trace
