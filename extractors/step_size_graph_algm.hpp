#pragma once

#include <utility>
#include <vector>

// Turns the pixels of a step line (horizontal treads joined by vertical risers) into the vertices
// of its polyline, left to right, in image pixels.
// The pixels are cut into vertical compartments. One with at least 1.2 times the mean number of
// points, rounded up, is a riser, any other a tread, and the centre of a tread is the mean of its
// points. Tread centres are chained into steps; a new step begins where the height changes by
// strictly more than half a percent of the summed absolute height changes. The height of a step is
// that of its first centre.
// Shape: with R steps, both results begin with 2R values: the start, two vertices at each border
// between steps, halfway between the nearest centres, and the end of the last tread. The end then
// depends on the last riser: x and y have 2R + 1 values each when it stands at or right of the last
// centre and its far end is its largest y; 2R + 1 and 2R when its far end is not; 2R and 2R + 1
// when it stands left of the last centre, the extra y being its smallest. The two lengths differ on
// purpose.
// Empty: without a tread or without a riser (as when all compartments are equally full) both
// results are empty.
// NaN: a compartment without points is a tread with a NaN centre, and all treads then form one
// step.
// Cost: four passes over the points, one over the compartments, which are never built: memory is
// bounded by the points.
class Step_size_graph_algm {
 public:
  Step_size_graph_algm(std::vector<double> x, std::vector<double> y, double compartment_width);

  std::vector<double> x_step_func() const& { return x_steps; }
  std::vector<double> y_step_func() const& { return y_steps; }

 private:
  std::vector<double> x_points, y_points;
  std::vector<double> x_steps, y_steps;
};
