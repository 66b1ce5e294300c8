# The extension module build/Release/cpp_code.node: t.cpp over the core. The only target that sees
# Node headers. They come from the npm packages that the lock file pins, or from the system.

if(CHART_TRACE_NODE_HEADERS STREQUAL "npm")
  set(node_modules "${CMAKE_SOURCE_DIR}/node_modules")
  set(node_header_dirs
    "${node_modules}/node-addon-api" "${node_modules}/node-api-headers/include")
  set(node_header_remedy "run `npm ci --ignore-scripts` in ${CMAKE_SOURCE_DIR}")
elseif(CHART_TRACE_NODE_HEADERS STREQUAL "system")
  # Debian and its kin keep node_api.h under /usr/include/node (package libnode-dev) and napi.h under
  # the first of these (package node-addon-api).
  find_path(node_api_dir node_api.h PATH_SUFFIXES node)
  find_path(napi_dir napi.h
    PATHS /usr/include /usr/share/nodejs/node-addon-api "${CMAKE_SOURCE_DIR}/node_modules/node-addon-api")
  set(node_header_dirs "${napi_dir}" "${node_api_dir}")
  set(node_header_remedy "install the packages libnode-dev and node-addon-api")
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

add_library(cpp_code MODULE t.cpp)
target_link_libraries(cpp_code PRIVATE chart_trace_core chart_trace_flags chart_trace_warnings)
target_include_directories(cpp_code SYSTEM PRIVATE ${node_header_dirs})
# A worker that is stopped while trace() runs one of its getters cannot be thrown into any more; that
# must end the call, not the process.
target_compile_definitions(cpp_code PRIVATE
  NAPI_VERSION=8 NAPI_DISABLE_CPP_EXCEPTIONS NODE_API_SWALLOW_UNTHROWABLE_EXCEPTIONS)
# The module record names its source file; the folder it happened to be built in is nobody's business.
target_compile_options(cpp_code PRIVATE "-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=")
if(APPLE)
  # The napi_* functions are the host's; they are bound when it loads the module.
  target_link_options(cpp_code PRIVATE -undefined dynamic_lookup)
endif()
set_target_properties(cpp_code PROPERTIES
  PREFIX "" SUFFIX ".node"
  LIBRARY_OUTPUT_DIRECTORY "${CHART_TRACE_ADDON_DIR}"
)
