#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace chart_trace {

// Writes points one behind the other over two parallel vectors, as many as these hold. Which
// coordinate is called column is the caller's choice.
//
// Up to three values behind count() may be overwritten in each vector, as far as there is room.
// Callers must not need them any more.
class Point_writer {
 public:
  Point_writer(std::vector<double>& columns, std::vector<double>& rows)
      : columns_(columns.data()), rows_(rows.data()), room_(columns.size()) {}

  // The number of points written.
  std::size_t count() const { return count_; }

  void add(double column, double row) {
    columns_[count_] = column;
    rows_[count_] = row;
    ++count_;
  }

  // `length` points side by side, each one to the right of the one before.
  void add_along(double column, double row, std::size_t length) {
    add_blocks(length, column, row, columns_, rows_);
  }

  // `length` points one below the other.
  void add_down(double column, double row, std::size_t length) {
    add_blocks(length, row, column, rows_, columns_);
  }

 private:
  static constexpr std::size_t block = 4;

  // Writes `length` points, one of whose coordinates counts up from `first` while the other stays.
  // Whole blocks are written, however few are wanted, while there is room: that is cheaper than a
  // loop whose end cannot be guessed.
  void add_blocks(std::size_t length, double first, double still, double* counting,
                  double* staying) {
    counting += count_;
    staying += count_;
    std::size_t k = 0;
    for (; k < length && room_ - count_ >= k + block; k += block, first += block) {
      write(counting + k, {first, first + 1.0, first + 2.0, first + 3.0});
      write(staying + k, {still, still, still, still});
    }
    for (; k < length; ++k, first += 1.0) {
      counting[k] = first;
      staying[k] = still;
    }
    count_ += length;
  }

  // One by one, as the compiler stores two at once only then.
  static void write(double* place, const std::array<double, block>& values) {
    place[0] = values[0];
    place[1] = values[1];
    place[2] = values[2];
    place[3] = values[3];
  }

  double* columns_;
  double* rows_;
  std::size_t room_;
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
