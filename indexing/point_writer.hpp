#pragma once

#include <cstddef>
#include <vector>

namespace chart_trace {

// Writes points one behind the other over two parallel vectors, as many as these hold. Which
// coordinate is called column is the caller's choice.
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
    add_blocks(length, [&](std::size_t at, double k) {
      columns_[at] = column + k;
      rows_[at] = row;
    });
  }

  // `length` points one below the other.
  void add_down(double column, double row, std::size_t length) {
    add_blocks(length, [&](std::size_t at, double k) {
      columns_[at] = column;
      rows_[at] = row + k;
    });
  }

 private:
  static constexpr std::size_t block = 4;

  // Calls write(place, k) for k from 0 to length - 1. Whole blocks are written, however few are
  // wanted, while there is room: that is cheaper than a loop whose end cannot be guessed.
  template <typename Write>
  void add_blocks(std::size_t length, Write write) {
    std::size_t k = 0;
    double offset = 0.0;  // k, which counts faster than it converts
    for (; k < length && room_ - count_ >= k + block; k += block, offset += block) {
      const std::size_t place = count_ + k;
      write(place, offset);
      write(place + 1, offset + 1.0);
      write(place + 2, offset + 2.0);
      write(place + 3, offset + 3.0);
    }
    for (; k < length; ++k, offset += 1.0) write(count_ + k, offset);
    count_ += length;
  }

  double* columns_;
  double* rows_;
  std::size_t room_;
  std::size_t count_ = 0;
};

}  // namespace chart_trace
