#pragma once

#include <algorithm>
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

  // `length` points, each `right` and `down` from the one before. Whole blocks are written, however
  // few are wanted, while there is room: that is cheaper than a loop whose end cannot be guessed.
  void add(double column, double row, std::size_t length, double right, double down) {
    while (length > 0) {
      if (room_ - count_ < block) {
        add(column, row);
        column += right;
        row += down;
        --length;
        continue;
      }
      for (std::size_t i = 0; i < block; ++i) {
        columns_[count_ + i] = column + right * static_cast<double>(i);
        rows_[count_ + i] = row + down * static_cast<double>(i);
      }
      const std::size_t used = std::min(length, block);
      column += right * block;
      row += down * block;
      length -= used;
      count_ += used;
    }
  }

 private:
  static constexpr std::size_t block = 4;

  double* columns_;
  double* rows_;
  std::size_t room_;
  std::size_t count_ = 0;
};

}  // namespace chart_trace
