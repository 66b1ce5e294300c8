// A report as rows and columns: a row for every point of every series. A series without points has
// one row, and so has a picture without series: nothing that was traced is missing from the rows.
//
// file         the picture
// series       which series of the picture, from 1
// color        the series' colour
// kind, mode   what it was traced as
// selected     how many pixels were traced
// point        which point of the series, from 1
// part         'marker' or 'curve' where a series has both
// pixel_x, pixel_y, value_x, value_y
//              the point: of a bar its end, of a histogram's bar the middle of its top
// other_pixel_x, other_pixel_y, other_value_x, other_value_y
//              the other end of a bar
// left_pixel_x, right_pixel_x, left_value_x, right_value_x
//              the borders of a histogram's bar; its top is the point's y
// notes        on the first row of a series: all its notes
// error        what was wrong with the picture

import { refuse } from '../errors.js';

/** @typedef {import('../tracing/modes.js').Kind} Kind */
/** @typedef {import('./report.js').BarReport} BarReport */
/** @typedef {import('./report.js').BinReport} BinReport */
/** @typedef {import('./report.js').ErrorReport} ErrorReport */
/** @typedef {import('./report.js').ImageReport} ImageReport */
/** @typedef {import('./report.js').PixelPair} PixelPair */
/** @typedef {import('./report.js').Report} Report */
/** @typedef {import('./report.js').SeriesReport} SeriesReport */
/** @typedef {import('./report.js').ValuePair} ValuePair */

/** @typedef {string | number | null} Cell Null where there is nothing. */

/**
 * What a row is about. What it lacks is undefined.
 * @typedef {object} Place
 * @property {ImageReport} image
 * @property {SeriesReport} [series]
 * @property {number} [number] Of the series, from 1.
 * @property {number} [i] Of the point, from 0.
 */

/** @typedef {(place: Place) => Cell | undefined} ReadCell */

/** @type {Kind[]} */
const BARS = ['bars', 'hbars'];
/** @type {Kind[]} */
const BINS = ['histogram'];
/** @type {Kind[]} */
const PARTS = ['points+curve'];

/** @type {[name: string, cell: ReadCell, kinds?: Kind[]][]} In order; `kinds` that have the column. */
const COLUMNS = [
  ['file', ({ image }) => image.file],
  ['series', ({ number }) => number],
  ['color', ({ series }) => series?.color],
  ['kind', ({ series }) => series?.kind],
  ['mode', ({ series }) => series?.mode],
  ['selected', ({ series }) => series?.selected],
  ['point', ({ i }) => (i === undefined ? null : i + 1)],
  ['part', partOf, PARTS],
  ['pixel_x', (place) => pointOf(place)?.[0]],
  ['pixel_y', (place) => pointOf(place)?.[1]],
  ['value_x', (place) => valueOf(place)?.[0]],
  ['value_y', (place) => valueOf(place)?.[1]],
  ['other_pixel_x', (place) => barOf(place)?.pixels.otherEnd?.[0], BARS],
  ['other_pixel_y', (place) => barOf(place)?.pixels.otherEnd?.[1], BARS],
  ['other_value_x', (place) => barOf(place)?.values?.otherEnd?.[0], BARS],
  ['other_value_y', (place) => barOf(place)?.values?.otherEnd?.[1], BARS],
  ['left_pixel_x', (place) => binOf(place)?.pixels.left, BINS],
  ['right_pixel_x', (place) => binOf(place)?.pixels.right, BINS],
  ['left_value_x', (place) => binOf(place)?.values?.left, BINS],
  ['right_value_x', (place) => binOf(place)?.values?.right, BINS],
  ['notes', ({ series, i }) => (series && !i ? series.notes.join('; ') : null)],
  ['error', ({ image, series }) => (series ? null : image.error && errorInWords(image.error))],
];

/** @type {(place: Place) => PixelPair | undefined} */
const pointOf = ({ series, i }) => (i === undefined ? undefined : series?.pixels[i]);
/** @type {(place: Place) => ValuePair | undefined} */
const valueOf = ({ series, i }) => (i === undefined ? undefined : series?.values?.[i]);
/** @type {(place: Place) => BarReport | undefined} */
const barOf = ({ series, i }) => (i === undefined ? undefined : series?.bars?.[i]);
/** @type {(place: Place) => BinReport | undefined} */
const binOf = ({ series, i }) => (i === undefined ? undefined : series?.bins?.[i]);

/** @type {ReadCell} */
function partOf({ series, i }) {
  if (i === undefined || series?.markers === undefined) return null;
  return i < series.markers ? 'marker' : 'curve';
}

/** The names of all columns, in their order. */
export const COLUMN_NAMES = Object.freeze(COLUMNS.map(([name]) => name));

/**
 * The names of the columns that series of these kinds fill.
 * @param {Kind[]} kinds
 * @returns {string[]} In their order.
 */
export function columnsFor(kinds) {
  return COLUMNS.filter(([, , only]) => !only || only.some((kind) => kinds.includes(kind))).map(
    ([name]) => name,
  );
}

/**
 * The kinds of the series of a report, each once.
 * @param {Report} report
 * @returns {Kind[]}
 */
export function kindsOf({ images }) {
  return [...new Set(images.flatMap(({ series }) => series.map(({ kind }) => kind)))];
}

/**
 * The rows of a report.
 * @param {Report} report
 * @param {string[]} columns Their names, in the order wanted.
 * @returns {Generator<Cell[]>}
 */
export function* rowsOf({ images }, columns) {
  const cells = columns.map(readerOf);
  const rowOf = (/** @type {Place} */ place) => cells.map((cell) => cell(place) ?? null);
  for (const image of images) {
    for (const [k, series] of image.series.entries()) {
      const number = k + 1;
      if (series.pixels.length === 0) yield rowOf({ image, series, number });
      for (let i = 0; i < series.pixels.length; ++i) yield rowOf({ image, series, number, i });
    }
    if (image.error || image.series.length === 0) yield rowOf({ image });
  }
}

/**
 * @param {string} wanted
 * @returns {ReadCell}
 */
function readerOf(wanted) {
  const column = COLUMNS.find(([name]) => name === wanted);
  if (column) return column[1];
  return refuse('every column', `one of ${COLUMN_NAMES.join(', ')}`, wanted);
}

/**
 * @param {ErrorReport} error
 * @returns {string}
 */
export function errorInWords({ message, hint }) {
  return hint ? `${message} ${hint}` : message;
}
