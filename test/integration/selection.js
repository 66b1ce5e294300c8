// Selects the series of the charts of examples/charts by their colour alone, from files that keep every
// pixel and from files that do not, and compares with the pixels that are the series'.
import sharp from 'sharp';
import { parseColour } from '../../lib/selection/colours.js';
import { decodePicture } from '../../lib/pictures.js';
import { selectSeries } from '../../lib/selection/pixels.js';

/** @typedef {Awaited<ReturnType<typeof import('./charts.js').readChart>>} Chart */
/** @typedef {import('../../lib/selection/colours.js').Rgb} Rgb */
/** @typedef {import('../../lib/selection/pixels.js').Points} Points */
/** @typedef {import('../../lib/selection/view.js').Picture} Picture */

/** @typedef {{precision: number, recall: number, f1: number}} Scores */

/**
 * The kinds of files, and how a picture is written as one. PNG keeps every pixel, and so does the SVG
 * of a chart that is one, which is drawn anew.
 * @type {Record<string, (image: import('sharp').Sharp) => import('sharp').Sharp>}
 */
const FORMATS = {
  png: (image) => image.png(),
  jpeg: (image) => image.jpeg({ quality: 80 }),
  webp: (image) => image.webp({ quality: 80 }),
};

/** The names of the formats. */
export const formats = Object.keys(FORMATS);

/**
 * Selects the series of a chart in a format, knowing its colour and the plot area.
 * @param {Chart} chart
 * @param {string} format
 * @returns {Promise<{marked: Scores, covered: Scores | null}>} Held against the pixels that the chart's
 *   description gives, by the exact colour or within the tolerance that takes in the series and
 *   nothing else; and against those of which the series covers half or more, which nobody can tell of a
 *   chart that came in a lossy file.
 */
export async function scoreSelection(chart, format) {
  const { description, series, picture, pixels } = chart;
  const [left, top, right, bottom] = description.plot_box;
  const box = { left, top, right, bottom };
  const colour = parseColour(series.colour);
  const isClean = series.exact_pixels > 0;
  const selected = selectSeries(await rewritten(picture, format), { colour, box });
  return {
    marked: scores(selected, pixels, picture),
    covered: isClean ? scores(selected, coveredPixels(picture, colour, box), picture) : null,
  };
}

/**
 * @param {Picture} picture
 * @param {string} format
 */
async function rewritten({ width, height, data }, format) {
  const image = sharp(data, { raw: { width, height, channels: 4 } }).removeAlpha();
  return decodePicture(await FORMATS[format](image).toBuffer());
}

/**
 * The pixels that a series covers by half or more, as the plainest of rules has it: between the most
 * frequent colour of the box and the series' colour, every channel is at least half way, and all are
 * about equally far.
 * @param {Picture} picture
 * @param {Rgb} colour
 * @param {import('../../lib/selection/masks.js').Box} box
 * @returns {Points}
 */
function coveredPixels(picture, colour, { left, top, right, bottom }) {
  const inside = [];
  const counts = new Map();
  for (let y = Math.ceil(top); y <= bottom; ++y)
    for (let x = Math.ceil(left); x <= right; ++x) {
      const at = 4 * (y * picture.width + x);
      const levels = [...picture.data.subarray(at, at + 3)];
      counts.set(levels.join(), (counts.get(levels.join()) ?? 0) + 1);
      inside.push({ x, y, levels });
    }
  const [frequent] = [...counts].reduce((a, b) => (b[1] > a[1] ? b : a));
  const ground = frequent.split(',').map(Number);
  const covered = inside.filter(({ levels }) => {
    const ways = colour.map((level, i) => level - ground[i]);
    const done = levels.map((level, i) => level - ground[i]);
    const longest = ways.reduce((k, way, i) => (Math.abs(way) > Math.abs(ways[k]) ? i : k), 0);
    const share = done[longest] / ways[longest];
    return share >= 0.496 && done.every((part, i) => Math.abs(part - share * ways[i]) <= 24);
  });
  return {
    x: Float64Array.from(covered, ({ x }) => x),
    y: Float64Array.from(covered, ({ y }) => y),
  };
}

/**
 * @param {Points} selected
 * @param {Points} truth
 * @param {{width: number}} picture
 * @returns {Scores}
 */
function scores(selected, truth, { width }) {
  const places = (/** @type {Points} */ { x, y }) =>
    Array.from(x, (value, i) => y[i] * width + value);
  const wanted = new Set(places(truth));
  const hits = places(selected).filter((place) => wanted.has(place)).length;
  return {
    precision: hits / selected.x.length,
    recall: hits / wanted.size,
    f1: (2 * hits) / (selected.x.length + wanted.size),
  };
}
