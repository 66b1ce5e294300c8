// Everything that a drawing is tried on: each grouping and extractor class, the primitives that
// take points, and the thirteen modes, each held against the oracle bit for bit.
#pragma once

#include <string>

#include "fuzz/drawing.hpp"

namespace chart_trace_fuzz {

// How many subjects there are; `Drawing::subject` is taken modulo this.
std::size_t subject_count();

// Empty when the core and the oracle agree; otherwise what was run and the first difference.
std::string difference(const Drawing& drawing);

}  // namespace chart_trace_fuzz
