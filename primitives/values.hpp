#pragma once

#include <cstddef>
#include <vector>

namespace chart_trace {

// Doubles that live elsewhere and are only read: those of a vector, or a part of one.
// They must outlive this.
class Values {
 public:
  Values(const double* begin, const double* end) : begin_(begin), end_(end) {}
  // Without explicit, since a vector may stand wherever its values are read.
  Values(const std::vector<double>& vector)  // NOLINT(google-explicit-constructor)
      : Values(vector.data(), vector.data() + vector.size()) {}

  const double* begin() const { return begin_; }
  const double* end() const { return end_; }
  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  double operator[](std::size_t i) const { return begin_[i]; }

 private:
  const double* begin_;
  const double* end_;
};

}  // namespace chart_trace
