// Every mode on every picture that an adversary would choose: the results are the oracle's, and a
// small stack is enough, however many points there are.
#include "test/cpp/hard_pictures.hpp"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <cstddef>
#include <functional>
#include <string>

#include "dispatch/autotrace.hpp"
#include "test/cpp/same_bits.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_test {
namespace {

// Of modes that differ only in which result they hand out, one.
constexpr std::array<const char*, 7> computations = {
    "point_density",        "points_curves-fission",   "points_curves-horizontal",
    "bar_vertical-fission", "bar_vertical-horizontal", "histogram",
    "step_size_graph"};

// An outlier stretches histograms and step lines over a thousand million compartments, which the
// oracle walks one by one.
bool is_too_wide(const std::string& picture, const std::string& mode) {
  return picture.find("outlier") == 0 && (mode == "histogram" || mode == "step_size_graph");
}

TEST(Hard_pictures, are_traced_as_the_oracle_traces_them) {
  for (const Hard_picture& picture : hard_pictures()) {
    const Pixels set = picture.points(300);
    for (const char* mode : computations) {
      if (is_too_wide(picture.name, mode)) continue;
      for (const double fraction : {0.05, 0.001}) {
        const Autotrace got(set.x, set.y, 1.0, mode, fraction);
        const oracle::Points want = oracle::trace(set.x, set.y, 1.0, mode, fraction);
        EXPECT_TRUE(same_bits(got.x_autotrace_func(), want.x)) << picture.name << ", " << mode;
        EXPECT_TRUE(same_bits(got.y_autotrace_func(), want.y)) << picture.name << ", " << mode;
      }
    }
  }
}

// Sanitizers and builds without optimisation make the frames of functions several times as large.
#if !defined(__OPTIMIZE__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool has_plain_frames = false;
#elif defined(__has_feature)
constexpr bool has_plain_frames =
    !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer);
#else
constexpr bool has_plain_frames = true;
#endif

// Runs `body` in a thread with a stack of so many bytes. One that needs more ends the process.
void run_on_stack_of(std::size_t bytes, std::function<void()> body) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
  pthread_t thread{};
  const auto start = [](void* of) -> void* {
    (*static_cast<std::function<void()>*>(of))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, start, &body), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

TEST(Hard_pictures, need_little_stack_however_many_points_there_are) {
  constexpr std::size_t stack = (has_plain_frames ? 32 : 128) * 1024;
  for (const Hard_picture& picture : hard_pictures()) {
    for (const std::size_t count : {2'000U, 20'000U}) {
      const Pixels set = picture.points(count);
      for (const char* mode : computations) {
        if (is_too_wide(picture.name, mode)) continue;
        SCOPED_TRACE(picture.name + ", " + mode);
        run_on_stack_of(stack, [&] { const Autotrace traced(set.x, set.y, 1.0, mode, 0.05); });
      }
    }
  }
}

}  // namespace
}  // namespace chart_trace_test
