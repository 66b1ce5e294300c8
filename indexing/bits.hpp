#pragma once

#include <cstdint>
#include <cstring>

namespace chart_trace {

// The bits of a value, as a number that rises with it from 0.0 to infinity; all others have larger
// ones.
inline std::uint64_t bits_of(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

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

// The number of the highest bit that is set in `word`, which must not be 0.
inline std::int64_t highest_bit(std::uint64_t word) {
#ifdef __GNUC__
  return 63 ^ __builtin_clzll(word);
#else
  std::int64_t bit = 63;
  while ((word >> bit & 1U) == 0) --bit;
  return bit;
#endif
}

// The number of bits that are set in `word`: added up in pairs, in fours and in bytes. Plain x86-64
// has no instruction for it, and the compiler's substitute is a call.
inline std::uint32_t count_bits(std::uint64_t word) {
  word -= word >> 1 & 0x5555555555555555U;
  word = (word & 0x3333333333333333U) + (word >> 2 & 0x3333333333333333U);
  word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0FU;
  return static_cast<std::uint32_t>(word * 0x0101010101010101U >> 56);
}

}  // namespace chart_trace
