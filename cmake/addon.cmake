# The extension module build/Release/cpp_code.node: t.cpp over the core; for WebAssembly,
# cpp_code.wasm. The only target that sees Node headers. They come from the npm packages that the lock
# file pins, or from the system.

# The folder of an npm package, or an empty path. Node.js is asked, for what an installed package
# needs lies beside it, or wherever else the package manager has put it.
function(find_npm_package name folder)
  execute_process(
    COMMAND node -p "path.dirname(require.resolve('${name}/package.json'))"
    WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}"
    OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  file(TO_CMAKE_PATH "${found}" found)
  set(${folder} "${found}" PARENT_SCOPE)
endfunction()

if(CHART_TRACE_NODE_HEADERS STREQUAL "npm")
  find_npm_package(node-addon-api addon_api_package)
  find_npm_package(node-api-headers api_headers_package)
  set(node_header_dirs "${addon_api_package}" "${api_headers_package}/include")
  set(node_header_remedy "run `npm install --ignore-scripts` in ${CMAKE_SOURCE_DIR}")
elseif(CHART_TRACE_NODE_HEADERS STREQUAL "system")
  # Debian and its kin keep node_api.h in include/node (package libnode-dev) and napi.h in
  # share/nodejs/node-addon-api (package node-addon-api), below /usr or CMAKE_PREFIX_PATH.
  find_path(CHART_TRACE_NODE_API_DIR node_api.h PATH_SUFFIXES node)
  find_path(CHART_TRACE_NAPI_DIR napi.h PATH_SUFFIXES ../share/nodejs/node-addon-api)
  set(node_header_dirs "${CHART_TRACE_NAPI_DIR}" "${CHART_TRACE_NODE_API_DIR}")
  set(node_header_remedy
    "install libnode-dev and node-addon-api, or name the prefix they are under in CMAKE_PREFIX_PATH")
else()
  message(FATAL_ERROR
    "CHART_TRACE_NODE_HEADERS must be npm or system, but is '${CHART_TRACE_NODE_HEADERS}'.")
endif()

list(GET node_header_dirs 0 napi_header_dir)
list(GET node_header_dirs 1 node_api_header_dir)
if(NOT EXISTS "${napi_header_dir}/napi.h" OR NOT EXISTS "${node_api_header_dir}/node_api.h")
  message(FATAL_ERROR
    "The Node-API headers were not found (napi.h in '${napi_header_dir}', node_api.h in "
    "'${node_api_header_dir}'): ${node_header_remedy}.")
endif()

set(is_wasm FALSE)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "wasm32")
  set(is_wasm TRUE)
endif()

if(is_wasm)
  add_executable(cpp_code t.cpp wasm/module.cpp)
else()
  add_library(cpp_code MODULE t.cpp)
endif()
target_link_libraries(cpp_code PRIVATE chart_trace_core chart_trace_flags chart_trace_warnings)
target_include_directories(cpp_code SYSTEM PRIVATE ${node_header_dirs})
# A worker that is stopped while trace() runs one of its getters cannot be thrown into any more; that
# must end the call, not the process.
target_compile_definitions(cpp_code PRIVATE
  NAPI_VERSION=8 NAPI_DISABLE_CPP_EXCEPTIONS NODE_API_SWALLOW_UNTHROWABLE_EXCEPTIONS)
# The module record names its source file, without the folder it happened to be built in. Some
# headers mark napi_module_register as deprecated, in favour of a symbol that makes no record.
target_compile_options(cpp_code PRIVATE
  "-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=" -Wno-deprecated-declarations)
if(is_wasm)
  # Node-API comes from JavaScript, the npm package emnapi, which has a small part to be linked in.
  # A stack that is exhausted must end in a trap, not in the data behind it.
  target_link_options(cpp_code PRIVATE
    -mexec-model=reactor
    "LINKER:--import-undefined,--export=napi_register_wasm_v1,--export=malloc,--export=free"
    "LINKER:--export-table,--growable-table,--gc-sections,--strip-all"
    "LINKER:--stack-first,-z,stack-size=1048576")
  target_link_libraries(cpp_code PRIVATE
    "${CMAKE_SOURCE_DIR}/node_modules/emnapi/lib/wasm32-wasi/libemnapi-basic.a")
  target_compile_definitions(cpp_code PRIVATE BUILDING_NODE_EXTENSION)
elseif(WIN32)
  # The program that loads the module has the napi_* functions; this tells the linker so.
  set(node_import_library "${CMAKE_CURRENT_BINARY_DIR}/libnode.a")
  add_custom_command(OUTPUT "${node_import_library}"
    COMMAND "${CMAKE_DLLTOOL}" --dllname node.exe
      --input-def "${node_api_header_dir}/../def/node_api.def" --output-lib "${node_import_library}"
    VERBATIM)
  add_custom_target(node_import_library DEPENDS "${node_import_library}")
  add_dependencies(cpp_code node_import_library)
  target_link_libraries(cpp_code PRIVATE "${node_import_library}")
  # Windows has no C++ library that all programs share.
  target_link_options(cpp_code PRIVATE -static)
elseif(APPLE)
  # The napi_* functions are the host's; they are bound when it loads the module.
  target_link_options(cpp_code PRIVATE -undefined dynamic_lookup)
endif()
if(CHART_TRACE_PREBUILT AND NOT is_wasm)
  target_link_options(cpp_code PRIVATE -s)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    target_sources(cpp_code PRIVATE cmake/older_library.cpp)
  endif()
endif()
if(is_wasm)
  set_target_properties(cpp_code PROPERTIES
    SUFFIX ".wasm" RUNTIME_OUTPUT_DIRECTORY "${CHART_TRACE_ADDON_DIR}")
else()
  set_target_properties(cpp_code PROPERTIES
    PREFIX "" SUFFIX ".node" LIBRARY_OUTPUT_DIRECTORY "${CHART_TRACE_ADDON_DIR}")
endif()

# Prints the record that the module registers; only its test builds it, and a published package has
# no tests.
if(UNIX AND NOT APPLE AND EXISTS "${CMAKE_SOURCE_DIR}/test/record/capture_record.cpp")
  add_executable(capture_record EXCLUDE_FROM_ALL test/record/capture_record.cpp)
  target_link_libraries(capture_record PRIVATE
    chart_trace_flags chart_trace_warnings ${CMAKE_DL_LIBS})
  set_target_properties(capture_record PROPERTIES ENABLE_EXPORTS ON)
endif()
