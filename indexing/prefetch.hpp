#pragma once

namespace chart_trace {

// Asks for the memory at `address` to be brought near, as it is about to be read. Changes nothing
// else; any address will do. In a function of its own that does nothing but this, g++ would take
// the call for one without effect and drop it.
inline void prefetch(const void* address) {
#ifdef __GNUC__
  __builtin_prefetch(address);
#else
  static_cast<void>(address);
#endif
}

}  // namespace chart_trace
