// The extension module cpp_code: registers itself with the host, turns the JavaScript arguments of
// trace() into a point set and its result into a JavaScript array. The only file that knows Node.
//
// Each status is tested with `env` in hand: a wrapper that returns an empty value after a failure
// would abort the host at its next call. The first failure ends the call, for once an exception is
// pending no read runs any JavaScript and whatever trace() returns is discarded.
#include <napi.h>

#include <cstdint>
#include <exception>
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

// Reads points 0 to ceil(count) - 1. The count is never compared with the arrays' lengths: the
// first element past an end is undefined, which is not a number. Memory grows with the elements
// that were read, not with a count that may promise too much.
bool read_points(napi_env env, napi_value x_values, napi_value y_values, double count,
                 Points& points) {
  return for_each_index(
      env, count, [&](std::uint32_t i) { return read_point(env, x_values, y_values, i, points); });
}

// A JavaScript array of `numbers`, bit for bit: NaN and -0 arrive as they are.
Napi::Value array_of(napi_env env, const std::vector<double>& numbers) {
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
