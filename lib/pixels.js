// Picks the pixels of one colour out of a picture, in the order the grouping methods want them.

import { clip } from './masks.js';

/**
 * A picture as plain data.
 * @typedef {object} Picture
 * @property {number} width Columns.
 * @property {number} height Rows.
 * @property {Uint8Array | Uint8ClampedArray} data Red, green, blue and alpha of every pixel, row by
 *   row from the top, left to right.
 */

/**
 * A set of points, x and y in parallel.
 * @typedef {{x: Float64Array, y: Float64Array}} Points
 */

/** @typedef {import('./colours.js').Rgb} Rgb */
/** @typedef {import('./masks.js').Box} Box */

/**
 * Selects the pixels whose colour is that of a series. Alpha is not looked at: a decoded picture
 * stands on its page colour.
 * @param {Picture} picture
 * @param {Rgb} colour The series' colour.
 * @param {{tolerance?: number, box?: Box}} [options] `tolerance`: the largest difference in any one
 *   channel, 0 (the default) for the exact colour. `box`: where to look, the whole picture by
 *   default.
 * @returns {Points} The pixels' centres, which are whole numbers, in raster order: rows from the
 *   top, each from left to right.
 */
export function selectPixels(picture, colour, { tolerance = 0, box } = {}) {
  const { left, top, right, bottom } = clip(box, picture);
  /** @type {number[]} */
  const x = [];
  /** @type {number[]} */
  const y = [];
  for (let row = top; row <= bottom; ++row) {
    for (let column = left; column <= right; ++column) {
      if (channelDistance(picture, column, row, colour) <= tolerance) {
        x.push(column);
        y.push(row);
      }
    }
  }
  return { x: Float64Array.from(x), y: Float64Array.from(y) };
}

/**
 * @param {Picture} picture
 * @param {number} column
 * @param {number} row
 * @param {Rgb} colour
 * @returns {number} The largest difference in any one channel.
 */
function channelDistance({ width, data }, column, row, [red, green, blue]) {
  const at = 4 * (row * width + column);
  return Math.max(
    Math.abs(data[at] - red),
    Math.abs(data[at + 1] - green),
    Math.abs(data[at + 2] - blue),
  );
}
