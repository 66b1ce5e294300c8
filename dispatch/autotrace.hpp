#pragma once

#include <string>
#include <utility>
#include <vector>

// Runs the one extractor that a mode string names and holds its two result vectors.
//
//   mode                                    result
//   point_density                           cluster centroids
//   points-fission, points-horizontal       centres of scatter markers
//   curves-fission, curves-horizontal       curve as a thinned chain of centroids
//   points_curves-fission, -horizontal      marker centres, then the curve
//   bar_vertical-fission, -horizontal       tops of vertical bars
//   bar_horizontal-fission, -horizontal     right ends of horizontal bars
//   histogram                               tops of histogram bars
//   step_size_graph                         vertices of a step line
//
// A mode matches exactly or not at all; an unknown one gives two empty vectors and is no error. All
// lengths are image pixels, y grows downwards. `pixel_step`, the spacing of neighbouring pixels,
// means nothing to point_density; `cluster_fraction` means nothing to bars, histogram and steps.
// The x and y result have equal lengths in every mode but step_size_graph.
// Every bit of a result is the same on every processor, but for a NaN that arithmetic made, as the
// sum of both infinities is: it is a NaN everywhere, its sign is the processor's. No caller in
// JavaScript can tell, as the host's arrays of numbers know a single NaN.
class Autotrace {
 public:
  Autotrace(std::vector<double> x, std::vector<double> y, double pixel_step, std::string mode,
            double cluster_fraction);

  std::vector<double> x_autotrace_func() const& { return x_out; }
  std::vector<double> y_autotrace_func() const& { return y_out; }

 private:
  std::vector<double> x_in, y_in;    // handed on to the extractor
  std::vector<double> x_out, y_out;  // the extractor's result
  double pixel_step;
  std::string mode;
};
