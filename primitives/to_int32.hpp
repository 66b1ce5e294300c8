#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace chart_trace {

// `value` truncated towards zero to a signed 32-bit integer. NaN and everything whose truncation
// does not fit give the smallest 32-bit integer: what the usual hardware answers, on every machine
// and without undefined behaviour.
inline std::int32_t to_int32(double value) {
  // Both bounds are exact doubles. The open interval holds just the values whose truncation fits; a
  // NaN fails both tests.
  if (value > -2147483649.0 && value < 2147483648.0) return static_cast<std::int32_t>(value);
  return std::numeric_limits<std::int32_t>::min();
}

// a * b modulo 2^32, as a signed 32-bit integer: the product wraps where it does not fit.
inline std::int32_t wrapping_product(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

// The number of elements of a vector as a signed 32-bit integer, the type in which every loop of
// the algorithms counts. From 2^31 elements on it is negative, and such a loop runs no iteration.
template <typename Vector>
std::int32_t count_of(const Vector& vector) {
  return static_cast<std::int32_t>(vector.size());
}

}  // namespace chart_trace
