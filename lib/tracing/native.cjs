'use strict';
// Finds the extension module, for CommonJS and for the ES modules of this folder alike: the native
// one where there is one that loads, else WebAssembly.

const { readFileSync } = require('node:fs');
const { join } = require('node:path');
const process = require('node:process');
// @ts-expect-error It has no types.
const findNative = require('node-gyp-build');

const root = join(__dirname, '..', '..');
const wasmFile = join(root, 'prebuilds', 'wasm32', 'cpp_code.wasm');

/** @typedef {import('./native.js').Trace} Trace */
/** @typedef {import('./native.js').Engine} Engine */
/** @typedef {typeof import('./wasm.js').traceOf} TraceOf */

/**
 * Loads a module, again where the host lost sight of it: a thread that loads it in the very moment in
 * which another one unloads it, the last that held it, hears that it did not register itself. A few
 * further attempts find it, as the other is done by then.
 * @template Module
 * @param {() => Module} loadOnce
 * @returns {Module}
 */
function loadRegistered(loadOnce) {
  for (let attemptsLeft = 4; ; --attemptsLeft) {
    try {
      return loadOnce();
    } catch (error) {
      const wasLost = error instanceof Error && error.message.includes('did not self-register');
      if (!wasLost || attemptsLeft === 0) throw error;
    }
  }
}

/**
 * Loads the native module: build/Release first, which a build from source makes, then prebuilds.
 * @returns {Trace}
 */
function loadNative() {
  const file = findNative.path(root);
  try {
    return loadRegistered(() => require(file)).trace;
  } catch (error) {
    throw new Error(`${file} (${reasonOf(error)})`, { cause: error });
  }
}

/**
 * @param {TraceOf | undefined} traceOf Missing where CommonJS cannot have the ES modules.
 * @returns {Trace}
 */
function loadWasm(traceOf) {
  try {
    if (!traceOf) throw new Error(`require() of ES modules needs Node.js 20.19 or 22.12`);
    const { instantiateNapiModuleSync } = require('@emnapi/core');
    const { createContext } = require('@emnapi/runtime');
    return traceOf(() => readFileSync(wasmFile), { instantiateNapiModuleSync, createContext });
  } catch (error) {
    throw new Error(`${wasmFile} (${reasonOf(error)})`, { cause: error });
  }
}

/** @param {unknown} error */
function reasonOf(error) {
  return (error instanceof Error ? error.message : String(error)).trim().split('\n')[0];
}

/**
 * The engines to try, in this order.
 * @returns {Engine[]}
 */
function enginesToTry() {
  const wanted = process.env.CHART_TRACE_ENGINE;
  if (!wanted) return ['native', 'wasm'];
  if (wanted === 'native' || wanted === 'wasm') return [wanted];
  throw new Error(`CHART_TRACE_ENGINE must be native or wasm, but is '${wanted}'.`);
}

/**
 * Loads the module; the environment variable CHART_TRACE_ENGINE, native or wasm, chooses.
 * @param {TraceOf} [traceOf]
 * @returns {{engine: Engine, trace: Trace}}
 */
function load(traceOf) {
  const failures = [];
  for (const engine of enginesToTry()) {
    try {
      return { engine, trace: engine === 'native' ? loadNative() : loadWasm(traceOf) };
    } catch (error) {
      failures.push(`  ${engine}: ${reasonOf(error)}`);
    }
  }
  throw new Error(
    `chart-trace cannot load its module: tried\n${failures.join('\n')}\n` +
      `Build it from source with \`npm run build\` in ${root}.`,
  );
}

module.exports = { load, loadRegistered };
