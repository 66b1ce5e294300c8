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
 * @typedef {object} Blend
 * @property {Rgb} base Where it begins.
 * @property {number} light What it adds to the lightness.
 * @property {Rgb} hue What it adds beyond that: the chroma.
 * @property {number} hue2 The square of the chroma's length.
 */

/**
 * What a colour has of a blend's end: 0 at the base and 1 at the end, less or more beyond.
 * @typedef {object} Shares
 * @property {number} lightShare
 * @property {number} hueShare
 * @property {number} coverage How much of the pixel the end covers: lightness counts most, being
 *   sharp, unless the two colours differ little in it.
 */

/**
 * @param {Rgb} base
 * @param {Rgb} end
 * @returns {Blend}
 */
export function blendOf(base, end) {
  const step = minus(end, base);
  const light = lightnessOf(step);
  const hue = plus(step, -light, GREY);
  return { base, light, hue, hue2: dot(hue, hue) };
}

/**
 * @param {Blend} blend
 * @param {Rgb} colour
 * @returns {Shares}
 */
export function sharesOf({ base, light, hue, hue2 }, colour) {
  const step = minus(colour, base);
  const lighter = lightnessOf(step);
  // Where the way is too short to measure a share on, the other share stands for both.
  const hasLight = Math.abs(light) >= SHORT;
  const hasHue = hue2 >= SHORT * SHORT;
  const ofHue = hasHue ? dot(plus(step, -lighter, GREY), hue) / hue2 : 1;
  const lightShare = hasLight ? lighter / light : ofHue;
  const hueShare = hasHue ? ofHue : lightShare;
  const light2 = SHARPNESS * light * light;
  const whole = light2 + hue2;
  return {
    lightShare,
    hueShare,
    coverage: whole === 0 ? 1 : (light2 * lightShare + hue2 * hueShare) / whole,
  };
}
// In levels of 255.
const SHORT = 8;
// A share of lightness counts as much as three times the chroma.
const SHARPNESS = 9;

/**
 * How far a colour is from the nearest mixture, in hundredths as it is seen.
 * @param {Blend} blend
 * @param {Shares} shares Those of the colour.
 * @param {Oklab} seen The colour.
 */
export function distanceFromMixture({ base, light, hue }, { lightShare, hueShare }, seen) {
  const mixed = plus(plus(base, clamp(lightShare) * light, GREY), clamp(hueShare), hue);
  return distanceOf(seen, toOklab(mixed));
}

/** @type {Rgb} */
const GREY = [1, 1, 1];

/**
 * The lightness that lossy files keep apart from chroma, in levels.
 * @param {Rgb} colour
 */
const lightnessOf = ([red, green, blue]) => 0.299 * red + 0.587 * green + 0.114 * blue;

/** @type {(u: Rgb, v: Rgb) => number} */
const dot = ([a, b, c], [d, e, f]) => a * d + b * e + c * f;

/** @type {(u: Rgb, v: Rgb) => Rgb} */
const minus = ([a, b, c], [d, e, f]) => [a - d, b - e, c - f];

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
