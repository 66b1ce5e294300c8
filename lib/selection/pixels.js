// Picks the pixels of a series out of a picture, in the order the grouping methods want them.

import { parseColour } from './colours.js';
import { refuse } from '../errors.js';
import { clip } from './masks.js';
import { IN, membershipOf, OUT } from './membership.js';
import { paletteOf } from './palette.js';
import { COLOUR_BITS, COLOURS, unpackColour, viewOf } from './view.js';

/**
 * A set of points, x and y in parallel.
 * @typedef {{x: Float64Array, y: Float64Array}} Points
 */

/** @typedef {import('./colours.js').Rgb} Rgb */
/** @typedef {import('./masks.js').Box} Box */
/** @typedef {import('./masks.js').Mask} Mask */
/** @typedef {import('./view.js').Picture} Picture */
/** @typedef {import('./view.js').View} View */

/** @typedef {string | Rgb} Colour In any notation of CSS, or its channels. */

/**
 * Which pixels of a picture are those of a series.
 * @typedef {object} SelectionOptions
 * @property {Colour} [colour] The series' colour.
 * @property {readonly Colour[]} [colours] Or several, where it has more than one.
 * @property {Colour | readonly Colour[]} [exclude] Colours that are not the series, however near. The
 *   other series' colours are found by themselves.
 * @property {Colour | readonly Colour[]} [background] What the series is drawn on; found by itself.
 * @property {number} [tolerance] How far a colour may lie from the series' colour and its mixtures
 *   with the background, in hundredths of the way from black to white as it is seen, 6 by default.
 * @property {number} [coverage] How much of a pixel the series must cover, 0.5 by default.
 * @property {Box} [box] Where to look, the whole picture by default.
 * @property {readonly Mask[]} [masks] Shapes to look in, or to leave out.
 */

/**
 * The names of the options of a selection.
 * @type {readonly (keyof SelectionOptions)[]}
 */
export const SELECTION = [
  'colour',
  'colours',
  'exclude',
  'background',
  'tolerance',
  'coverage',
  'box',
  'masks',
];

/**
 * The pixels of a series, and what was gone by.
 * @typedef {object} Selected
 * @property {Float64Array} x
 * @property {Float64Array} y
 * @property {Rgb[]} colours
 * @property {Rgb[]} backgrounds
 * @property {Rgb[]} rivals Colours of other series, excluded or found.
 * @property {number} tolerance
 * @property {number} coverage
 */

/**
 * Selects the pixels of a series. What counts is not a ball round its colour but how much of a pixel
 * the series covers: the smooth edge of a shape shows mixtures with the background, and of these it
 * takes those with half of the series or more. A lossy file smears chroma; so of a thin line little
 * chroma needs to be left, and beside sure pixels less still. Alpha is not looked at.
 * @param {Picture} picture
 * @param {SelectionOptions} options
 * @returns {Selected} The pixels' centres, which are whole numbers, in raster order: rows from the
 *   top, each from left to right.
 */
export function selectSeries(picture, options) {
  const { colours, exclude, backgrounds: given, tolerance, coverage } = checked(options);
  const view = viewOf(picture, options);
  const palette = paletteOf(view, { known: colours, backgrounds: given, most: ENOUGH });
  const backgrounds = given ?? palette.bases;
  const found = palette.series.slice(0, MOST_RIVALS).map(({ packed }) => unpackColour(packed));
  const rivals = [...exclude, ...found];
  const by = { colours, backgrounds, rivals, tolerance, coverage };
  return { ...pointsOf(marksOf(view, membershipOf(by)), view), ...by };
}

// So many pixels of a large picture tell its colours.
const ENOUGH = 500_000;
const MOST_RIVALS = 16;

/**
 * Checks the options of a selection and fills in what is left out.
 * @param {SelectionOptions} options
 */
function checked(options) {
  if (options === null || typeof options !== 'object')
    refuse('the options', 'an object', options, 'Say at least which colour the series has.');
  const { colour, colours = colour, exclude = [], background } = options;
  if (colours === undefined) refuse('colour', 'the colour of the series', colours);
  if (colour !== undefined && options.colours !== undefined)
    refuse('colour', 'left out where colours are given', colour);
  const { tolerance = 6, coverage = 0.5 } = options;
  checkShare('tolerance', tolerance, tolerance >= 0 && tolerance <= 100, 'from 0 to 100');
  checkShare('coverage', coverage, coverage > 0 && coverage <= 1, 'above 0, at most 1');
  return {
    colours: listOf(colours, options.colours ? 'colours' : 'colour', 1),
    exclude: listOf(exclude, 'exclude', 0),
    backgrounds: background === undefined ? undefined : listOf(background, 'background', 1),
    tolerance,
    coverage,
  };
}

/**
 * @param {string} name
 * @param {unknown} value
 * @param {boolean} fits
 * @param {string} range
 */
function checkShare(name, value, fits, range) {
  if (typeof value !== 'number' || !fits) refuse(name, `a number ${range}`, value);
}

/**
 * @param {Colour | readonly Colour[]} colours One colour, or a list.
 * @param {string} name
 * @param {number} least How many there must be.
 * @returns {Rgb[]}
 */
function listOf(colours, name, least) {
  if (isRgb(colours)) return [colours];
  const list = Array.isArray(colours) ? colours : [colours];
  if (list.length < least) refuse(name, 'a colour, or a list of them', colours);
  return list.map((one) => (isRgb(one) ? one : parseColour(one)));
}

/**
 * @param {unknown} colour
 * @returns {colour is Rgb}
 */
const isRgb = (colour) =>
  Array.isArray(colour) &&
  colour.length === 3 &&
  colour.every((level) => Number.isInteger(level) && level >= 0 && level <= 255);

/**
 * Marks the pixels of a view by their colours; every colour is asked for once. Of those marked NEAR it
 * takes in what has one marked IN around it; what was so taken in takes in nothing else.
 * @param {View} view
 * @param {(packed: number) => number} membership
 * @returns {{marks: Uint8Array, count: number}} IN for the pixels of the series, row by row, a multiple
 *   of four long; and how many they are.
 */
function marksOf({ pixels, width, box, columns, rows, open }, membership) {
  const marks = new Uint8Array(4 * Math.ceil((columns * rows) / 4));
  const known = new Uint8Array(COLOURS);
  /** @type {number[]} */
  const near = [];
  let count = 0;
  let last = -1;
  let mark = OUT;
  for (let row = 0, at = 0; row < rows; ++row) {
    const start = (box.top + row) * width + box.left;
    for (let i = start; i < start + columns; ++i, ++at) {
      const packed = pixels[i] & COLOUR_BITS;
      if (packed !== last) {
        last = packed;
        mark = known[packed];
        if (mark === 0) known[packed] = mark = membership(packed);
      }
      if (mark === OUT || (open !== undefined && open[at] === 0)) continue;
      marks[at] = mark;
      if (mark === IN) ++count;
      else near.push(at);
    }
  }
  const taken = near.filter((place) => hasNeighbour(marks, columns, rows, place));
  for (const place of taken) marks[place] = IN;
  return { marks, count: count + taken.length };
}

// How many rows and columns away a pixel that is the series for sure takes in one that is near it.
const REACH = 2;

/**
 * Whether a place has a pixel marked IN around it.
 * @param {Uint8Array} marks
 * @param {number} columns
 * @param {number} rows
 * @param {number} at
 */
function hasNeighbour(marks, columns, rows, at) {
  const row = Math.floor(at / columns);
  const column = at - row * columns;
  const right = Math.min(columns - 1, column + REACH);
  const bottom = Math.min(rows - 1, row + REACH);
  for (let y = Math.max(0, row - REACH); y <= bottom; ++y)
    for (let x = Math.max(0, column - REACH); x <= right; ++x)
      if (marks[y * columns + x] === IN) return true;
  return false;
}

/**
 * The positions of the pixels marked IN.
 * @param {ReturnType<typeof marksOf>} marked
 * @param {View} view
 * @returns {Points}
 */
function pointsOf({ marks, count }, { box, columns }) {
  const x = new Float64Array(count);
  const y = new Float64Array(count);
  // Most marks are zero: four are looked at in one step.
  const fours = new Uint32Array(marks.buffer);
  let row = box.top;
  let end = columns;
  let next = 0;
  for (let four = 0; four < fours.length; ++four) {
    if (fours[four] === 0) continue;
    for (let at = 4 * four; at < 4 * four + 4; ++at) {
      if (marks[at] !== IN) continue;
      while (at >= end) {
        end += columns;
        ++row;
      }
      x[next] = box.right + 1 + at - end;
      y[next++] = row;
    }
  }
  return { x, y };
}

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
