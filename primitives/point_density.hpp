#pragma once

#include <vector>

#include "primitives/group_of_arrays.hpp"

// Orders a point set as a nearest-neighbour chain and keeps every k-th point of it: turns a cloud
// of curve centroids into a thinned, ordered polyline. The chain starts at the first point and goes
// from each point to the nearest one not yet visited, the first in input order of equally near
// ones; a NaN distance is never the nearest unless it stands first among the points left.
// The stride k hangs on the density code, which must be exactly one of these doubles:
//   0.05: 1    0.051: 2    0.052: 4    0.053: 8    0.054: 8    0.055: 16
// Any other code keeps nothing.
// Shape: two groups, the x and the y coordinates of the kept points in chain order; for an empty
// set one single group that holds one NaN, a marker that no other input gives.
// Cost: nearly linear, some 0.1 to 0.2 us a point; see indexing/point_grid.hpp. A code that keeps
// nothing needs no walk.
std::vector<Group_of_arrays> point_density(std::vector<double> x, std::vector<double> y,
                                           double density);
