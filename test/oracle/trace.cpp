#include "test/oracle/oracle.hpp"

namespace oracle {

Points trace(const Numbers& x, const Numbers& y, double step, const std::string& mode,
             double fraction) {
  if (mode == "point_density") return cluster(x, y, fraction).centroids;
  if (mode == "points_curves-fission") {
    return points_curves(x, y, step, "fission", fraction).points_curves;
  }
  if (mode == "points_curves-horizontal") {
    return points_curves(x, y, step, "horizontal", fraction).points_curves;
  }
  if (mode == "points-horizontal") return points_curves(x, y, step, "horizontal", fraction).points;
  if (mode == "points-fission") return points_curves(x, y, step, "fission", fraction).points;
  if (mode == "curves-horizontal") return points_curves(x, y, step, "horizontal", fraction).curves;
  if (mode == "curves-fission") return points_curves(x, y, step, "fission", fraction).curves;
  if (mode == "bar_horizontal-fission") return bars(x, y, step, "fission").horizontal;
  if (mode == "bar_vertical-fission") return bars(x, y, step, "fission").vertical;
  if (mode == "bar_horizontal-horizontal") return bars(x, y, step, "horizontal").horizontal;
  if (mode == "bar_vertical-horizontal") return bars(x, y, step, "horizontal").vertical;
  if (mode == "histogram") return histogram(x, y, step);
  if (mode == "step_size_graph") return step_graph(x, y, step);
  return {};
}

}  // namespace oracle
