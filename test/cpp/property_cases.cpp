#include "test/cpp/property_cases.hpp"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <numeric>
#include <string>
#include <utility>

namespace chart_trace_test {

namespace {

std::uint64_t from_environment(const char* name, std::uint64_t otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

std::uint64_t& cases_run() {
  static std::uint64_t count = 0;
  return count;
}

// Says at the end of a run how many cases all its properties were held on.
class Total : public testing::Environment {
 public:
  void TearDown() override {
    if (cases_run() > 0) std::cout << "[ property ] " << cases_run() << " cases in all\n";
  }
};

const testing::Environment* const total = testing::AddGlobalTestEnvironment(new Total);

std::vector<std::size_t> sizes_up_to(std::size_t last) {
  std::vector<std::size_t> sizes(last + 1);
  std::iota(sizes.begin(), sizes.end(), std::size_t{0});
  return sizes;
}

}  // namespace

const std::vector<Sweep>& sweeps() {
  static const std::vector<Sweep> all = {
      {sizes_up_to(60), 1000},
      // Where a faster way of doing the same may begin: powers of two and their neighbours.
      {{63, 64, 65, 100, 127, 128, 129, 255, 256, 257}, 150},
      {{400, 511, 512, 513}, 60},
      {{1023, 1024, 1025}, 30},
      {{2048, 3000}, 15}};
  return all;
}

namespace {

Case any_case(std::uint64_t seed, std::size_t size) { return make_case(seed, size); }

Case bounded_case(std::uint64_t seed, std::size_t size) {
  Case made = make_case(seed, size);
  made.step = bounded_width(made.x, made.step, seed % 64 == 0 ? 20000 : 2000);
  return made;
}

void holds_on_all(Case (*make)(std::uint64_t seed, std::size_t size), const Check& check) {
  const std::uint64_t offset = from_environment("CHART_TRACE_SEED_OFFSET", 0);
  const std::uint64_t seeds = from_environment("CHART_TRACE_CASES", 120);
  std::uint64_t count = 0;
  int failures = 0;
  for (const Sweep& sweep : sweeps()) {
    const std::uint64_t rounds = std::max<std::uint64_t>(1, seeds * sweep.per_mille / 1000);
    for (const std::size_t size : sweep.sizes) {
      for (std::uint64_t round = 0; round < rounds && failures < 3; ++round) {
        const Case made = make(offset + round, size);
        const testing::AssertionResult result = check(made);
        ++count;
        if (result) continue;
        ++failures;
        ADD_FAILURE() << made.text() << "\n" << result.message();
      }
    }
  }
  cases_run() += count;
  testing::Test::RecordProperty("cases", std::to_string(count));
}

}  // namespace

void holds_on_all_cases(const Check& check) { holds_on_all(any_case, check); }

void holds_on_all_bounded_cases(const Check& check) { holds_on_all(bounded_case, check); }

testing::AssertionResult same_points(const std::vector<double>& got_x,
                                     const std::vector<double>& got_y, const oracle::Points& want) {
  const testing::AssertionResult x = same_bits(got_x, want.x);
  if (!x) return testing::AssertionFailure() << "x differs: " << x.message();
  const testing::AssertionResult y = same_bits(got_y, want.y);
  if (!y) return testing::AssertionFailure() << "y differs: " << y.message();
  return testing::AssertionSuccess();
}

testing::AssertionResult same_groups(const std::vector<Group_of_arrays>& got_x,
                                     const std::vector<Group_of_arrays>& got_y,
                                     const oracle::Groups& want) {
  const testing::AssertionResult x = same_bits(values_of(got_x), want.x);
  if (!x) return testing::AssertionFailure() << "x groups differ: " << x.message();
  const testing::AssertionResult y = same_bits(values_of(got_y), want.y);
  if (!y) return testing::AssertionFailure() << "y groups differ: " << y.message();
  return testing::AssertionSuccess();
}

testing::AssertionResult all_of(const std::vector<testing::AssertionResult>& results) {
  for (const testing::AssertionResult& result : results) {
    if (!result) return result;
  }
  return testing::AssertionSuccess();
}

}  // namespace chart_trace_test
