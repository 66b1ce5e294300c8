// Clusters, density chains and the solid-fill test, held against the oracle bit for bit.
#include "primitives/check_solid_filled.hpp"
#include "primitives/cluster_algm.hpp"
#include "primitives/point_density.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

TEST(Cluster_algm_property, centroids_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const Cluster_algm got(made.x, made.y, made.fraction);
    const oracle::Clusters want = oracle::cluster(made.x, made.y, made.fraction);
    return same_points(got.arr_x_centroid(), got.arr_y_centroid(), want.centroids);
  });
}

// What was never gathered shows only through the radius over it.
TEST(Cluster_algm_property, the_points_left_over_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const Cluster_algm got(made.x, made.y, made.fraction);
    const oracle::Points left = oracle::cluster(made.x, made.y, made.fraction).remaining;
    for (std::int32_t count = 0; count <= oracle::count_of(left.x) && count < 20; ++count) {
      const auto result =
          same_bits(got.cluster_radius(count), oracle::cluster_radius(left, count, made.fraction));
      if (!result) return testing::AssertionFailure() << "count " << count << result.message();
    }
    return testing::AssertionSuccess();
  });
}

TEST(Point_density_property, chains_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    return same_bits(values_of(point_density(made.x, made.y, made.fraction)),
                     oracle::point_density(made.x, made.y, made.fraction));
  });
}

testing::AssertionResult same_fill(const std::vector<double>& x, const std::vector<double>& y,
                                   double cell_size) {
  const bool got = check_solid_filled(x, y, cell_size);
  const bool want = oracle::check_solid_filled(x, y, cell_size);
  if (got == want) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "cell size " << text_of(cell_size) << ", got " << got << ", want " << want
         << " for\n  x " << text_of(x) << "\n  y " << text_of(y);
}

TEST(Check_solid_filled_property, whole_pictures_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    if (made.x.empty()) return testing::AssertionSuccess();
    return all_of({same_fill(made.x, made.y, made.step), same_fill(made.y, made.x, made.step),
                   same_fill(made.x, made.y, made.step * 5.0)});
  });
}

TEST(Check_solid_filled_property, connected_groups_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    const oracle::Groups groups = oracle::fission(made.x, made.y, made.step);
    for (std::size_t k = 0; k < groups.x.size(); ++k) {
      const auto result = same_fill(groups.x[k], groups.y[k], made.step);
      if (!result) return result;
    }
    return testing::AssertionSuccess();
  });
}

// Every box of up to 13 by 13 cells with every number of points from 2 to just past the fill that
// counts as solid: each edge between marker and line is crossed, one point at a time.
TEST(Check_solid_filled_property, every_small_box_and_count_equals_the_oracle) {
  for (int width = 0; width <= 13; ++width) {
    for (int height = 0; height <= 13; ++height) {
      for (const double cell : {1.0, 0.1, 1.0 / 3.0}) {
        std::vector<double> x = {0.0, width * cell};
        std::vector<double> y = {0.0, height * cell};
        while (x.size() < static_cast<std::size_t>(width * height + 2)) {
          ASSERT_TRUE(same_fill(x, y, cell)) << width << " by " << height;
          x.push_back(0.0);
          y.push_back(0.0);
        }
      }
    }
  }
}

// 5,857,802 points over 3,001 by 3,003 cells are a little more than 0.65 of them in double
// precision and a little less once rounded to single precision; one point more is past the edge in
// both.
TEST(Check_solid_filled_property, the_fill_is_rounded_to_single_precision) {
  std::vector<double> x(5857802, 0.0);
  std::vector<double> y(5857802, 0.0);
  x[0] = 3001.0;
  y[0] = 3003.0;
  ASSERT_GT(static_cast<double>(x.size()) / (3001.0 * 3003.0), 0.65);
  EXPECT_FALSE(check_solid_filled(x, y, 1.0));
  EXPECT_FALSE(oracle::check_solid_filled(x, y, 1.0));
  x.push_back(0.0);
  y.push_back(0.0);
  EXPECT_TRUE(check_solid_filled(x, y, 1.0));
  EXPECT_TRUE(oracle::check_solid_filled(x, y, 1.0));
}

}  // namespace
}  // namespace chart_trace_test
