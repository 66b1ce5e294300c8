#include "indexing/pixel_writer.hpp"

namespace chart_trace {
namespace {

constexpr std::array<Packed_pixel, 9> nine_around(Packed_pixel across, Packed_pixel down) {
  return {0 - down - across, 0 - down, across - down,  //
          0 - across,        0,        across,         //
          down - across,     down,     down + across};
}

}  // namespace

const std::array<Packed_pixel, 9> Pixel_writer::upright = nine_around(one_right, one_down);
const std::array<Packed_pixel, 9> Pixel_writer::turned = nine_around(one_down, one_right);

void Pixel_writer::add_points_along(const Pixel_map& map, std::uint32_t place, std::size_t length,
                                    Point_writer& points) {
  points.add_along(map.column_of(place), map.row_of(place), length);
}

void Pixel_writer::add_points_down(const Pixel_map& map, std::uint32_t place, std::size_t length,
                                   Point_writer& points) {
  points.add_down(map.column_of(place), map.row_of(place), length);
}

}  // namespace chart_trace
