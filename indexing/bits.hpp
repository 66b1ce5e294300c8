#pragma once

#include <cstdint>

namespace chart_trace {

// The number of the lowest bit that is set in `word`, which must not be 0.
inline std::int64_t lowest_bit(std::uint64_t word) {
#ifdef __GNUC__
  return __builtin_ctzll(word);
#else
  std::int64_t bit = 0;
  while ((word >> bit & 1U) == 0) ++bit;
  return bit;
#endif
}

}  // namespace chart_trace
