// What a call costs on pictures that an adversary would choose: processor time and, at its peak,
// memory. A program of its own, so that each figure is that of a fresh process.
//
//   chart_trace_hard_pictures                        prints the names of the pictures
//   chart_trace_hard_pictures MODE FRACTION PICTURE POINTS
//                           prints the points, ns a point and bytes a point beyond the input's 16
#include "test/cpp/hard_pictures.hpp"

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include "dispatch/autotrace.hpp"

namespace {

using chart_trace_test::hard_pictures;
using chart_trace_test::Pixels;

double seconds_used() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// A figure of this process as the kernel keeps it, in bytes: "VmRSS:" or "VmHWM:".
double memory(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != name) {
  }
  double kilobytes = 0.0;
  status >> kilobytes;
  return 1024.0 * kilobytes;
}

int measure(const std::string& mode, double fraction, const std::string& picture,
            std::size_t count) {
  for (const auto& each : hard_pictures()) {
    if (each.name != picture) continue;
    const Pixels set = each.points(count);
    const auto points = static_cast<double>(set.x.size());
    const auto call = [&] { return Autotrace(set.x, set.y, 1.0, mode, fraction); };
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak is counted from here on
    const double memory_before = memory("VmRSS:");
    double best = seconds_used();
    call();
    const double start = best;
    best = seconds_used() - start;
    const double peak = memory("VmHWM:") - memory_before;
    // The shortest of several, but none more of what takes a second.
    for (const double begin = seconds_used(); seconds_used() - begin < 0.1 && best < 1.0;) {
      const double before = seconds_used();
      call();
      best = std::min(best, seconds_used() - before);
    }
    std::printf("%.0f %.1f %.1f\n", points, 1e9 * best / points, peak / points);
    return 0;
  }
  std::fprintf(stderr, "there is no picture '%s'\n", picture.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 5) {
    return measure(argv[1], std::atof(argv[2]), argv[3], std::strtoull(argv[4], nullptr, 10));
  }
  for (const auto& each : hard_pictures()) std::puts(each.name.c_str());
  return 0;
}
