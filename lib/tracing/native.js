// The native function as it is, with its types.

import native from './native.cjs';
import { traceOf } from './wasm.js';

/**
 * Traces the pixels of one colour of a chart. Runs in the calling thread and keeps no state. All six
 * arguments are needed. Only numbers are accepted as numbers: whatever else is found where one is
 * read, the `undefined` past an array's end included, is a TypeError. An exception that a getter or
 * the conversion of `mode` throws reaches the caller as it is.
 * @callback Trace
 * @param {ArrayLike<number>} x The columns of the pixels. An array, a typed array or any object with
 *   numbers at 0, 1, 2, …
 * @param {ArrayLike<number>} y Their rows, growing downwards, in parallel with `x`. The grouping by
 *   rows wants the pixels in raster order: rows from the top, each from left to right.
 * @param {number} count How many pixels are read from both, rounded up to a whole number.
 * @param {number} pixelStep The distance of neighbouring pixels, 1 in a picture that was not
 *   sampled; also the width of the compartments of histograms and step lines, which must be above 0.
 * @param {string} mode What the chart shows and how pixels are grouped: one of the thirteen strings
 *   of `MODES`, to the letter. Any other gives an empty result.
 * @param {number} clusterFraction For clusters and curves, the share of the pixels nearest to the
 *   first whose mean distance is the cluster radius. For curves it is also the code for how they are
 *   thinned: 0.05 keeps every point, 0.051 every 2nd, 0.052 every 4th, 0.053 and 0.054 every 8th,
 *   0.055 every 16th, any other value none. Without meaning to the other modes.
 * @returns {number[]} All x values, then all y values, in the unit of the input; see `splitResult`.
 */

/**
 * What runs `trace`: the native module of this platform, or WebAssembly. The result is the same.
 * @typedef {'native' | 'wasm'} Engine
 */

const loaded = native.load(traceOf);

/** @type {Engine} */
export const engine = loaded.engine;

/** @type {Trace} */
export const trace = loaded.trace;
