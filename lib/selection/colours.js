// Colours: read from CSS, written as hexadecimal digits, and held against one another the way that
// people see them.

import { clampRgb, converter, parse } from 'culori';
import { ChartTraceError } from '../errors.js';

/** @typedef {[red: number, green: number, blue: number]} Rgb Each channel 0 to 255. */

/**
 * A colour in the space OKLab, where equal distances look equally different: lightness from 0 to 1,
 * then towards red and away from green, then towards yellow and away from blue.
 * @typedef {[lightness: number, a: number, b: number]} Oklab
 */

const toSrgb = converter('rgb');

/**
 * Reads a colour as CSS writes it: `'#1f4e9e'`, `'#14e'`, `'steelblue'`, `'rgb(31 78 158)'`,
 * `'hsl(218deg 67% 37%)'`, `'oklch(44% 0.14 260)'`; the `#`, which a shell takes for a comment, may be
 * missing. A colour that a screen cannot show is brought to the nearest channel values it can.
 * @param {string} text
 * @returns {Rgb} Whole numbers.
 */
export function parseColour(text) {
  const parsed = typeof text === 'string' ? parse(text.trim()) : undefined;
  if (!parsed) throw notAColour(text, 'a CSS colour such as #1f4e9e or steelblue');
  if ((parsed.alpha ?? 1) < 1)
    throw notAColour(text, 'an opaque CSS colour', 'Give the colour as the picture shows it.');
  const { r, g, b } = clampRgb(toSrgb(parsed));
  const [red, green, blue] = [r, g, b].map((channel) => Math.round(255 * channel));
  return [red, green, blue];
}

/**
 * @param {unknown} received
 * @param {string} expected
 * @param {string} [hint]
 */
function notAColour(received, expected, hint) {
  const message = `Expected ${expected}, but received '${String(received)}'.`;
  return new ChartTraceError(message, { code: 'ERR_COLOUR', expected, received, hint });
}

/**
 * Writes a colour as six hexadecimal digits.
 * @param {Rgb} colour Whole numbers.
 */
export function formatColour(colour) {
  return `#${colour.map((channel) => channel.toString(16).padStart(2, '0')).join('')}`;
}

// The light that each level of an sRGB channel stands for.
const LIGHT = Float64Array.from({ length: 256 }, (_, level) => {
  const share = level / 255;
  return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
});

/**
 * The light of a channel that may lie between two levels.
 * @param {number} level 0 to 255.
 */
function lightOf(level) {
  const below = Math.floor(level);
  if (below >= 255) return 1;
  return LIGHT[below] + (level - below) * (LIGHT[below + 1] - LIGHT[below]);
}

/**
 * Converts a colour to OKLab.
 * @param {Rgb} colour Channels 0 to 255, whole numbers or between.
 * @returns {Oklab}
 */
export function toOklab([red, green, blue]) {
  const r = lightOf(red);
  const g = lightOf(green);
  const b = lightOf(blue);
  const long = Math.cbrt(0.412221469470763 * r + 0.5363325372617348 * g + 0.0514459932675022 * b);
  const middle = Math.cbrt(
    0.2119034958178252 * r + 0.6806995506452344 * g + 0.1073969535369406 * b,
  );
  const short = Math.cbrt(0.0883024591900564 * r + 0.2817188391361215 * g + 0.6299787016738222 * b);
  return [
    0.210454268309314 * long + 0.7936177747023054 * middle - 0.0040720430116193 * short,
    1.9779985324311684 * long - 2.4285922420485799 * middle + 0.450593709617411 * short,
    0.0259040424655478 * long + 0.7827717124575296 * middle - 0.8086757549230774 * short,
  ];
}

/**
 * How different two colours look, in hundredths: from black to white it is 100, and a difference of
 * 2 is just seen when the two lie side by side.
 * @param {Rgb} one
 * @param {Rgb} other
 */
export function colourDistance(one, other) {
  const [l1, a1, b1] = toOklab(one);
  const [l2, a2, b2] = toOklab(other);
  return 100 * Math.hypot(l1 - l2, a1 - a2, b1 - b2);
}

/**
 * How colourful a colour is, in hundredths: 0 for greys, 10 and more for what one would name.
 * @param {Rgb} colour
 */
export function chroma(colour) {
  const [, a, b] = toOklab(colour);
  return 100 * Math.hypot(a, b);
}
