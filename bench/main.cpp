#include <benchmark/benchmark.h>
#ifdef __linux__
#include <malloc.h>
#endif

#include <limits>

// Fresh memory costs more than most of what is measured here: about 6 ns a point for its first
// touch. The process therefore keeps what it frees, and every call but the first reuses it, as in a
// program that traces many pictures.
void keep_freed_memory() {
#ifdef __GLIBC__
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_TOP_PAD, 1 << 28);
#endif
}

int main(int argc, char** argv) {
  keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
