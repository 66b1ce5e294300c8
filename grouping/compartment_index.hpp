#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "grouping/compartment_borders.hpp"
#include "indexing/packed_pixels.hpp"

namespace chart_trace {

// The compartments of a point set: of equal width, side by side from the leftmost point rightwards.
// Says which one takes each point without building them, for callers that need no more of a
// compartment than its top, or its size and sums.
//
// The compartments reach as far as the last point if all points are taken. A point with a NaN
// coordinate never is, and then they reach to the largest x, one more when that lies exactly on a
// border. A NaN as first y is the bottom and the top of the set: no point is taken. No points, or a
// NaN as first x, give no compartments.
//
// Pixels, whose coordinates are small whole numbers, are kept packed, and it is their columns that
// are looked up in the borders, once each: a compartment takes whole columns. So they cost half as
// much as other points.
//
// The vectors must outlive the index. Cost: one pass here for pixels, two for other points, three
// when a late one is the first that is no pixel, and a sort of the x values when gaps are told as
// one; one pass for each call of a function below.
class Compartment_index {
 public:
  // How compartments without points are told: each, or, where there are far more compartments than
  // points, all of a gap as one empty compartment, so that memory is bounded by the points.
  enum class Empty { each, gap_as_one };

  struct Point {
    double x;
    double y;
  };

  Compartment_index(const std::vector<double>& x, const std::vector<double>& y, double width,
                    Empty empty);

  // The number of compartments told, empty ones included.
  std::size_t count() const { return borders_.count(); }

  // The number of compartments there are.
  std::size_t total() const { return borders_.total(); }

  // All points in input order, if each is a pixel and they are not few for the columns they lie in.
  const std::optional<Packed_pixels>& pixels() const { return pixels_; }

  // The compartment of one of them; count() if none takes it.
  std::uint32_t compartment_of(Packed_pixel pixel) const { return of_column_[column_of(pixel)]; }

  // Calls visit(compartment, stretch) for all points in input order, a stretch of neighbours at a
  // time: stretch[0] to stretch[stretch.size - 1] are points of the same x and one compartment.
  // Those that none takes come as compartment count(). In column-major order stretches are few and
  // long, so that what is summed up stays at hand. A stretch of pixels and one of other points are
  // of different types.
  template <class Visit>
  void for_each_stretch(Visit visit) const;

  // Calls visit(compartment, point) for all points in input order: half the time of stretches in
  // any other order.
  template <class Visit>
  void for_each_point(Visit visit) const;

  // The same for the points of two compartments, `left` at most `right`. When they are one, its
  // points come once.
  template <class Visit>
  void for_each_point_of(std::size_t left, std::size_t right, Visit visit) const;

 private:
  struct Point_stretch {
    const double* x;
    const double* y;
    std::size_t size;
    Point operator[](std::size_t i) const { return {x[i], y[i]}; }
  };
  struct Pixel_stretch {
    const Packed_pixel* pixels;
    std::size_t size;
    Point operator[](std::size_t i) const {
      return {static_cast<double>(column_of(pixels[i])), static_cast<double>(row_of(pixels[i]))};
    }
  };

  template <class Visit>
  void for_each_pixel_stretch(Visit visit) const;
  template <class Visit>
  void for_each_point_stretch(Visit visit) const;

  const std::vector<double>& x_;
  const std::vector<double>& y_;
  bool takes_any_ = false;
  Compartment_borders borders_;
  std::optional<Packed_pixels> pixels_;
  std::vector<std::uint32_t> of_column_;
};

template <class Visit>
void Compartment_index::for_each_stretch(Visit visit) const {
  if (pixels_) {
    for_each_pixel_stretch(visit);
  } else if (takes_any_) {
    for_each_point_stretch(visit);
  } else {
    visit(count(), Point_stretch{x_.data(), y_.data(), x_.size()});
  }
}

// Locals, so that nothing visit() writes could be one of these: half the time of a short stretch.

template <class Visit>
void Compartment_index::for_each_pixel_stretch(Visit visit) const {
  const Packed_pixel* const pixels = pixels_->data();
  const std::size_t size = pixels_->size();
  for (std::size_t begin = 0, end = 0; begin < size; begin = end) {
    const std::uint32_t column = column_of(pixels[begin]);
    for (end = begin + 1; end < size && column_of(pixels[end]) == column;) ++end;
    visit(std::size_t{compartment_of(pixels[begin])}, Pixel_stretch{pixels + begin, end - begin});
  }
}

template <class Visit>
void Compartment_index::for_each_point_stretch(Visit visit) const {
  const double* const x = x_.data();
  const double* const y = y_.data();
  const std::size_t size = x_.size();
  for (std::size_t begin = 0, end = 0; begin < size; begin = end) {
    end = begin + 1;
    if (std::isnan(y[begin])) {
      visit(count(), Point_stretch{x + begin, y + begin, 1});
      continue;
    }
    while (end < size && x[end] == x[begin] && !std::isnan(y[end])) ++end;
    visit(borders_.compartment_at(x[begin]), Point_stretch{x + begin, y + begin, end - begin});
  }
}

template <class Visit>
void Compartment_index::for_each_point(Visit visit) const {
  if (pixels_) {
    const Pixel_stretch all{pixels_->data(), pixels_->size()};
    for (std::size_t i = 0; i < all.size; ++i) {
      visit(std::size_t{compartment_of(all.pixels[i])}, all[i]);
    }
  } else {
    for_each_stretch([&](std::size_t compartment, const auto& stretch) {
      for (std::size_t i = 0; i < stretch.size; ++i) visit(compartment, stretch[i]);
    });
  }
}

template <class Visit>
void Compartment_index::for_each_point_of(std::size_t left, std::size_t right, Visit visit) const {
  if (!takes_any_) return;
  const Compartment_borders::Interval in_left = borders_.interval(left);
  const Compartment_borders::Interval in_right = borders_.interval(right);
  const double* const x = x_.data();
  const double* const y = y_.data();
  const std::size_t size = x_.size();
  for (std::size_t i = 0; i < size; ++i) {
    if (x[i] <= in_left.right) {
      if (in_left.holds(x[i]) && !std::isnan(y[i])) visit(left, Point{x[i], y[i]});
    } else if (in_right.holds(x[i]) && !std::isnan(y[i])) {
      visit(right, Point{x[i], y[i]});
    }
  }
}

}  // namespace chart_trace
