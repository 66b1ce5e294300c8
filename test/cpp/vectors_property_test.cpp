// The free functions over vectors, held against the oracle on generated points.
#include "primitives/to_int32.hpp"
#include "primitives/vectors.hpp"
#include "test/cpp/property_cases.hpp"

namespace chart_trace_test {
namespace {

testing::AssertionResult same_number(std::int64_t got, std::int64_t want) {
  if (got == want) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "got " << got << ", want " << want;
}

TEST(Vectors_property, distance_equals_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    for (std::size_t i = 1; i < made.x.size(); ++i) {
      const auto result =
          same_bits(distance(made.x[i - 1], made.y[i - 1], made.x[i], made.y[i]),
                    oracle::distance(made.x[i - 1], made.y[i - 1], made.x[i], made.y[i]));
      if (!result) return result;
    }
    return testing::AssertionSuccess();
  });
}

TEST(Vectors_property, lists_of_numbers_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    return all_of(
        {same_bits(average_of_numbers(made.x), oracle::average_of_numbers(made.x)),
         same_bits(average_of_numbers(made.y), oracle::average_of_numbers(made.y)),
         same_bits(array_distances(made.x, made.y), oracle::array_distances(made.x, made.y)),
         same_number(min_index(made.x), oracle::min_index(made.x)),
         same_number(min_index(made.y), oracle::min_index(made.y)),
         same_bits(replicate_vector(made.x), oracle::replicate_vector(made.x))});
  });
}

TEST(Vectors_property, a_box_contains_what_the_oracle_says) {
  holds_on_all_cases([](const Case& made) {
    // A box between each two points in a row: edges are hit again and again.
    for (std::size_t i = 2; i < made.x.size(); ++i) {
      const std::vector<double> box_x = {made.x[i - 2], made.x[i - 1]};
      const std::vector<double> box_y = {made.y[i - 1], made.y[i - 2]};
      const auto result =
          same_number(check_point_in_box(made.x[i], made.y[i], box_x, box_y),
                      oracle::check_point_in_box(made.x[i], made.y[i], box_x, box_y));
      if (!result) return result;
    }
    return testing::AssertionSuccess();
  });
}

TEST(Vectors_property, conversions_to_32_bits_equal_the_oracle) {
  holds_on_all_cases([](const Case& made) {
    for (std::size_t i = 0; i < made.x.size(); ++i) {
      // Spreads the coordinates over the range of 32-bit integers and across its ends.
      for (const double value : {made.x[i], made.x[i] * 268435456.0, made.y[i] / made.step}) {
        const std::int32_t got = chart_trace::to_int32(value);
        const std::int32_t want = oracle::to_int32(value);
        const auto result =
            all_of({same_number(got, want),
                    same_number(chart_trace::wrapping_product(got, got - (got > 0 ? 1 : 0)),
                                oracle::wrapping_product(want, want - (want > 0 ? 1 : 0)))});
        if (!result) return result;
      }
    }
    return testing::AssertionSuccess();
  });
}

}  // namespace
}  // namespace chart_trace_test
