// The native function as it is, with its types.

import native from './native.cjs';

/**
 * Traces the pixels of one colour of a chart. Runs in the calling thread and keeps no state.
 *
 * Only numbers are accepted as numbers; whatever else is found where one is read is a TypeError,
 * the `undefined` past an array's end included.
 * @type {(
 *   x: ArrayLike<number>,
 *   y: ArrayLike<number>,
 *   count: number,
 *   pixelStep: number,
 *   mode: string,
 *   clusterFraction: number,
 * ) => number[]}
 * `x`, `y`: the pixels, y growing downwards; `count` of them are read from each, rounded up.
 * `pixelStep`: the distance of neighbouring pixels. `mode`: chart type and grouping method; one
 * that is unknown gives an empty result. `clusterFraction`: the share of the points nearest to the
 * first whose mean distance is the cluster radius, and the code for the thinning of curves.
 * Returns all x values, then all y values, in the unit of the input.
 */
export const trace = native.trace;
