'use strict';
// The package for CommonJS: the very functions and classes that ES modules see, by the same names.
//
// Node.js can require ES modules since 20.19 and 22.12. Before, only the native module is here, and
// everything is there for `import('chart-trace')`.

/** @returns {any} */
const load = () =>
  process.features.require_module
    ? { ...require('./index.js') }
    : require('./tracing/native.cjs').load();

module.exports = /** @type {typeof import('./index.js')} */ (load());
