#pragma once

#include <cstdint>
#include <vector>

#include "primitives/values.hpp"

// Free functions over vectors of doubles. A point set is a pair of parallel vectors: point i is
// (x[i], y[i]), in image pixels, y growing downwards. Counts are taken from x; y must be at least
// as long. Every function is pure; the cost is one pass unless said otherwise.

// The Euclidean distance of two points: the root of the plain sum of squares, without the scaling
// of hypot, whose last bits differ.
double distance(double x1, double y1, double x2, double y2);

// The arithmetic mean; NaN when there are no values. Summed from 0.0 in index order and divided
// once: any other order changes last bits that callers compare exactly.
double average_of_numbers(std::vector<double> values);

// The distance from point 0 to every point, itself included, in index order. An empty set gives one
// NaN, not an empty vector: a marker that callers can tell from every other result.
std::vector<double> array_distances(std::vector<double> x, std::vector<double> y);

// The index of the smallest value, the first of equals. A comparison with NaN is false, so a NaN is
// never chosen unless it stands first, and then nothing replaces it. An empty vector gives 1, which
// is no index of it: callers must not use it as one.
std::int32_t min_index(std::vector<double> values);

// Whether (px, py) lies in the box with the x range [box_x[0], box_x[1]] and the y range
// [box_y[0], box_y[1]], edges included. Any NaN makes it false. Both ranges must hold two values.
bool check_point_in_box(double px, double py, std::vector<double> box_x, std::vector<double> box_y);

// A copy, element by element.
std::vector<double> replicate_vector(std::vector<double> values);

namespace chart_trace {

// The result of average_of_numbers, for values that are only looked at.
double mean_of(Values values);

// The smallest and the largest value, the first of equals each (-0.0 and 0.0 are equal). NaN is
// passed over unless it stands first, and then it is both. `values` must not be empty.
struct Extremes {
  double min;
  double max;
};
Extremes extremes_of(Values values);

// mean_of and extremes_of of two parallel lists, not empty, found in one pass. Each sum waits for
// one addition after the other; all the rest is done in between and costs nothing.
struct Group_figures {
  double mean_x;
  double mean_y;
  Extremes x;
  Extremes y;
};
Group_figures figures_of(Values x, Values y);

}  // namespace chart_trace
