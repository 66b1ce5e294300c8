// The part of a picture to look at, its pixels as numbers that are compared and looked up in one step.

import { ChartTraceError } from '../errors.js';
import { clip, openPixels } from './masks.js';

/** @typedef {import('./colours.js').Rgb} Rgb */
/** @typedef {import('./masks.js').Box} Box */
/** @typedef {import('./masks.js').Mask} Mask */

/**
 * A picture as plain data.
 * @typedef {object} Picture
 * @property {number} width Columns.
 * @property {number} height Rows.
 * @property {Uint8Array | Uint8ClampedArray} data Red, green, blue and alpha of every pixel, row by
 *   row from the top, left to right.
 */

/**
 * @typedef {object} View
 * @property {Uint32Array} pixels Of the whole picture, packed: red in the lowest eight bits, then
 *   green, blue and alpha.
 * @property {number} width Of the whole picture.
 * @property {Box} box Of whole numbers, inside the picture, perhaps empty.
 * @property {number} columns Of the box.
 * @property {number} rows Of the box.
 * @property {Uint8Array | undefined} open 1 for each pixel of the box to look at, row by row;
 *   undefined when that is every one.
 */

/** How many colours there are. */
export const COLOURS = 1 << 24;

/** What of a packed pixel is its colour; the rest is its alpha. */
export const COLOUR_BITS = COLOURS - 1;

const littleEndian = new Uint8Array(Uint32Array.of(1).buffer)[0] === 1;

/**
 * @param {Picture} picture
 * @param {{box?: Box, masks?: readonly Mask[]}} where
 * @returns {View}
 */
export function viewOf(picture, { box: asked, masks }) {
  checkPicture(picture);
  const box = clip(asked, picture);
  return {
    pixels: packedPixels(picture.data),
    width: picture.width,
    box,
    columns: Math.max(0, box.right - box.left + 1),
    rows: Math.max(0, box.bottom - box.top + 1),
    open: openPixels(masks, box),
  };
}

/**
 * Packs pixels into one number each: where the machine allows, by looking at the same memory.
 * @param {Picture['data']} data
 */
function packedPixels(data) {
  const count = data.length / 4;
  if (!littleEndian) {
    const bytes = new DataView(data.buffer, data.byteOffset);
    return Uint32Array.from({ length: count }, (_, i) => bytes.getUint32(4 * i, true));
  }
  const { buffer, byteOffset } = data.byteOffset % 4 === 0 ? data : Uint8Array.from(data);
  return new Uint32Array(buffer, byteOffset, count);
}

/** @param {Rgb} colour */
export const packColour = ([red, green, blue]) => red | (green << 8) | (blue << 16);

/**
 * @param {number} packed
 * @returns {Rgb}
 */
export const unpackColour = (packed) => [packed & 255, (packed >> 8) & 255, (packed >> 16) & 255];

/** @param {Picture} picture */
export function checkPicture(picture) {
  const { width, height, data } = picture ?? {};
  const isSized = [width, height].every((side) => Number.isInteger(side) && side > 0);
  const isBytes = data instanceof Uint8Array || data instanceof Uint8ClampedArray;
  if (isSized && isBytes && data.length === 4 * width * height) return;
  const expected = 'a width, a height and four bytes for each pixel';
  const received = `${width} x ${height} pixels and ${data?.length} bytes`;
  throw new ChartTraceError(`Expected a picture of ${expected}, but received ${received}.`, {
    code: 'ERR_PICTURE',
    expected,
    received,
  });
}
