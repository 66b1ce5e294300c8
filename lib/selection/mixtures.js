// The mixtures of two colours, as the smooth edge of a shape shows them: there a pixel is covered in
// part, and has that share of the shape's colour and the rest of the colour beneath.
//
// Files that lose detail (JPEG, most WebP) keep lightness sharp and smear chroma over a few pixels.
// So a mixture here has two shares, one of the lightness and one of the chroma. At the edges of a
// clean picture the two are equal.

import { toOklab } from './colours.js';

/** @typedef {import('./colours.js').Rgb} Rgb */
/** @typedef {import('./colours.js').Oklab} Oklab */

/**
 * The way from one colour to another, in the levels of the channels, which is where edges are mixed.
 * A colour's share of something is the product of its difference from the base with a vector: 0 at
 * the base and 1 at the end, less or more for a colour that lies beyond.
 * @typedef {object} Blend
 * @property {Rgb} base Where it begins.
 * @property {number} light What it adds to the lightness, in levels.
 * @property {Rgb} hue What it adds beyond that: the chroma.
 * @property {Rgb} toLightShare
 * @property {Rgb} toHueShare
 * @property {Rgb} toCoverage How much of a pixel the end covers: lightness, being sharp, counts most,
 *   unless the two colours differ little in it.
 */

/**
 * @param {Rgb} base
 * @param {Rgb} end
 * @returns {Blend} Between colours that are nearly the same all shares are 0: there is nothing to
 *   measure them on.
 */
export function blendOf(base, end) {
  const step = minus(end, base);
  const light = dot(LIGHTNESS, step);
  const hue = plus(step, -light, GREY);
  const hue2 = dot(hue, hue);
  const hasLight = Math.abs(light) >= SHORT;
  const hasHue = hue2 >= SHORT * SHORT;
  const byLight = times(hasLight ? 1 / light : 0, LIGHTNESS);
  const byHue = times(hasHue ? 1 / hue2 : 0, plus(hue, -dot(hue, GREY), LIGHTNESS));
  // Where one way is too short to measure on, the other stands for both.
  const toLightShare = hasLight ? byLight : byHue;
  const toHueShare = hasHue ? byHue : byLight;
  const weight = (SHARPNESS * light * light) / (SHARPNESS * light * light + hue2 || 1);
  const toCoverage = plus(times(weight, toLightShare), 1 - weight, toHueShare);
  return { base, light, hue, toLightShare, toHueShare, toCoverage };
}
// In levels of 255.
const SHORT = 8;
// A level of lightness counts as much as three levels of chroma.
const SHARPNESS = 9;

/**
 * The lightness that lossy files keep apart from chroma.
 * @type {Rgb}
 */
const LIGHTNESS = [0.299, 0.587, 0.114];

/**
 * One more level of lightness.
 * @type {Rgb}
 */
const GREY = [1, 1, 1];

/**
 * How much of a pixel of some colour the end of a blend covers.
 * @param {Blend} blend
 * @param {Rgb} colour
 */
export const coverageOf = ({ base, toCoverage }, colour) =>
  (colour[0] - base[0]) * toCoverage[0] +
  (colour[1] - base[1]) * toCoverage[1] +
  (colour[2] - base[2]) * toCoverage[2];

/**
 * The mixture of a blend that is nearest to a colour.
 * @param {Blend} blend
 * @param {Rgb} colour
 * @param {Oklab} seen The same colour.
 * @returns {{lightShare: number, hueShare: number, distance: number}} The shares of the colour, and its
 *   distance from the mixture in hundredths as it is seen.
 */
export function mixtureNear({ base, light, hue, toLightShare, toHueShare }, colour, seen) {
  const step = minus(colour, base);
  const lightShare = dot(step, toLightShare);
  const hueShare = dot(step, toHueShare);
  const mixed = plus(plus(base, clamp(lightShare) * light, GREY), clamp(hueShare), hue);
  return { lightShare, hueShare, distance: distanceOf(seen, toOklab(mixed)) };
}

/**
 * Whether a colour is that of a smooth edge that was not smeared: lightness and chroma are mixed alike.
 * @param {ReturnType<typeof mixtureNear>} mixture The nearest one.
 */
export const isEdge = ({ lightShare, hueShare, distance }) =>
  distance <= ALIKE && Math.abs(lightShare - hueShare) <= 0.1;

/** A colour no farther than this from another one looks much the same. */
export const ALIKE = 2;

/** @type {(u: Rgb, v: Rgb) => number} */
const dot = ([a, b, c], [d, e, f]) => a * d + b * e + c * f;

/** @type {(u: Rgb, v: Rgb) => Rgb} */
const minus = ([a, b, c], [d, e, f]) => [a - d, b - e, c - f];

/** @type {(factor: number, v: Rgb) => Rgb} */
const times = (factor, [a, b, c]) => [factor * a, factor * b, factor * c];

/** @type {(u: Rgb, factor: number, v: Rgb) => Rgb} */
const plus = ([a, b, c], factor, [d, e, f]) => [a + factor * d, b + factor * e, c + factor * f];

/** @param {number} share */
const clamp = (share) => Math.min(1, Math.max(0, share));

/**
 * How different two colours look, in hundredths.
 * @param {Oklab} one
 * @param {Oklab} other
 */
export const distanceOf = ([l, a, b], [m, c, d]) =>
  100 * Math.sqrt((l - m) * (l - m) + (a - c) * (a - c) + (b - d) * (b - d));

/**
 * The distance of the nearest of some colours.
 * @param {Oklab} seen
 * @param {readonly Oklab[]} from
 */
export const nearest = (seen, from) => Math.min(...from.map((other) => distanceOf(seen, other)));
