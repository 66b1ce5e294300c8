#include "indexing/run_map.hpp"

#include <limits>

namespace chart_trace {
namespace {

// Single precision holds every whole number up to here.
constexpr double largest_whole = 16777216.0;

// What all runs lie in.
struct Bounds {
  float left = std::numeric_limits<float>::infinity();
  float right = -left;
  double top = std::numeric_limits<double>::infinity();
  double bottom = -top;

  std::int64_t width() const {
    return whole(static_cast<double>(right)) - whole(static_cast<double>(left)) + 1;
  }
  std::int64_t height() const { return whole(bottom) - whole(top) + 1; }

 private:
  static std::int64_t whole(double number) { return static_cast<std::int64_t>(number); }
};

// Nothing when a number is NaN or too large.
std::optional<Bounds> bounds_of(const Run_pairs& pairs) {
  Bounds bounds;
  bool are_numbers = true;
  for (Run run = 0; run < pairs.count; ++run) {
    const Run_extent extent = pairs.extents[run];
    const double row = pairs.rows[run];
    are_numbers = are_numbers && extent.min <= extent.max && row == row;
    bounds.left = std::min(bounds.left, extent.min);
    bounds.right = std::max(bounds.right, extent.max);
    bounds.top = std::min(bounds.top, row);
    bounds.bottom = std::max(bounds.bottom, row);
  }
  const bool are_small = static_cast<double>(bounds.left) >= -largest_whole &&
                         static_cast<double>(bounds.right) <= largest_whole &&
                         bounds.top >= -largest_whole && bounds.bottom <= largest_whole;
  if (!are_numbers || !are_small) return std::nullopt;
  return bounds;
}

}  // namespace

std::optional<Run_map> Run_map::of(const Run_pairs& pairs) {
  std::optional<Run_map> map = Run_map();
  if (pairs.step != 1.0 || !map->place_runs(pairs) || !map->mark_pixels()) return std::nullopt;
  map->rank_runs();
  return map;
}

// Whether all ends and rows are whole numbers, and a map of them is not too large.
bool Run_map::place_runs(const Run_pairs& pairs) {
  const std::optional<Bounds> bounds = bounds_of(pairs);
  if (!bounds) return false;
  // A free column and row on each side: every look around stays on the map.
  const std::int64_t stride = bounds->width() + 2;
  const std::int64_t area = stride * (bounds->height() + 2);
  const std::int32_t left = static_cast<std::int32_t>(bounds->left) - 1;
  const std::int32_t top = static_cast<std::int32_t>(bounds->top) - 1;
  bool are_whole = true;
  std::int64_t pixels = 0;
  spans_.reserve(pairs.count);
  for (Run run = 0; run < pairs.count; ++run) {
    const Run_extent extent = pairs.extents[run];
    const auto first = static_cast<std::int32_t>(extent.min);
    const auto last = static_cast<std::int32_t>(extent.max);
    const auto row = static_cast<std::int32_t>(pairs.rows[run]);
    are_whole = are_whole && static_cast<float>(first) == extent.min &&
                static_cast<float>(last) == extent.max &&
                static_cast<double>(row) == pairs.rows[run];
    const auto length = static_cast<std::uint32_t>(last - first + 1);
    spans_.push_back({static_cast<std::uint32_t>((row - top) * stride + (first - left)), length});
    pixels += length;
  }
  // What a sparse picture may take; small pictures may be as sparse as they like. Places have 32
  // bits.
  const std::int64_t limit = std::min(128 * pixels + (1 << 20), std::int64_t{UINT32_MAX});
  if (!are_whole || area > limit) return false;
  stride_ = static_cast<std::size_t>(stride);
  pixels_.resize(static_cast<std::size_t>(area) / word_bits + 1);
  return true;
}

// Whether no pixel is covered twice.
bool Run_map::mark_pixels() {
  Word twice = 0;
  for (Run run = 0; run < spans_.size(); ++run) {
    for_each_word(run, [&](std::size_t word, Word mask) {
      twice |= pixels_[word] & mask;
      pixels_[word] |= mask;
    });
  }
  return twice == 0;
}

void Run_map::rank_runs() {
  left_ = pixels_;
  before_.reserve(pixels_.size());
  std::uint32_t before = 0;
  for (const Word word : pixels_) {
    before_.push_back(before);
    before += count_bits(word);
  }
  run_of_.resize(before);
  for (Run run = 0; run < spans_.size(); ++run) {
    const std::uint32_t rank = rank_of(spans_[run].place);
    for (std::uint32_t k = 0; k < spans_[run].length; ++k) run_of_[rank + k] = run;
  }
}

}  // namespace chart_trace
