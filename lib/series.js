// From the pixels of a series to its points.
import { trace } from './native.js';
import { splitResult } from './modes.js';

/**
 * Traces a set of pixels and splits the result.
 * @param {import('./pixels.js').Points} pixels In raster order.
 * @param {string} mode One of the thirteen modes.
 * @param {{pixelStep?: number, clusterFraction?: number}} [options] `pixelStep`: the distance of
 *   neighbouring pixels. `clusterFraction`: 0.05 keeps every point of a curve, 0.051 every 2nd,
 *   0.052 every 4th, 0.053 every 8th, 0.055 every 16th.
 * @returns {{x: number[], y: number[]}} In pixels. The two lists of a step line may differ in
 *   length by one.
 */
export function tracePixels({ x, y }, mode, { pixelStep = 1, clusterFraction = 0.05 } = {}) {
  /** @type {import('./modes.js').LookAgain} */
  const look = ({ scale, shift }) =>
    trace(
      x.map((value) => value * scale + shift),
      y,
      x.length,
      pixelStep * scale,
      mode,
      clusterFraction,
    );
  const flat = trace(x, y, x.length, pixelStep, mode, clusterFraction);
  return splitResult(mode, flat, look);
}
