#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace chart_trace {

// A tree of maxima over a list of values: finds the first value from a place on that is large
// enough. Each level holds the largest of every eight values of the level below. No value may be
// NaN; negative infinity stands for no value.
// Cost: linear to build, O(log n) for each call.
template <typename Value>
class Max_tree {
 public:
  explicit Max_tree(std::vector<Value> values) : size_(values.size()) {
    add_level(std::move(values));
    while (levels_.back().size() > fan_out) {
      std::vector<Value> level(levels_.back().size() / fan_out);
      for (std::size_t i = 0; i < level.size(); ++i) level[i] = largest_below(levels_.size(), i);
      add_level(std::move(level));
    }
  }

  std::size_t size() const { return size_; }

  // The first index >= `from` whose value qualifies; size() when there is none. If a value
  // qualifies every larger one must, and negative infinity must not: then a part of the list holds
  // a qualifying value just when its maximum qualifies, and nothing is missed.
  template <typename Qualifies>
  std::size_t first_from(std::size_t from, Qualifies qualifies) const {
    std::size_t i = from;
    for (std::size_t level = 0; level < levels_.size(); ++level) {
      const std::vector<Value>& values = levels_[level];
      const bool is_top = level + 1 == levels_.size();
      const std::size_t end = is_top ? values.size() : (i + fan_out - 1) / fan_out * fan_out;
      for (; i < end; ++i) {
        if (qualifies(values[i])) return first_below(level, i, qualifies);
      }
      i /= fan_out;
    }
    return size_;
  }

  // Takes value i out of the list; it must be there.
  void remove(std::size_t i) {
    const Value removed = levels_.front()[i];
    levels_.front()[i] = none;
    for (std::size_t level = 1; level < levels_.size(); ++level) {
      i /= fan_out;
      Value& largest = levels_[level][i];
      if (largest > removed) return;
      largest = largest_below(level, i);
      if (largest == removed) return;
    }
  }

 private:
  static constexpr std::size_t fan_out = 8;
  static constexpr Value none = -std::numeric_limits<Value>::infinity();

  // Levels are filled up, so that every node has eight below.
  void add_level(std::vector<Value> values) {
    values.resize((values.size() + fan_out - 1) / fan_out * fan_out, none);
    levels_.push_back(std::move(values));
  }

  // The largest of the values of the level below that node i stands for.
  Value largest_below(std::size_t level, std::size_t i) const {
    const Value* below = &levels_[level - 1][i * fan_out];
    Value largest = below[0];
    for (std::size_t k = 1; k < fan_out; ++k) largest = std::max(largest, below[k]);
    return largest;
  }

  // The first qualifying value under node i, which qualifies itself.
  template <typename Qualifies>
  std::size_t first_below(std::size_t level, std::size_t i, Qualifies qualifies) const {
    for (; level > 0; --level) {
      const std::vector<Value>& below = levels_[level - 1];
      i *= fan_out;
      while (!qualifies(below[i])) ++i;
    }
    return i;
  }

  std::size_t size_;
  std::vector<std::vector<Value>> levels_;  // the values first, at most eight nodes last
};

}  // namespace chart_trace
