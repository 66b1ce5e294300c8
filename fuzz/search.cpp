// The search: libFuzzer calls this with ever new bytes and keeps those that reach new code. A
// difference to the oracle ends it with its text; the bytes are then in a file, which belongs into
// the corpus together with the fix.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/subjects.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string found = chart_trace_fuzz::difference(chart_trace_fuzz::draw(bytes, size));
  if (!found.empty()) {
    std::fprintf(stderr, "%s\n", found.c_str());
    std::abort();
  }
  return 0;
}
