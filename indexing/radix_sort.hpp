#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace chart_trace {

// Sorts `items` by key(item), an unsigned whole number; equal keys keep their order. Takes a pass
// for each group of 11 bits in which keys differ: six for arbitrary doubles, two or three for the
// squares of whole numbers, whose last bits are zero. Pays from some hundred items on.
template <typename Item, typename Key>
void radix_sort(std::vector<Item>& items, Key key) {
  constexpr unsigned digit_bits = 11;
  constexpr std::uint64_t mask = (std::uint64_t{1} << digit_bits) - 1;
  std::uint64_t differences = 0;
  for (const Item& item : items)
    differences |= std::uint64_t{key(item)} ^ std::uint64_t{key(items.front())};
  std::vector<Item> sorted(items.size());
  unsigned shift = 0;
  while (shift < 64 && differences >> shift != 0) {
    if ((differences >> shift & 1U) == 0) {
      ++shift;
      continue;
    }
    std::array<std::uint32_t, mask + 1> places{};
    for (const Item& item : items) ++places[key(item) >> shift & mask];
    std::uint32_t place = 0;
    for (std::uint32_t& count : places) {
      const std::uint32_t next = place + count;
      count = place;
      place = next;
    }
    for (const Item& item : items) sorted[places[key(item) >> shift & mask]++] = item;
    items.swap(sorted);
    shift += digit_bits;
  }
}

}  // namespace chart_trace
