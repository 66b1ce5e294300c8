// The native function where there is no Node.js: always WebAssembly, whose bytes come along as text, so
// that no bundler and no server has to be told of a file. They are compiled at the first call.

import { instantiateNapiModuleSync } from '@emnapi/core';
import { createContext } from '@emnapi/runtime';
// @ts-ignore Missing until WebAssembly was built.
import base64 from '../../prebuilds/wasm32/cpp_code.js';
import { traceOf } from './wasm.js';

/** @typedef {import('./native.js').Engine} Engine */
/** @typedef {import('./native.js').Trace} Trace */

const bytes = () => Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));

/** @type {Trace | undefined} */
let made;

/** @type {Engine} */
export const engine = 'wasm';

/** @type {Trace} */
export const trace = function (...args) {
  made ??= traceOf(bytes, { instantiateNapiModuleSync, createContext });
  return made(...args);
};
