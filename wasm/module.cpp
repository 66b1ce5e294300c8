// What the extension module finds in Node.js and in a C++ run-time library with exceptions, for its
// WebAssembly build: the registration of modules and the throwing of exceptions. t.cpp and the core
// are compiled for it as they are.
//
// WebAssembly of today has no way to unwind that all hosts know, so nothing is unwound here: what
// C++ throws leaves through the embedder as an exception of JavaScript, past all frames, and no
// `catch` runs. The embedder gives such an instance up with all its memory and makes another one.
#include <node_api.h>

#include <cstddef>
#include <cstdlib>
#include <exception>
#include <new>
#include <typeinfo>

// The embedder's: throws a RangeError with this text, which ends with a zero byte.
extern "C" [[noreturn]] __attribute__((import_module("chart_trace"), import_name("fail"))) void
chart_trace_fail(const char* text);

// The module that registered itself when the embedder called _initialize().
static napi_module* registered = nullptr;

extern "C" {

void napi_module_register(napi_module* module) { registered = module; }

// The embedder's way in.
NAPI_EXTERN napi_value napi_register_wasm_v1(napi_env env, napi_value exports) {
  return registered->nm_register_func(env, exports);
}

// The run-time library's part of `throw`; the standard names its functions. An exception is made in
// memory of its own, for it may tell that there is none left.
// NOLINTBEGIN(bugprone-reserved-identifier)
void* __cxa_allocate_exception(std::size_t) noexcept {
  alignas(std::max_align_t) static unsigned char memory[256];
  return memory;
}

void __cxa_free_exception(void*) noexcept {}

// Everything that is thrown here derives from std::exception, as its first base.
[[noreturn]] void __cxa_throw(void* thrown, std::type_info*, void (*)(void*)) {
  chart_trace_fail(static_cast<std::exception*>(thrown)->what());
}
// NOLINTEND(bugprone-reserved-identifier)
}

// That of the run-time library, built without exceptions, returns null when no memory is left.
void* operator new(std::size_t size) {
  void* const memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
