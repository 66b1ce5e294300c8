# Toolchain of the WebAssembly build: clang with a C library for WASI, of whose imports none is left
# in the module. On Debian 12: clang-14 lld-14 wasi-libc libc++-14-dev-wasm32 libc++abi-14-dev-wasm32
# libclang-rt-14-dev-wasm32.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
find_program(CHART_TRACE_WASM_CXX NAMES clang++-14 clang++ REQUIRED)
set(CMAKE_CXX_COMPILER "${CHART_TRACE_WASM_CXX}")
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
# A library has no main; the compiler is tried on one.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_CXX_FLAGS_INIT -fexceptions) # compiled, see wasm/module.cpp
