// The report of what was found in pictures: plain data of one shape, which all formats are written
// from.

/** @typedef {import('../axes/axes.js').AxisValue} AxisValue */
/** @typedef {import('../tracing/modes.js').Kind} Kind */
/** @typedef {import('../tracing/series.js').Series} Series */

/** The version of the report's shape. It grows when a field changes its meaning or goes. */
export const REPORT_VERSION = 1;

/** @typedef {[x: number | null, y: number | null]} PixelPair */
/** @typedef {[x: AxisValue, y: AxisValue]} ValuePair */

/**
 * A series as reports have it: all numbers are finite, and none is -0. Where there is no number
 * there is null, and a note says why.
 * @typedef {object} SeriesReport
 * @property {string | null} color
 * @property {Kind} kind
 * @property {string} mode
 * @property {PixelPair[]} pixels
 * @property {ValuePair[] | null} values
 * @property {string[]} notes
 * @property {number} [selected] How many pixels were traced.
 * @property {number} [markers] Of `'points+curve'`: how many of the points, the first ones, are
 *   markers.
 * @property {BarReport[]} [bars] In the order of `pixels`, where other ends were asked for.
 * @property {BinReport[]} [bins] The bars of a histogram, in the order of `pixels`.
 */

/**
 * @typedef {object} BarReport
 * @property {{end: PixelPair, otherEnd: PixelPair | null}} pixels
 * @property {{end: ValuePair, otherEnd: ValuePair | null} | null} values
 */

/**
 * @typedef {object} BinReport
 * @property {{left: number | null, right: number | null, top: number | null}} pixels
 * @property {{left: AxisValue, right: AxisValue, top: AxisValue} | null} values
 */

/**
 * An error as plain data. What is not known is null.
 * @typedef {object} ErrorReport
 * @property {string | null} code
 * @property {string} message
 * @property {string | null} expected
 * @property {string | null} received
 * @property {string | null} hint
 */

/**
 * @typedef {object} ImageReport
 * @property {string | null} file Null for a picture that is no file.
 * @property {number | null} width Null for a picture that could not be decoded.
 * @property {number | null} height
 * @property {SeriesReport[]} series
 * @property {ErrorReport | null} error
 */

/** @typedef {{schemaVersion: number, images: ImageReport[]}} Report */

/**
 * What is known about a picture: its series, or the error that was thrown instead.
 * @typedef {object} ImageResult
 * @property {string | null} [file]
 * @property {number | null} [width]
 * @property {number | null} [height]
 * @property {Series[]} [series]
 * @property {unknown} [error]
 */

/**
 * Makes a report. Numbers are taken as they are, except that NaN and the infinities, which JSON
 * cannot write, become null and -0 becomes 0.
 * @param {ImageResult[]} images
 * @returns {Report}
 */
export function makeReport(images) {
  return { schemaVersion: REPORT_VERSION, images: images.map(imageReport) };
}

/**
 * @param {ImageResult} image
 * @returns {ImageReport}
 */
function imageReport({ file, width, height, series, error }) {
  return {
    file: file ?? null,
    width: width ?? null,
    height: height ?? null,
    series: (series ?? []).map(seriesReport),
    error: error === undefined || error === null ? null : errorReport(error),
  };
}

/**
 * @param {Series} series
 * @returns {SeriesReport}
 */
function seriesReport({ color, kind, mode, notes, selected, markers, ...found }) {
  let lost = 0;
  /** @type {(value: any) => any} */
  const cell = (value) => {
    if (typeof value !== 'number') return value;
    if (Number.isFinite(value)) return value + 0; // -0 + 0 is 0.
    ++lost;
    return null;
  };
  /** @type {(pair: any) => any} */
  const pair = (both) => both && [cell(both[0]), cell(both[1])];
  /** @type {(ends: any) => any} */
  const bar = (ends) => ends && { end: pair(ends.end), otherEnd: pair(ends.otherEnd) };
  /** @type {(sides: any) => any} */
  const bin = (sides) =>
    sides && { left: cell(sides.left), right: cell(sides.right), top: cell(sides.top) };

  const pixels = found.pixels.map(pair);
  const values = found.values && found.values.map(pair);
  const bars = found.bars?.map((one) => ({ pixels: bar(one.pixels), values: bar(one.values) }));
  const bins = found.bins?.map((one) => ({ pixels: bin(one.pixels), values: bin(one.values) }));
  const note = `numbers left empty, since they are infinite or none at all: ${lost}`;
  return {
    color,
    kind,
    mode,
    pixels,
    values,
    notes: lost > 0 ? [...notes, note] : [...notes],
    ...(selected !== undefined && { selected }),
    ...(markers !== undefined && { markers }),
    ...(bars && { bars }),
    ...(bins && { bins }),
  };
}

/**
 * Whatever was thrown, as plain data.
 * @param {any} error
 * @returns {ErrorReport}
 */
export function errorReport(error) {
  const textOf = (/** @type {unknown} */ part) => (part === undefined ? null : inWords(part));
  return {
    code: typeof error?.code === 'string' ? error.code : null,
    message: typeof error?.message === 'string' ? error.message : inWords(error),
    expected: textOf(error?.expected),
    received: textOf(error?.received),
    hint: textOf(error?.hint),
  };
}

/**
 * Any value in few words.
 * @param {unknown} value
 */
function inWords(value) {
  let text;
  try {
    text = typeof value === 'object' ? JSON.stringify(value) : String(value);
  } catch {
    text = Object.prototype.toString.call(value);
  }
  return text.length > 200 ? `${text.slice(0, 199)}…` : text;
}
