'use strict';
// The WebAssembly build, to be tested as the native module is: CHART_TRACE_ADDON names this file.

process.env.CHART_TRACE_ENGINE = 'wasm';
exports.trace = require('../../../lib/index.cjs').trace;
