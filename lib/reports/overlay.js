// Draws what was found in a picture, to be laid over the picture: the proof that the points are
// where the chart has them. Each series has a colour of its own, which people with any kind of
// colour vision tell from the others, and a shape or dash of its own, which tells it from them in
// black and white. Everything has a rim, white or, for pale colours, nearly black, so that it stands
// out on every ground.

import { parseColour, toOklab } from '../selection/colours.js';
import { refuse } from '../errors.js';
import { contrastingColour } from '../overlay.js';

/** @typedef {import('./report.js').ImageReport} ImageReport */
/** @typedef {import('./report.js').SeriesReport} SeriesReport */

/** @typedef {[x: number, y: number]} Pair */

/**
 * @typedef {object} OverlayOptions
 * @property {string} [href] Where the picture is, such as a `data:` URL: it is then drawn below.
 * @property {string} [ground] The colour that most of the picture has, white by default: the colours
 *   of the series stand out against it.
 */

/**
 * Draws the series of a picture.
 * @param {ImageReport} image
 * @param {OverlayOptions} [options]
 * @returns {string} An SVG as large as the picture.
 */
export function toOverlay({ width, height, series }, { href, ground = '#ffffff' } = {}) {
  if (width === null || height === null) refuse('the picture', 'one whose size is known', null);
  const scale = Math.min(4, Math.max(0.6, Math.min(width, height) / 600));
  const inks = inksFor(series, ground);
  const picture = href
    ? `<image href="${escaped(href)}" x="-0.5" y="-0.5" width="${width}" height="${height}"/>`
    : '';
  const drawn = series.map((one, i) => drawing(one, { i, ink: inks[i], scale, width, height }));
  // In SVG, whole numbers are the edges of pixels, not their centres.
  return (
    `<svg xmlns="http://www.w3.org/2000/svg" width="${width}" height="${height}" ` +
    `viewBox="-0.5 -0.5 ${width} ${height}">\n${picture && `${picture}\n`}${drawn.join('')}</svg>\n`
  );
}

/**
 * A colour for each series, unlike the colours of the series themselves and, while there are enough,
 * unlike one another.
 * @param {SeriesReport[]} series
 * @param {string} ground
 */
function inksFor(series, ground) {
  const own = series.flatMap(({ color }) => (color === null ? [] : [color]));
  const taken = [...new Set([...own, ground])].map(parseColour);
  /** @type {string[]} */
  const inks = [];
  while (inks.length < series.length) inks.push(contrastingColour(taken, inks));
  return inks;
}

/**
 * How a series is drawn, each part as the data of a path: a `line` joins points and is dashed, `marks`
 * and `dots` stand by themselves.
 * @typedef {{line?: string, marks?: string, dots?: string}} Drawing
 */

/**
 * @typedef {object} Style
 * @property {number} i Which series it is, from 0.
 * @property {number} size The reach of a marker, in pixels.
 * @property {number} scale How thick lines are, 1 on a common screen.
 */

const DASHES = ['', '9 5', '2 4', '12 4 2 4', '5 4'];

/**
 * @param {SeriesReport} series
 * @param {{i: number, ink: string, scale: number, width: number, height: number}} place
 */
function drawing(series, { i, ink, scale, width, height }) {
  const count = series.pixels.length;
  // Where points are many, marks are small enough not to hide one another.
  const room = Math.sqrt((width * height) / Math.max(1, count));
  const size = Math.min(11 * scale, Math.max(3, 0.25 * room));
  const { line, marks, dots } = DRAWINGS[series.kind](series, { i, size, scale });
  const dash = DASHES[i % DASHES.length].replace(/\d+/g, (length) => `${Number(length) * scale}`);
  const rim = toOklab(parseColour(ink))[0] > 0.8 ? '#1a1a1a' : '#ffffff';
  const stroke = (/** @type {string | undefined} */ path, thickness = 1.8 * scale, dashes = '') =>
    path
      ? `<path d="${path}" stroke="${rim}" stroke-width="${round(thickness + 1.8 * scale)}"/>` +
        `<path d="${path}" stroke="${ink}" stroke-width="${round(thickness)}"${dashes}/>`
      : '';
  const dot = Math.min(4.5 * scale, Math.max(1.8 * scale, 0.2 * room));
  const title = `series ${i + 1}${series.color === null ? '' : `, ${series.color}`}: ${series.kind}`;
  const parts = [
    stroke(line, undefined, dash && ` stroke-dasharray="${dash}"`),
    stroke(dots, dot),
    stroke(marks),
  ];
  return (
    '<g fill="none" stroke-linejoin="round" stroke-linecap="round">' +
    `<title>${escaped(title)}</title>${parts.join('')}</g>\n`
  );
}

/** @type {Record<import('../tracing/modes.js').Kind, (series: SeriesReport, style: Style) => Drawing>} */
const DRAWINGS = {
  scatter: ({ pixels }, style) => ({ marks: markers(known(pixels), style) }),
  curve: ({ pixels }, { scale }) => ({ line: chain(pixels, scale), dots: dotsAt(pixels) }),
  'points+curve': ({ pixels, markers: count = 0 }, style) => ({
    line: chain(pixels.slice(count), style.scale),
    marks: markers(known(pixels.slice(0, count)), style),
    dots: dotsAt(pixels.slice(count)),
  }),
  bars: (series, { scale }) => barEnds(series, ([x, y]) => cap(x - 9 * scale, y, 18 * scale, 'h')),
  hbars: (series, { scale }) => barEnds(series, ([x, y]) => cap(x, y - 9 * scale, 18 * scale, 'v')),
  histogram: skyline,
  steps: ({ pixels }) => ({ line: through(known(pixels)), dots: dotsAt(pixels) }),
};

/**
 * The points both of whose coordinates are known.
 * @param {(readonly (number | null)[] | null | undefined)[]} pixels
 */
const known = (pixels) =>
  /** @type {Pair[]} */ (pixels.filter((pair) => pair && pair.every((part) => part !== null)));

/**
 * Signs that are open in the middle, so that what they mark still shows.
 * @param {Pair[]} pixels
 * @param {Style} style
 */
function markers(pixels, { i, size }) {
  const shape = SHAPES[i % SHAPES.length];
  return pixels.map((pixel) => shape(pixel, size)).join('');
}

/** @type {((pixel: Pair, size: number) => string)[]} */
const SHAPES = [
  ([x, y], s) =>
    `${move(x - s, y)}${by(0.6 * s, 0)}${move(x + 0.4 * s, y)}${by(0.6 * s, 0)}` +
    `${move(x, y - s)}${by(0, 0.6 * s)}${move(x, y + 0.4 * s)}${by(0, 0.6 * s)}`,
  ([x, y], s) => polygon(x, y, [-s, -s, s, -s, s, s, -s, s], 0.8),
  ([x, y], s) => polygon(x, y, [0, -s, s, 0, 0, s, -s, 0], 1.1),
  ([x, y], s) => {
    const r = round(0.95 * s);
    return `${move(x - r, y)}a${r},${r},0,1,0,${round(2 * r)},0a${r},${r},0,1,0,${round(-2 * r)},0z`;
  },
  ([x, y], s) => polygon(x, y, [0, -s, 0.87 * s, 0.5 * s, -0.87 * s, 0.5 * s], 1.3),
  ([x, y], s) =>
    [-1, 1]
      .flatMap((a) =>
        [-1, 1].map((b) => move(x + a * s, y + b * s) + by(-0.6 * a * s, -0.6 * b * s)),
      )
      .join(''),
];

/**
 * @param {number} x
 * @param {number} y
 * @param {number[]} corners Relative to (x, y).
 * @param {number} factor
 */
function polygon(x, y, corners, factor) {
  const pairs = corners.flatMap((_, k) => (k % 2 ? [] : [[corners[k], corners[k + 1]]]));
  return `${through(pairs.map(([dx, dy]) => [x + factor * dx, y + factor * dy]))}z`;
}

/** @param {SeriesReport['pixels']} pixels */
const dotsAt = (pixels) =>
  known(pixels)
    .map(([x, y]) => `${move(x, y)}h0`)
    .join('');

/** @param {Pair[]} pixels */
const through = (pixels) =>
  pixels.map(([x, y], i) => (i === 0 ? move(x, y) : `L${round(x)},${round(y)}`)).join('');

/**
 * A line from neighbour to neighbour, open where the next one is far: the chain of a curve jumps
 * when it has come to an end and goes on elsewhere.
 * @param {SeriesReport['pixels']} pixels
 * @param {number} scale
 */
function chain(pixels, scale) {
  const points = known(pixels);
  const gaps = points
    .slice(1)
    .map(([x, y], i) => Math.hypot(x - points[i][0], y - points[i][1]))
    .sort((a, b) => a - b);
  const far = Math.max(4 * scale, 3 * (gaps[gaps.length >> 1] ?? 0));
  return points
    .map(([x, y], i) => {
      const isFar = i === 0 || Math.hypot(x - points[i - 1][0], y - points[i - 1][1]) > far;
      return isFar ? move(x, y) : `L${round(x)},${round(y)}`;
    })
    .join('');
}

/**
 * A cap on every end and a line from end to end.
 * @param {SeriesReport} series
 * @param {(pixel: Pair) => string} capAt
 * @returns {Drawing}
 */
function barEnds({ pixels, bars = [] }, capAt) {
  const ends = known([...pixels, ...bars.map((bar) => bar.pixels.otherEnd)]);
  const stems = bars.map((bar) => known([bar.pixels.end, bar.pixels.otherEnd]));
  return {
    marks: ends.map(capAt).join(''),
    line: stems
      .filter((stem) => stem.length === 2)
      .map(through)
      .join(''),
  };
}

/**
 * @param {number} x
 * @param {number} y
 * @param {number} length
 * @param {'h' | 'v'} direction
 */
const cap = (x, y, length, direction) => `${move(x, y)}${direction}${round(length)}`;

/**
 * The tops of a histogram's bars, joined by upright lines where the bars touch.
 * @param {SeriesReport} series
 * @returns {Drawing}
 */
function skyline({ bins = [] }) {
  let before = null;
  let line = '';
  for (const { pixels: bin } of bins) {
    const { left, right, top } = bin;
    if (left === null || right === null || top === null) continue;
    line += left === before ? `V${round(top)}` : move(left, top);
    line += `H${round(right)}`;
    before = right;
  }
  return { line };
}

/**
 * @param {number} x
 * @param {number} y
 */
const move = (x, y) => `M${round(x)},${round(y)}`;

/**
 * @param {number} x
 * @param {number} y
 */
const by = (x, y) => `l${round(x)},${round(y)}`;

/** @param {number} number */
const round = (number) => Math.round(100 * number) / 100;

/** @param {string} text */
const escaped = (text) => text.replace(/[&<>"]/g, (character) => `&#${character.charCodeAt(0)};`);
