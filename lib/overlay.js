// Draws traced points, to be laid over the picture they were traced from.

import { colourDistance, parseColour } from './selection/colours.js';

/** @typedef {import('./selection/colours.js').Rgb} Rgb */

// Colours that people with any kind of colour vision tell apart (Okabe and Ito).
const PALETTE = ['#0072b2', '#e69f00', '#cc79a7', '#009e73', '#56b4e9', '#d55e00', '#f0e442'];

/**
 * The colour of the palette that stands out most against the given ones: whose nearest of them is
 * farthest away.
 * @param {Rgb[]} others Such as the series and the background.
 * @param {string[]} [taken] Colours of the palette that are not to be had, unless all are taken as
 *   often.
 * @returns {string}
 */
export function contrastingColour(others, taken = []) {
  const times = (/** @type {string} */ ink) => taken.filter((other) => other === ink).length;
  const least = Math.min(...PALETTE.map(times));
  const clearance = (/** @type {string} */ candidate) =>
    Math.min(...others.map((other) => colourDistance(parseColour(candidate), other)));
  return PALETTE.filter((ink) => times(ink) === least).reduce((best, next) =>
    clearance(next) > clearance(best) ? next : best,
  );
}

/**
 * A cross at every point, open in the middle so that the marker under it still shows, or a line
 * through the points; in `colour` with a white rim, so that it stands out on every ground. Points with
 * a coordinate that is not finite are left out.
 * @param {{width: number, height: number}} picture
 * @param {{x: ArrayLike<number>, y: ArrayLike<number>}} points In pixels, the centre of the top left
 *   pixel being (0, 0). Where one list is longer, its surplus is left out.
 * @param {{colour: string, shape?: 'crosses' | 'line'}} options
 * @returns {string} An SVG as large as the picture.
 */
export function overlaySvg({ width, height }, points, { colour, shape = 'crosses' }) {
  const path = shape === 'line' ? linePath(points) : crossesPath(points);
  const stroke = (/** @type {string} */ ink, /** @type {number} */ thickness) =>
    `<path d="${path}" fill="none" stroke="${ink}" stroke-width="${thickness}"/>`;
  // In SVG, whole numbers are the edges of pixels, not their centres.
  return (
    `<svg xmlns="http://www.w3.org/2000/svg" width="${width}" height="${height}" ` +
    `viewBox="-0.5 -0.5 ${width} ${height}">${stroke('#ffffff', 3.5)}${stroke(colour, 2)}</svg>`
  );
}

/** @param {{x: ArrayLike<number>, y: ArrayLike<number>}} points */
function finitePairs({ x, y }) {
  return Array.from({ length: Math.min(x.length, y.length) }, (_, i) => [x[i], y[i]]).filter(
    (pair) => pair.every(Number.isFinite),
  );
}

/** @param {{x: ArrayLike<number>, y: ArrayLike<number>}} points */
const crossesPath = (points) =>
  finitePairs(points)
    .map(([x, y]) => `M${x - 11},${y}h7m8,0h7M${x},${y - 11}v7m0,8v7`)
    .join('');

/** @param {{x: ArrayLike<number>, y: ArrayLike<number>}} points */
const linePath = (points) =>
  finitePairs(points)
    .map(([x, y], i) => `${i === 0 ? 'M' : 'L'}${x},${y}`)
    .join('');
