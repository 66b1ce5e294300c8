// Pictures drawn with plain shapes, for tests of colours.

import { parseColour } from '../../../lib/selection/colours.js';

/** @typedef {import('../../../lib/selection/view.js').Picture} Picture */

/**
 * A picture of one colour.
 * @param {number} width
 * @param {number} height
 * @param {string} colour
 * @returns {Picture}
 */
export function canvas(width, height, colour = '#fff') {
  const picture = { width, height, data: new Uint8ClampedArray(4 * width * height) };
  paint(picture, colour, () => 1);
  return picture;
}

/**
 * Draws a shape with smooth edges.
 * @param {Picture} picture
 * @param {string} colour
 * @param {(x: number, y: number) => number} coverage How much of a pixel the shape covers, 0 to 1.
 */
export function paint({ width, height, data }, colour, coverage) {
  const rgb = parseColour(colour);
  for (let y = 0; y < height; ++y)
    for (let x = 0; x < width; ++x) {
      const share = Math.min(1, Math.max(0, coverage(x, y)));
      const at = 4 * (y * width + x);
      for (let k = 0; k < 3; ++k)
        data[at + k] = Math.round(data[at + k] + share * (rgb[k] - data[at + k]));
      data[at + 3] = 255;
    }
}

/** @type {(x: number, y: number, radius: number) => (x: number, y: number) => number} */
export const disc = (x0, y0, radius) => (x, y) => radius + 0.5 - Math.hypot(x - x0, y - y0);

/**
 * A bar that covers the pixels of its edges whole where these are whole numbers.
 * @type {(left: number, top: number, right: number, bottom: number) => (x: number, y: number) => number}
 */
export const bar = (left, top, right, bottom) => (x, y) =>
  Math.max(0, Math.min(1, x - left + 1, right - x + 1)) *
  Math.max(0, Math.min(1, y - top + 1, bottom - y + 1));

/**
 * A line that rises or falls, `width` thick across.
 * @type {(x: number, y: number, slope: number, width: number) => (x: number, y: number) => number}
 */
export const line = (x0, y0, slope, width) => (x, y) =>
  width / 2 + 0.5 - Math.abs(y - y0 - slope * (x - x0)) / Math.hypot(1, slope);
