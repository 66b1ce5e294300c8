#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace chart_trace {

// A tree of maxima over a list of values: finds the first value from a place on that is large
// enough. Each level holds the largest of every eight values of the level below, or more: when a
// value is taken out, the levels above are left as they are until a search comes to the end of the
// eight in vain. No value may be NaN; negative infinity stands for no value.
// Cost: linear to build, one store to take a value out or lower it, O(log n) for a search, from a
// place on or for the largest. Each such value lets one search, on each level, come to the end of
// eight in vain or find less below than the level says, and no more: that is corrected there, and
// the search for the largest begins anew from the top.
template <typename Value>
class Max_tree {
 public:
  explicit Max_tree(std::vector<Value> values) : size_(values.size()) {
    add_level(std::move(values));
    while (levels_.back().size() > fan_out) {
      std::vector<Value> level(levels_.back().size() / fan_out);
      for (std::size_t i = 0; i < level.size(); ++i) level[i] = largest_of(levels_.back(), i);
      add_level(std::move(level));
    }
  }

  std::size_t size() const { return size_; }

  // The first index >= `from` whose value qualifies; size() when there is none. If a value
  // qualifies every larger one must, and negative infinity must not: then a part of the list holds
  // no qualifying value if what stands for its maximum does not qualify, and nothing is missed.
  template <typename Qualifies>
  std::size_t first_from(std::size_t from, Qualifies qualifies) {
    if (from >= size_) return size_;
    std::size_t level = 0;
    std::size_t highest = 0;  // the level that the search has come up to
    std::size_t i = from;
    std::size_t end = (i / fan_out + 1) * fan_out;  // of the eight
    for (;;) {
      const std::vector<Value>& values = levels_[level];
      while (i < end && !qualifies(values[i])) ++i;
      if (i < end) {
        if (level == 0) return i;
        --level;
        i *= fan_out;
        end = i + fan_out;
        continue;
      }
      if (level + 1 == levels_.size()) return size_;
      i = end / fan_out;  // the node behind that of the eight
      if (level < highest) levels_[level + 1][i - 1] = largest_of(values, i - 1);
      highest = std::max(highest, ++level);
      end = (i + fan_out - 1) / fan_out * fan_out;
    }
  }

  // The index of the largest value, of the last such; size() when no value is left.
  std::size_t largest() {
    std::size_t level = levels_.size() - 1;
    std::size_t i = largest_between(level, 0, levels_.back().size());
    while (level > 0 && levels_[level][i] != none) {
      const std::size_t below = largest_between(level - 1, i * fan_out, (i + 1) * fan_out);
      const bool is_right = levels_[level][i] == levels_[level - 1][below];
      levels_[level][i] = levels_[level - 1][below];
      level = is_right ? level - 1 : levels_.size() - 1;
      i = is_right ? below : largest_between(level, 0, levels_.back().size());
    }
    return i < levels_[level].size() && levels_[level][i] != none ? i : size_;
  }

  // Replaces value i by one that is no larger.
  void lower(std::size_t i, Value value) { levels_.front()[i] = value; }

  // Takes value i out of the list.
  void remove(std::size_t i) { lower(i, none); }

 private:
  static constexpr std::size_t fan_out = 8;
  static constexpr Value none = -std::numeric_limits<Value>::infinity();

  // Levels are filled up, so that every node has eight below.
  void add_level(std::vector<Value> values) {
    const std::size_t filled = (values.size() + fan_out - 1) / fan_out * fan_out;
    values.reserve(filled);  // no more than that
    values.resize(filled, none);
    levels_.push_back(std::move(values));
  }

  // The last one of the largest nodes of a level from i to before `end`.
  std::size_t largest_between(std::size_t level, std::size_t i, std::size_t end) const {
    const std::vector<Value>& values = levels_[level];
    std::size_t largest = i;
    for (; i < end; ++i) {
      if (values[i] >= values[largest]) largest = i;
    }
    return largest;
  }

  // The largest of the eight values that node i of the level above stands for.
  static Value largest_of(const std::vector<Value>& level, std::size_t i) {
    const Value* below = &level[i * fan_out];
    Value largest = below[0];
    for (std::size_t k = 1; k < fan_out; ++k) largest = std::max(largest, below[k]);
    return largest;
  }

  std::size_t size_;
  std::vector<std::vector<Value>> levels_;  // the values first, at most eight nodes last
};

}  // namespace chart_trace
