// The native function behind checked arguments, its result split into x and y.

import { checkNumber, LimitError, refuse } from '../errors.js';
import { findMode, splitResult } from './modes.js';
import { trace } from '#native';

/**
 * A set of points, x and y in parallel.
 * @typedef {{x: ArrayLike<number>, y: ArrayLike<number>}} PointLists
 */

/** More compartments than these are not made: 10 million. */
export const MAX_COMPARTMENTS = 10_000_000;

/** More pixels than these are not traced: 100 million. */
export const MAX_PIXELS = 100_000_000;

/**
 * Traces a set of pixels and splits the result.
 * @param {PointLists} pixels In raster order: rows from the top, each from left to right.
 * @param {string} mode One of the thirteen modes.
 * @param {{pixelStep?: number, clusterFraction?: number}} [options] `pixelStep`: the distance of
 *   neighbouring pixels. `clusterFraction`: 0.05 keeps every point of a curve, 0.051 every 2nd,
 *   0.052 every 4th, 0.053 every 8th, 0.055 every 16th.
 * @returns {{x: number[], y: number[]}} In pixels. The two lists of a step line may differ in
 *   length by one.
 */
export function tracePixels(pixels, mode, { pixelStep = 1, clusterFraction = 0.05 } = {}) {
  const { grouping } = findMode(mode);
  checkNumber('pixelStep', pixelStep, pixelStep > 0, 'a number above 0');
  checkNumber('clusterFraction', clusterFraction, true, 'a number');
  checkPoints(pixels);
  if (grouping === 'compartments') checkCompartments(pixels.x, pixelStep);
  const { x, y } = pixels;
  /** @type {import('./modes.js').LookAgain} */
  const look = ({ scale, shift }) =>
    trace(
      Float64Array.from(x, (value) => value * scale + shift),
      y,
      x.length,
      pixelStep * scale,
      mode,
      clusterFraction,
    );
  const flat = trace(x, y, x.length, pixelStep, mode, clusterFraction);
  return splitResult(mode, flat, look);
}

/** @param {PointLists} points */
function checkPoints(points) {
  for (const name of /** @type {const} */ (['x', 'y']))
    if (!Number.isInteger(points?.[name]?.length))
      refuse(`the points' ${name}`, 'an array of numbers', points?.[name]);
  const { x, y } = points;
  if (x.length !== y.length)
    refuse("the points' y", `as long as x, ${x.length} numbers,`, `${y.length} numbers`);
  if (x.length > MAX_PIXELS)
    throw new LimitError(`${x.length} pixels are more than are traced at once, ${MAX_PIXELS}.`, {
      expected: `at most ${MAX_PIXELS} pixels`,
      received: x.length,
      hint: 'Select fewer: a smaller box, or a picture of fewer pixels.',
    });
}

/**
 * Refuses what would need too many compartments, and steps too small to move a border.
 * @param {ArrayLike<number>} x
 * @param {number} step The width of a compartment.
 */
function checkCompartments(x, step) {
  let left = Infinity;
  let right = -Infinity;
  for (let i = 0; i < x.length; ++i) {
    if (x[i] < left) left = x[i];
    if (x[i] > right) right = x[i];
  }
  const count = (right - left) / step;
  if (count > MAX_COMPARTMENTS || (right > left && !(right + step > right && left + step > left)))
    throw new LimitError(
      `Columns ${step} wide from x = ${left} to ${right} are more than ${MAX_COMPARTMENTS}.`,
      {
        expected: `at most ${MAX_COMPARTMENTS} columns`,
        received: count,
        hint: 'The pixel step is the distance of neighbouring pixels, 1 in a picture.',
      },
    );
}
