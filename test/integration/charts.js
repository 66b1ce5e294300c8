// Traces the charts of examples/charts and compares with the true positions beside them.
import { readdirSync, readFileSync } from 'node:fs';
import { parseColour } from '../../lib/selection/colours.js';
import { decodePicture } from '../../lib/pictures.js';
import { selectPixels } from '../../lib/selection/pixels.js';
import { tracePixels } from '../../lib/tracing/tracing.js';

const folder = new URL('../../examples/charts/', import.meta.url);

/** A true element counts as found when a traced point lies at most this far from it, in pixels. */
export const REACH = 2;

/** @typedef {[x: number, y: number]} Position In pixels. */

/** The names of the charts: their files without the ending. */
export const chartNames = readdirSync(folder)
  .filter((file) => file.endsWith('.json'))
  .map((file) => file.slice(0, -'.json'.length));

/**
 * Reads a chart: its description, its one series, the decoded picture and the series' pixels.
 * @param {string} name
 */
export async function readChart(name) {
  const description = JSON.parse(readFileSync(new URL(`${name}.json`, folder), 'utf8'));
  const picture = await decodePicture(readFileSync(new URL(description.file, folder)));
  const [left, top, right, bottom] = description.plot_box;
  const [series] = description.series;
  const pixels = selectPixels(picture, parseColour(series.colour), {
    tolerance: series.tolerance,
    box: { left, top, right, bottom },
  });
  return { description, series, picture, pixels };
}

/**
 * The modes that suit a chart: the one its description suggests, and its twin with the other
 * grouping where there is one.
 * @param {{mode: string}} series
 */
export function modesOf({ mode }) {
  const twin = mode.replace('-fission', '-horizontal');
  return twin === mode ? [mode] : [mode, twin];
}

/**
 * Traces a chart in one mode.
 * @param {Awaited<ReturnType<typeof readChart>>} chart
 * @param {string} mode
 */
export function traceChart({ series, pixels }, mode) {
  const traced = tracePixels(pixels, mode);
  return { traced, compared: compare(series, positions(traced)) };
}

/**
 * The x and y of a result as positions. Where one list is longer by one, its last value belongs to
 * no position.
 * @param {{x: number[], y: number[]}} lists
 * @returns {Position[]}
 */
function positions({ x, y }) {
  return x.slice(0, y.length).map((value, i) => [value, y[i]]);
}

/**
 * @typedef {object} Comparison
 * @property {number} traced Traced points.
 * @property {number} lone True elements that touch no other.
 * @property {number} loneFound Of these, how many have a traced point within reach.
 * @property {number} touching True elements that touch or hide one another.
 * @property {number} touchingFound Of these, how many have a traced point within reach.
 * @property {number} offsetX Mean of traced less true, over the elements found, in pixels.
 * @property {number} offsetY The same for y.
 * @property {number} largest The largest distance of an element found.
 * @property {number} others Traced points that stand for no true element.
 * @property {number | null} lineMean Their mean distance from the true line; null without a line.
 * @property {number | null} lineLargest Their largest distance from it.
 */

/**
 * Compares traced points with the truth. Each true element is given at most one traced point and
 * each traced point to at most one element, nearest pairs first.
 * @param {any} series The truth.
 * @param {Position[]} traced
 * @returns {Comparison}
 */
function compare(series, traced) {
  const [shiftX, shiftY] = series.centroid_offset ?? [0, 0];
  /** @type {Position[]} */
  const truth = series.pixels.map((/** @type {Position} */ [x, y]) => [x + shiftX, y + shiftY]);
  const touching = new Set((series.touching ?? []).flat());
  const pairs = nearestPairs(truth, traced);
  const taken = new Set(pairs.map((pair) => pair.from));
  const others = traced.filter((_, i) => !taken.has(i));
  const line = series.kind === 'curve' ? series.pixels : series.curve_pixels;
  // Every point of a curve is meant to lie on it; markers stand beside their line.
  const onLine = (series.kind === 'curve' ? traced : others).map((p) => distanceFromLine(p, line));
  return {
    traced: traced.length,
    lone: truth.length - touching.size,
    loneFound: pairs.filter(({ to }) => !touching.has(to)).length,
    touching: touching.size,
    touchingFound: pairs.filter(({ to }) => touching.has(to)).length,
    offsetX: mean(pairs.map(({ from, to }) => traced[from][0] - truth[to][0])),
    offsetY: mean(pairs.map(({ from, to }) => traced[from][1] - truth[to][1])),
    largest: Math.max(0, ...pairs.map(({ distance }) => distance)),
    others: others.length,
    lineMean: line ? mean(onLine) : null,
    lineLargest: line ? Math.max(0, ...onLine) : null,
  };
}

/**
 * @param {Position[]} truth
 * @param {Position[]} traced
 */
export function nearestPairs(truth, traced) {
  const near = truth
    .flatMap((t, to) => traced.map((p, from) => ({ from, to, distance: apart(t, p) })))
    .filter(({ distance }) => distance <= REACH)
    .sort((a, b) => a.distance - b.distance);
  const from = new Set();
  const to = new Set();
  return near.filter((pair) => {
    if (from.has(pair.from) || to.has(pair.to)) return false;
    from.add(pair.from);
    to.add(pair.to);
    return true;
  });
}

/**
 * @param {Position} point
 * @param {Position[] | undefined} line Its vertices.
 */
function distanceFromLine(point, line = []) {
  const ofSegments = line.slice(1).map((end, i) => apart(point, nearestOf(point, line[i], end)));
  return Math.min(...ofSegments);
}

/**
 * The point of a segment that is nearest to `point`.
 * @param {Position} point
 * @param {Position} start
 * @param {Position} end
 * @returns {Position}
 */
export function nearestOf([x, y], [x0, y0], [x1, y1]) {
  const [dx, dy] = [x1 - x0, y1 - y0];
  const length2 = dx * dx + dy * dy;
  const along = length2 === 0 ? 0 : ((x - x0) * dx + (y - y0) * dy) / length2;
  const t = Math.min(1, Math.max(0, along));
  return [x0 + t * dx, y0 + t * dy];
}

/**
 * @param {Position} a
 * @param {Position} b
 */
export const apart = ([ax, ay], [bx, by]) =>
  Math.sqrt((ax - bx) * (ax - bx) + (ay - by) * (ay - by));

/** @param {number[]} values */
export const mean = (values) =>
  values.length === 0 ? 0 : values.reduce((sum, value) => sum + value, 0) / values.length;
