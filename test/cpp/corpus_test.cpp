// Every input that the search ever kept is held against the oracle again in every run of the tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "fuzz/subjects.hpp"

namespace chart_trace_test {
namespace {

std::vector<std::filesystem::path> corpus() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(CHART_TRACE_CORPUS)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

chart_trace_fuzz::Drawing drawing_in(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::vector<char> chars{std::istreambuf_iterator<char>(stream), {}};
  const std::vector<std::uint8_t> bytes(chars.begin(), chars.end());
  return chart_trace_fuzz::draw(bytes.data(), bytes.size());
}

TEST(Corpus, every_drawing_equals_the_oracle) {
  for (const auto& file : corpus()) {
    EXPECT_EQ(chart_trace_fuzz::difference(drawing_in(file)), "") << file.filename();
  }
}

// A corpus that lost its files, or its meaning, would hold nothing.
TEST(Corpus, reaches_every_subject_with_more_than_a_hundred_points) {
  std::set<std::size_t> subjects;
  for (const auto& file : corpus()) {
    const chart_trace_fuzz::Drawing drawing = drawing_in(file);
    if (drawing.x.size() > 100)
      subjects.insert(drawing.subject % chart_trace_fuzz::subject_count());
  }
  EXPECT_EQ(subjects.size(), chart_trace_fuzz::subject_count());
}

}  // namespace
}  // namespace chart_trace_test
