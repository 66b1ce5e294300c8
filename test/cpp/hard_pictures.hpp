// Point sets that an adversary would choose: each defeats some quick way of finding points that
// lie together, or comes in an order that a search does not expect.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "test/cpp/pixels.hpp"

namespace chart_trace_test {

struct Hard_picture {
  std::string name;
  Pixels (*points)(std::size_t count);  // about `count` points, the same on every run
};

const std::vector<Hard_picture>& hard_pictures();

}  // namespace chart_trace_test
