#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace chart_trace {

// Writes points one behind the other over two parallel vectors, as many as these hold.
class Point_writer {
 public:
  Point_writer(std::vector<double>& x, std::vector<double>& y) : x_(x.data()), y_(y.data()) {}

  // The number of points written.
  std::size_t count() const { return count_; }

  void add(double x, double y) {
    x_[count_] = x;
    y_[count_] = y;
    ++count_;
  }

 private:
  double* x_;
  double* y_;
  std::size_t count_ = 0;
};

// Writes the groups of a flood fill and returns where they end.
template <typename Flood, typename Writer>
std::vector<std::uint32_t> write_groups(Flood& flood, Writer points) {
  std::vector<std::uint32_t> ends;
  while (flood.next_group(points)) ends.push_back(static_cast<std::uint32_t>(points.count()));
  return ends;
}

}  // namespace chart_trace
