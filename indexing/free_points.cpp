#include "indexing/free_points.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace chart_trace {
namespace {

// Sixteen cells side by side lie side by side in memory too.
constexpr unsigned row_bits = 4;
constexpr std::size_t row_cells = std::size_t{1} << row_bits;

constexpr std::uint32_t is_crowd = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t most_compared = 64;  // more points of one hash are a crowd

// From here on doubles are at least one apart.
constexpr double largest_fraction = 4503599627370496.0;  // 2^52

std::int64_t bits_of(double value) {
  std::int64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// A box as wide as a cell lies in two of them, or in a third when it is rounded; outside this range
// of sizes the product below could overflow or vanish. Boxes that are far smaller than one, or have
// no size, find their few points in cells that measure one; nearly everything lies in one that is
// far larger than that.
double cells_in_one(double half) {
  if (half > 1e150) return 0.0;
  return half > 1e-150 ? 0.5 / half : 1.0;
}

// Which of up to 64 points lie in the box, a bit each. Without a branch on the comparisons, which
// would be guessed wrongly as often as not.
std::uint64_t which_are_inside(const Indexed_point* points, std::uint32_t count, const Box& box) {
  std::uint64_t inside = 0;
#if defined(__SSE2__)
  // Every 64-bit x86 has these: x and y are compared together.
  const __m128d lower = _mm_set_pd(box.low, box.left);
  const __m128d upper = _mm_set_pd(box.high, box.right);
  for (std::uint32_t k = 0; k < count; ++k) {
    const __m128d point = _mm_set_pd(points[k].y, points[k].x);
    const int both =
        _mm_movemask_pd(_mm_and_pd(_mm_cmpge_pd(point, lower), _mm_cmpge_pd(upper, point)));
    inside |= static_cast<std::uint64_t>(both == 3) << k;
  }
#else
  for (std::uint32_t k = 0; k < count; ++k) {
    inside |= static_cast<std::uint64_t>(box.contains(points[k].x, points[k].y)) << k;
  }
#endif
  return inside;
}

}  // namespace

Free_points::Free_points(const std::vector<double>& x, const std::vector<double>& y, double half)
    : x_(x),
      y_(y),
      cells_in_one_(cells_in_one(half)),
      hash_shift_(60),
      sorted_(new Indexed_point[x.size()]),
      is_taken_(x.size()),
      // Firsts of groups may turn up in a box a second time, before they are dropped.
      taken_(new Indexed_point[2 * x.size() + 1]) {
  std::size_t rows = 16;
  while (rows * row_cells < x.size()) {
    rows *= 2;
    --hash_shift_;
  }
  buckets_.resize(rows * row_cells);
  sort_by_cell();
  form_crowds();
}

// A counting sort, so points of one bucket stay in input order.
void Free_points::sort_by_cell() {
  constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
  std::vector<std::uint32_t> bucket_of(x_.size(), none);
  for (std::size_t i = 0; i < x_.size(); ++i) {
    if (std::isnan(x_[i]) || std::isnan(y_[i])) continue;
    const std::int64_t column = cell_of(x_[i]);
    bucket_of[i] = static_cast<std::uint32_t>(bucket_row(column, cell_of(y_[i])) +
                                              static_cast<std::size_t>(column) % row_cells);
    ++buckets_[bucket_of[i]].count;
  }
  std::uint32_t begin = 0;
  for (Bucket& bucket : buckets_) {
    bucket.begin = begin;
    begin += bucket.count;
    bucket.count = 0;
  }
  for (std::size_t i = 0; i < x_.size(); ++i) {
    if (bucket_of[i] == none) continue;
    Bucket& bucket = buckets_[bucket_of[i]];
    sorted_[bucket.begin + bucket.count++] = {x_[i], y_[i], static_cast<std::uint32_t>(i)};
  }
}

void Free_points::form_crowds() {
  for (Bucket& bucket : buckets_) {
    if (bucket.count <= most_compared) continue;
    crowds_.emplace_back(&sorted_[bucket.begin], bucket.count);
    bucket = {static_cast<std::uint32_t>(crowds_.size() - 1), is_crowd};
  }
}

// The cell of a coordinate counted in cells, without its fraction, so that the cell at zero is
// twice as wide. Where doubles are further apart than one cell, each is a cell of its own, numbered
// by its bits, which rise with it.
std::int64_t Free_points::cell_of(double coordinate) const {
  if (cells_in_one_ == 0.0) return 0;
  const double cells = coordinate * cells_in_one_;
  if (std::fabs(cells) < largest_fraction) return static_cast<std::int64_t>(cells);
  const std::int64_t cell = bits_of(std::fabs(cells)) - bits_of(largest_fraction) +
                            static_cast<std::int64_t>(largest_fraction);
  return cells < 0 ? -cell : cell;
}

// The first bucket of the row of cells that `column` lies in.
std::size_t Free_points::bucket_row(std::int64_t column, std::int64_t row) const {
  const auto block = static_cast<std::uint64_t>(column) / row_cells;
  std::uint64_t hash = static_cast<std::uint64_t>(row) * 0x9E3779B97F4A7C15U;
  hash ^= block * 0xC2B2AE3D27D4EB4FU;
  hash = (hash ^ hash >> 29) * 0xBF58476D1CE4E5B9U;
  return static_cast<std::size_t>(hash >> hash_shift_) * row_cells;
}

bool Free_points::take(std::size_t i) {
  if (is_taken_[i] != 0) return false;
  is_taken_[i] = 1;
  taken_[taken_count_++] = {x_[i], y_[i], static_cast<std::uint32_t>(i)};
  return true;
}

void Free_points::take(const Box& box) {
  if (!(box.left <= box.right && box.low <= box.high)) return;
  const std::int64_t first_column = cell_of(box.left);
  const std::int64_t last_column = cell_of(box.right);
  const std::int64_t last_row = cell_of(box.high);
  Indexed_point* const begin = &taken_[taken_count_];
  Indexed_point* end = begin;
  for (std::int64_t row = cell_of(box.low); row <= last_row; ++row) {
    std::size_t buckets = bucket_row(first_column, row);
    for (std::int64_t column = first_column; column <= last_column; ++column) {
      const std::size_t in_row = static_cast<std::size_t>(column) % row_cells;
      if (in_row == 0) buckets = bucket_row(column, row);
      end = take_from(buckets_[buckets + in_row], box, end);
    }
  }
  std::sort(begin, end,
            [](const Indexed_point& a, const Indexed_point& b) { return a.index < b.index; });
  // A point that was taken by itself, as the first of its group, is still in its cell.
  for (const Indexed_point* point = begin; point != end; ++point) {
    if (is_taken_[point->index] != 0) continue;
    is_taken_[point->index] = 1;
    taken_[taken_count_++] = *point;
  }
}

// Moves the points of a bucket that lie in the box to `out`; those that are left close ranks.
Indexed_point* Free_points::take_from(Bucket& bucket, const Box& box, Indexed_point* out) {
  if (bucket.count == 0) return out;
  if (bucket.count == is_crowd) return crowds_[bucket.begin].take(box, out);
  Indexed_point* const points = &sorted_[bucket.begin];
  const std::uint64_t inside = which_are_inside(points, bucket.count, box);
  if (inside == 0) return out;
  Indexed_point* left = points;
  for (std::uint32_t k = 0; k < bucket.count; ++k) {
    const Indexed_point point = points[k];
    const std::uint64_t is_inside = inside >> k & 1;
    *out = point;
    *left = point;
    out += is_inside;
    left += 1 - is_inside;
  }
  bucket.count = static_cast<std::uint32_t>(left - points);
  return out;
}

}  // namespace chart_trace
