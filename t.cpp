// The extension module cpp_code: registers itself with the host, turns the JavaScript arguments of
// trace() into a point set and its result into a JavaScript array. The only file that knows Node.
//
// Each status is tested with `env` in hand: a wrapper that returns an empty value after a failure
// would abort the host at its next call. The first failure ends the call, for once an exception is
// pending no read runs any JavaScript and whatever trace() returns is discarded.
#include <napi.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "dispatch/autotrace.hpp"

namespace {

struct Points {
  std::vector<double> x, y;
};

// Whether a Node-API call succeeded. If not, an exception is pending afterwards: the one thrown by
// JavaScript that the call ran, or one that tells what the status says.
bool succeeded(napi_env env, napi_status status) {
  if (status == napi_ok) return true;
  Napi::Error::New(env).ThrowAsJavaScriptException();
  return false;
}

// Only numbers are accepted; nothing is converted to one.
bool read_number(napi_env env, napi_value value, double& number) {
  return succeeded(env, napi_get_value_double(env, value, &number));
}

// Any value but a Symbol has a text; that of an object is whatever its toString() returns.
bool read_text(napi_env env, napi_value value, std::string& text) {
  napi_value coerced = nullptr;
  if (!succeeded(env, napi_coerce_to_string(env, value, &coerced))) return false;
  text = Napi::String(env, coerced).Utf8Value();
  return true;
}

// Appends point i. Both elements are fetched, x first, before either has to be a number: getters
// and proxies see this order.
bool read_point(napi_env env, napi_value x_values, napi_value y_values, std::uint32_t i,
                Points& points) {
  napi_value x_element = nullptr;
  napi_value y_element = nullptr;
  double x = 0.0;
  double y = 0.0;
  const bool read = succeeded(env, napi_get_element(env, x_values, i, &x_element)) &&
                    succeeded(env, napi_get_element(env, y_values, i, &y_element)) &&
                    read_number(env, x_element, x) && read_number(env, y_element, y);
  if (!read) return false;
  points.x.push_back(x);
  points.y.push_back(y);
  return true;
}

// Calls body(i) for i = 0, 1, ... while i < count and the body succeeds; a count of NaN runs none.
// Handles live until their scope closes, so a scope for the whole call would hold those of a
// million elements at once; one for every 512 keeps memory flat at no measurable cost.
template <typename Body>
bool for_each_index(napi_env env, double count, Body body) {
  constexpr std::uint32_t indices_per_scope = 512;
  std::uint32_t i = 0;
  while (i < count) {
    const Napi::HandleScope scope(env);
    do {
      if (!body(i)) return false;
      ++i;
    } while (i < count && i % indices_per_scope != 0);
  }
  return true;
}

// The numbers of a typed array as doubles, where they lie. `data` stays valid until JavaScript
// runs.
struct Typed_array {
  napi_typedarray_type type;
  std::size_t length;
  const void* data;
};

// Whether `value` is a typed array.
bool is_typed_array(napi_env env, napi_value value, Typed_array& array) {
  // Stays where a host has a kind that its Node-API has no name for: read one by one, as these are.
  array.type = napi_bigint64_array;
  bool is_typed = false;
  if (napi_is_typedarray(env, value, &is_typed) != napi_ok || !is_typed) return false;
  void* data = nullptr;
  if (napi_get_typedarray_info(env, value, &array.type, &array.length, &data, nullptr, nullptr) !=
      napi_ok) {
    return false;
  }
  array.data = data;
  return true;
}

template <typename Number>
std::vector<double> converted(const void* data, std::size_t count) {
  const auto* const numbers = static_cast<const Number*>(data);
  return std::vector<double>(numbers, numbers + count);
}

// The first `count` numbers of a typed array; false, and nothing read, for a kind that holds no
// numbers (big integers) or that is not read here (numbers of 16 bits with a fraction).
bool convert(const Typed_array& array, std::size_t count, std::vector<double>& numbers) {
  switch (array.type) {
    case napi_float64_array:
      numbers = converted<double>(array.data, count);
      return true;
    case napi_float32_array:
      numbers = converted<float>(array.data, count);
      return true;
    case napi_int32_array:
      numbers = converted<std::int32_t>(array.data, count);
      return true;
    case napi_uint32_array:
      numbers = converted<std::uint32_t>(array.data, count);
      return true;
    case napi_int16_array:
      numbers = converted<std::int16_t>(array.data, count);
      return true;
    case napi_uint16_array:
      numbers = converted<std::uint16_t>(array.data, count);
      return true;
    case napi_int8_array:
      numbers = converted<std::int8_t>(array.data, count);
      return true;
    case napi_uint8_array:
    case napi_uint8_clamped_array:
      numbers = converted<std::uint8_t>(array.data, count);
      return true;
    default:
      return false;
  }
}

// Reads the points of two typed arrays at once. Their elements are what lies in memory, whatever a
// program does to the objects, and no JavaScript runs, so nobody can tell this from reading them
// one by one. False, and nothing read, for anything else: also for arrays too short, whose error
// comes from reading past their end.
bool read_typed_arrays(napi_env env, napi_value x_values, napi_value y_values, double count,
                       Points& points) {
  Typed_array x{};
  Typed_array y{};
  if (!is_typed_array(env, x_values, x) || !is_typed_array(env, y_values, y)) return false;
  const double rounded_up = std::ceil(count);
  if (!(rounded_up > 0.0 && rounded_up <= static_cast<double>(std::min(x.length, y.length)))) {
    return false;
  }
  const auto wanted = static_cast<std::size_t>(rounded_up);
  Points read;
  if (!convert(x, wanted, read.x) || !convert(y, wanted, read.y)) return false;
  points = std::move(read);
  return true;
}

// Reads stretches of any two objects by a loop of JavaScript, which the host compiles to machine
// code; a call of the host for each element costs some 30 ns. The loop does what read_point does,
// in that order, and uses nothing that a program could have changed. One for each environment, made
// when first needed: a cache of a function and of the memory that it writes to, and no state that a
// caller can see.
class Stretch_reader {
 public:
  static constexpr std::uint32_t capacity = 4096;

  // That of the environment; null where it cannot be had, and then no exception is pending.
  static Stretch_reader* of(napi_env env) {
    void* data = nullptr;
    if (napi_get_instance_data(env, &data) == napi_ok && data != nullptr) {
      return static_cast<Stretch_reader*>(data);
    }
    auto reader = std::make_unique<Stretch_reader>();
    reader->is_usable_ = reader->make(env);
    const auto destroy = [](napi_env its_env, void* made, void*) {
      const std::unique_ptr<Stretch_reader> owned(static_cast<Stretch_reader*>(made));
      // The host forgets what they refer to by itself, but not them.
      for (napi_ref reference : {owned->loop_, owned->x_memory_, owned->y_memory_}) {
        if (reference != nullptr) napi_delete_reference(its_env, reference);
      }
    };
    if (!reader->is_usable_) {
      bool is_pending = false;
      napi_value ignored = nullptr;
      if (napi_is_exception_pending(env, &is_pending) == napi_ok && is_pending) {
        napi_get_and_clear_last_exception(env, &ignored);
      }
    }
    if (napi_set_instance_data(env, reader.get(), destroy, nullptr) != napi_ok) return nullptr;
    return reader.release();
  }

  // Whether it can read now. Not while a stretch is being read: a getter that calls trace() must
  // not have its caller's memory written over. Never where the host cannot make the loop.
  bool is_ready() const { return is_usable_ && !is_busy_; }

  // Appends points `first` to `last` - 1, at most `capacity`. False, with the exception pending, at
  // the first read that throws or gives no number.
  bool read(napi_env env, napi_value x_values, napi_value y_values, double first, double last,
            Points& points) {
    const Napi::HandleScope scope(env);
    napi_value loop = nullptr;
    napi_value receiver = nullptr;
    napi_value arguments[] = {x_values, y_values, nullptr, nullptr, nullptr, nullptr};
    napi_value result = nullptr;
    double end = 0.0;
    if (!succeeded(env, napi_get_reference_value(env, loop_, &loop)) ||
        !succeeded(env, napi_get_undefined(env, &receiver)) ||
        !succeeded(env, napi_create_double(env, first, &arguments[2])) ||
        !succeeded(env, napi_create_double(env, last, &arguments[3])) ||
        !succeeded(env, napi_get_reference_value(env, x_memory_, &arguments[4])) ||
        !succeeded(env, napi_get_reference_value(env, y_memory_, &arguments[5]))) {
      return false;
    }
    is_busy_ = true;
    const napi_status status = napi_call_function(env, receiver, loop, 6, arguments, &result);
    is_busy_ = false;
    if (!succeeded(env, status) || !read_number(env, result, end)) return false;
    // It ended before an element that is no number: the undefined at hand raises that exception.
    if (end != last) return read_number(env, receiver, end);
    const auto count = static_cast<std::ptrdiff_t>(last - first);
    points.x.insert(points.x.end(), x_, x_ + count);
    points.y.insert(points.y.end(), y_, y_ + count);
    return true;
  }

 private:
  bool make(napi_env env) {
    // Strict, so that a getter does not find the loop as its caller.
    constexpr char source[] =
        "'use strict';"
        "(x, y, first, last, xs, ys) => {"
        "  for (let i = first; i < last; ++i) {"
        "    const a = x[i];"
        "    const b = y[i];"
        "    if (typeof a !== 'number' || typeof b !== 'number') return i;"
        "    xs[i - first] = a;"
        "    ys[i - first] = b;"
        "  }"
        "  return last;"
        "}";
    napi_value text = nullptr;
    napi_value loop = nullptr;
    return napi_create_string_utf8(env, source, sizeof(source) - 1, &text) == napi_ok &&
           napi_run_script(env, text, &loop) == napi_ok &&
           napi_create_reference(env, loop, 1, &loop_) == napi_ok &&
           make_memory(env, x_memory_, x_) && make_memory(env, y_memory_, y_);
  }

  static bool make_memory(napi_env env, napi_ref& reference, double*& numbers) {
    napi_value buffer = nullptr;
    napi_value array = nullptr;
    void* data = nullptr;
    const bool made =
        napi_create_arraybuffer(env, capacity * sizeof(double), &data, &buffer) == napi_ok &&
        napi_create_typedarray(env, napi_float64_array, capacity, buffer, 0, &array) == napi_ok &&
        napi_create_reference(env, array, 1, &reference) == napi_ok;
    numbers = static_cast<double*>(data);
    return made && is_shared(env, array, numbers);
  }

  // Whether what is written here is seen there: a host in another memory hands out a copy.
  static bool is_shared(napi_env env, napi_value array, double* numbers) {
    constexpr double mark = 0.5;
    napi_value element = nullptr;
    double seen = 0.0;
    numbers[0] = mark;
    return napi_get_element(env, array, 0, &element) == napi_ok &&
           napi_get_value_double(env, element, &seen) == napi_ok && seen == mark;
  }

  napi_ref loop_ = nullptr;
  napi_ref x_memory_ = nullptr, y_memory_ = nullptr;  // Float64Arrays over x_ and y_
  double* x_ = nullptr;
  double* y_ = nullptr;
  bool is_usable_ = false;
  bool is_busy_ = false;
};

// Whether indexing `value` needs no conversion to an object first.
bool is_object(napi_env env, napi_value value) {
  napi_valuetype type = napi_undefined;
  return napi_typeof(env, value, &type) == napi_ok &&
         (type == napi_object || type == napi_function);
}

// The reader for two values that are worth it; null for everything that is read one by one.
Stretch_reader* stretch_reader_for(napi_env env, napi_value x_values, napi_value y_values,
                                   double count) {
  // Below this the call that starts the loop, and running it uncompiled, cost more than they save.
  constexpr double worth_while = 1024.0;
  if (!(count >= worth_while) || !is_object(env, x_values) || !is_object(env, y_values)) {
    return nullptr;
  }
  Stretch_reader* const reader = Stretch_reader::of(env);
  return reader != nullptr && reader->is_ready() ? reader : nullptr;
}

// Makes room for `count` numbers where an array is as long as that; a count alone may promise too
// much, and so may the length of an array of holes, hence the bound.
void reserve_for(napi_env env, napi_value array, double count, std::vector<double>& numbers) {
  std::uint32_t length = 0;
  bool is_array = false;
  if (napi_is_array(env, array, &is_array) == napi_ok && is_array &&
      napi_get_array_length(env, array, &length) == napi_ok && count <= length) {
    constexpr std::uint32_t most = 1U << 24U;
    numbers.reserve(std::min(length, most));
  }
}

// Reads points 0 to ceil(count) - 1. The count is never compared with the arrays' lengths to refuse
// it: the first element past an end is undefined, which is not a number. Memory grows with the
// elements that were read, not with a count that may promise too much.
bool read_points(napi_env env, napi_value x_values, napi_value y_values, double count,
                 Points& points) {
  if (read_typed_arrays(env, x_values, y_values, count, points)) return true;
  if (Stretch_reader* const reader = stretch_reader_for(env, x_values, y_values, count)) {
    const double rounded_up = std::ceil(count);
    reserve_for(env, x_values, rounded_up, points.x);
    reserve_for(env, y_values, rounded_up, points.y);
    constexpr double capacity = Stretch_reader::capacity;
    double first = 0.0;
    while (first < rounded_up) {
      const double last = std::min(rounded_up, first + capacity);
      if (!reader->read(env, x_values, y_values, first, last, points)) return false;
      first = last;
    }
    return true;
  }
  return for_each_index(
      env, count, [&](std::uint32_t i) { return read_point(env, x_values, y_values, i, points); });
}

// A JavaScript array of `numbers`, bit for bit: NaN and -0 arrive as they are. The host would end
// the process if it were asked for an array of some 2^27 elements, so one as long is refused.
Napi::Value array_of(napi_env env, const std::vector<double>& numbers) {
  constexpr std::size_t most_elements = 134'000'000;
  if (numbers.size() > most_elements) {
    throw std::length_error("the result is longer than an array can be");
  }
  napi_value array = nullptr;
  if (!succeeded(env, napi_create_array_with_length(env, numbers.size(), &array))) return {};
  const bool written =
      for_each_index(env, static_cast<double>(numbers.size()), [&](std::uint32_t i) {
        napi_value number = nullptr;
        return succeeded(env, napi_create_double(env, numbers[i], &number)) &&
               succeeded(env, napi_set_element(env, array, i, number));
      });
  return written ? Napi::Value(env, array) : Napi::Value();
}

}  // namespace

// trace(x_values, y_values, count, pixel_step, mode, cluster_fraction): the data that the pixels
// show, as one array: all x values, then all y values. An empty value when an exception is pending.
// What the computation throws, when memory runs out or a pixel step asks for more compartments than
// can be counted, becomes a RangeError: nothing may reach the host's own frames.
static Napi::Value trace(const Napi::CallbackInfo& info) try {
  const napi_env env = info.Env();
  double count = 0.0;
  double pixel_step = 0.0;
  std::string mode;
  double cluster_fraction = 0.0;
  Points pixels;
  const bool read = read_number(env, info[2], count) && read_number(env, info[3], pixel_step) &&
                    read_text(env, info[4], mode) && read_number(env, info[5], cluster_fraction) &&
                    read_points(env, info[0], info[1], count, pixels);
  if (!read) return {};

  const Autotrace traced(std::move(pixels.x), std::move(pixels.y), pixel_step, std::move(mode),
                         cluster_fraction);
  std::vector<double> result = traced.x_autotrace_func();
  const std::vector<double> y_result = traced.y_autotrace_func();
  result.insert(result.end(), y_result.begin(), y_result.end());
  return array_of(env, result);
} catch (const std::exception& failure) {
  Napi::RangeError::New(info.Env(), failure.what()).ThrowAsJavaScriptException();
  return {};
}

static Napi::Object Init(Napi::Env env, Napi::Object exports) {
  napi_value key = nullptr;
  if (!succeeded(env, napi_create_string_utf8(env, "trace", 5, &key))) return exports;
  const Napi::Function function = Napi::Function::New<trace>(env);
  if (!function.IsEmpty()) succeeded(env, napi_set_property(env, exports, key, function));
  return exports;
}

// The registration is written out because the declaration macro of current headers makes no module
// record any more: it exports a well-known symbol, and the module would have no name. The names are
// those that the macro gives.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
static napi_value __napi_Init(napi_env env, napi_value exports) {
  return Napi::RegisterModule(env, exports, Init);
}

static napi_module cpp_code_module = {
    NAPI_MODULE_VERSION, 0, __FILE__, __napi_Init, "cpp_code", nullptr, {},
};

// Runs when the host loads the file, and is all that runs then.
__attribute__((constructor)) static void _register_cpp_code() {
  napi_module_register(&cpp_code_module);
}
// NOLINTEND(bugprone-reserved-identifier)
}
