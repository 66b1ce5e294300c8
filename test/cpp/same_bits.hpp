// Bit for bit comparison of results, with a failure text that names the first difference.
//
// Callers compare results exactly, so the tests do too: -0.0 is not 0.0 and the last bit counts.
// Only NaN is one value here: every NaN equals every other, whatever its sign and payload.
//
//   EXPECT_TRUE(same_bits(got, {1.0, 2.5}));
//   EXPECT_TRUE(same_bits(values_of(fission.x_groups_func()), {{0, 1}, {9}}));
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace chart_trace_test {

using Doubles = std::vector<double>;
using Groups_of_doubles = std::vector<Doubles>;

inline std::uint64_t bits_of(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

inline bool equal_bits(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return bits_of(a) == bits_of(b);
}

inline bool equal_bits(const Doubles& a, const Doubles& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!equal_bits(a[i], b[i])) return false;
  }
  return true;
}

// Seventeen digits name a double uniquely, so two values that print alike are alike.
inline std::string text_of(double value) {
  std::ostringstream text;
  text << std::setprecision(std::numeric_limits<double>::max_digits10) << value;
  return text.str();
}

// Long vectors are cut: the first difference is named apart, with its index.
inline std::string text_of(const Doubles& values) {
  constexpr std::size_t shown = 40;
  std::string text = "[";
  for (std::size_t i = 0; i < values.size() && i < shown; ++i) {
    if (i > 0) text += ", ";
    text += text_of(values[i]);
  }
  if (values.size() > shown) text += ", ...";
  return text + "] (" + std::to_string(values.size()) + " values)";
}

inline testing::AssertionResult same_bits(double got, double want) {
  if (equal_bits(got, want)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "got " << text_of(got) << ", want " << text_of(want);
}

inline testing::AssertionResult same_bits(const Doubles& got, const Doubles& want) {
  if (equal_bits(got, want)) return testing::AssertionSuccess();
  testing::AssertionResult failure = testing::AssertionFailure();
  for (std::size_t i = 0; i < got.size() && i < want.size(); ++i) {
    if (equal_bits(got[i], want[i])) continue;
    failure << "first difference at index " << i << ": got " << text_of(got[i]) << ", want "
            << text_of(want[i]) << "\n";
    break;
  }
  return failure << "  got  " << text_of(got) << "\n  want " << text_of(want);
}

inline testing::AssertionResult same_bits(const Groups_of_doubles& got,
                                          const Groups_of_doubles& want) {
  for (std::size_t k = 0; k < got.size() && k < want.size(); ++k) {
    if (equal_bits(got[k], want[k])) continue;
    return testing::AssertionFailure()
           << "group " << k << " of " << got.size() << " (want " << want.size()
           << " groups): " << same_bits(got[k], want[k]).message();
  }
  if (got.size() == want.size()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "got " << got.size() << " groups, want " << want.size();
}

// The plain vectors inside a vector of groups; any class with an array() accessor will do.
template <class Group>
Groups_of_doubles values_of(const std::vector<Group>& groups) {
  Groups_of_doubles values;
  values.reserve(groups.size());
  for (const Group& group : groups) values.push_back(group.array());
  return values;
}

}  // namespace chart_trace_test
