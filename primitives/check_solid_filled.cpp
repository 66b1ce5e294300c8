#include "primitives/check_solid_filled.hpp"

#include <cmath>
#include <cstdint>

#include "primitives/to_int32.hpp"

namespace {

// The length of the interval between the extremes, in whole cells, rounded up.
std::int32_t extent_in_cells(const chart_trace::Extremes& extremes, double cell_size) {
  return chart_trace::to_int32(std::ceil((extremes.max - extremes.min) / cell_size));
}

// Whether a group `cells` wide and `ratio` times as long across that width counts as a line. The
// comparison is made in single precision.
bool is_line(std::int32_t cells, float ratio) {
  if (cells < 1) return false;
  return ratio >= (cells == 1 ? 4.0F : 2.0F);
}

}  // namespace

bool check_solid_filled(std::vector<double> x, std::vector<double> y, double cell_size) {
  using chart_trace::extremes_of;
  return chart_trace::is_solid_filled(extremes_of(x), extremes_of(y), x.size(), cell_size);
}

namespace chart_trace {

bool is_solid_filled(const Extremes& x, const Extremes& y, std::size_t count, double cell_size) {
  const std::int32_t columns = extent_in_cells(x, cell_size);
  const std::int32_t rows = extent_in_cells(y, cell_size);
  const double width = columns;
  const double height = rows;
  if (is_line(columns, static_cast<float>(height / width))) return false;
  if (is_line(rows, static_cast<float>(width / height))) return false;
  if (count < 4) return true;
  const double cells = wrapping_product(columns, rows);
  const auto fill = static_cast<float>(static_cast<double>(count) / cells);
  return static_cast<double>(fill) > 0.65;
}

}  // namespace chart_trace
