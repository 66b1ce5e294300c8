// The sweep over sizes and seeds that every property is held on, and the comparison of results with
// those of the oracle.
//
// Two environment variables widen the search without a rebuild: CHART_TRACE_CASES is the number of
// seeds for each small size (120 unless set; larger sizes grow in proportion), and
// CHART_TRACE_SEED_OFFSET moves all seeds to fresh ones. A failure prints the seed as it must be
// given to make_case.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "primitives/group_of_arrays.hpp"
#include "test/cpp/same_bits.hpp"
#include "test/cpp/shapes.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_test {

// Sizes that are tried with `per_mille` of the seeds of a small size, but at least one.
struct Sweep {
  std::vector<std::size_t> sizes;
  std::uint64_t per_mille;
};

// Small sizes first, so that the first failure is a small one.
const std::vector<Sweep>& sweeps();

// Calls `check` on every case of the sweeps and reports those it refuses, at most three, by shape,
// order, seed, step, fraction and size. Records and prints the number of cases.
using Check = std::function<testing::AssertionResult(const Case&)>;
void holds_on_all_cases(const Check& check);

// The same for everything that cuts compartments of one step's width: the step of each case is
// bounded, so that there are at most 2,000 of them, in every 64th case up to 20,000.
void holds_on_all_bounded_cases(const Check& check);

testing::AssertionResult same_points(const std::vector<double>& got_x,
                                     const std::vector<double>& got_y, const oracle::Points& want);

testing::AssertionResult same_groups(const std::vector<Group_of_arrays>& got_x,
                                     const std::vector<Group_of_arrays>& got_y,
                                     const oracle::Groups& want);

// The first that fails, or success.
testing::AssertionResult all_of(const std::vector<testing::AssertionResult>& results);

}  // namespace chart_trace_test
