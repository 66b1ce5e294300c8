// Fission grouping, beside OpenCV's connected components of the same picture with one pass that
// lists the pixels of each label.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>
#ifdef CHART_TRACE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

#include "bench/on_pixel_sets.hpp"
#include "grouping/fission_algm.hpp"
#include "test/oracle/oracle.hpp"

namespace chart_trace_bench {
namespace {

void group(Pixels pixels) {
  const Fission_algm fission(std::move(pixels.x), std::move(pixels.y), 1.0);
  benchmark::DoNotOptimize(&fission);
  benchmark::ClobberMemory();
}

bool equals_oracle(const Pixels& pixels) {
  const Fission_algm fission(pixels.x, pixels.y, 1.0);
  const oracle::Groups want = oracle::fission(pixels.x, pixels.y, 1.0);
  return same_bits(fission.x_groups_func(), want.x) && same_bits(fission.y_groups_func(), want.y);
}

const bool registered = on_pixel_sets({"Fission_algm", taking_over(group), equals_oracle});

#ifdef CHART_TRACE_OPENCV
cv::Mat picture_of(const Pixels& pixels) {
  const auto width = static_cast<int>(*std::max_element(pixels.x.begin(), pixels.x.end())) + 1;
  const auto height = static_cast<int>(*std::max_element(pixels.y.begin(), pixels.y.end())) + 1;
  cv::Mat picture = cv::Mat::zeros(height, width, CV_8U);
  for (std::size_t i = 0; i < pixels.x.size(); ++i) {
    picture.at<std::uint8_t>(static_cast<int>(pixels.y[i]), static_cast<int>(pixels.x[i])) = 255;
  }
  return picture;
}

void label_and_list(const cv::Mat& picture) {
  cv::Mat labels;
  const auto count = static_cast<std::size_t>(cv::connectedComponents(picture, labels, 8, CV_32S));
  std::vector<std::vector<cv::Point>> pixels(count);
  for (int row = 0; row < labels.rows; ++row) {
    const int* const label = labels.ptr<int>(row);
    for (int column = 0; column < labels.cols; ++column) {
      if (label[column] == 0) continue;
      pixels[static_cast<std::size_t>(label[column])].emplace_back(column, row);
    }
  }
  benchmark::DoNotOptimize(pixels.data());
}

// What is timed starts from the picture, as a reader of pictures would.
Call labelling_of(const Pixels& pixels) {
  cv::setNumThreads(1);
  return [picture = picture_of(pixels)] { label_and_list(picture); };
}

const bool anchor_registered = on_pixel_sets({"Fission_algm:OpenCV",
                                              labelling_of,
                                              nullptr,
                                              {all_shapes.begin(), all_shapes.end()},
                                              {Order::raster},
                                              {10'000, 100'000, 1'000'000}});
#endif

}  // namespace
}  // namespace chart_trace_bench
