// Traces the charts of examples/charts from their colour and their axes to values, and compares the
// values with the data that the charts were drawn from.
import { makeAxes } from '../../lib/axes/axes.js';
import { traceChart } from '../../lib/tracing/series.js';
import { apart, mean, nearestOf, nearestPairs } from './charts.js';

/** @typedef {import('./charts.js').Position} Position */
/** @typedef {import('../../lib/tracing/series.js').Series} Series */

/** What the descriptions call the kinds of charts. */
export const KINDS = /** @type {Record<string, import('../../lib/tracing/modes.js').Kind>} */ ({
  points_curve: 'points+curve',
  bars_vertical: 'bars',
  bars_horizontal: 'hbars',
});

/**
 * The axes of a chart. Of categories the description has the first and the last; a person who reads
 * the chart sees all of them.
 * @param {any} description
 */
export function axesOf({ axes, series: [{ data }] }) {
  const whole = Object.entries(axes).map(([name, axis]) => {
    if (axis.scale !== 'category') return [name, axis];
    const categories = data.map((/** @type {any[]} */ pair) => pair[name === 'x' ? 0 : 1]);
    return [name, { ...axis, categories }];
  });
  return makeAxes(Object.fromEntries(whole));
}

/**
 * Traces the series of a chart.
 * @param {Awaited<ReturnType<typeof import('./charts.js').readChart>>} chart
 */
export function traceSeries({ description, series, picture }) {
  const [left, top, right, bottom] = description.plot_box;
  const axes = axesOf(description);
  const traced = traceChart(picture, {
    colour: series.colour,
    box: { left, top, right, bottom },
    kind: KINDS[series.kind] ?? series.kind,
    axes,
  });
  return { traced, compared: compareValues(traced, series, axes) };
}

/**
 * @typedef {object} Errors
 * @property {number} mean
 * @property {number} largest
 */

/**
 * @typedef {object} Comparison
 * @property {number} points Traced points.
 * @property {number} elements True elements; 0 for a curve, which has none.
 * @property {number} found Of these, how many have a traced point within reach.
 * @property {Errors} pixels Distances from the true elements found, or from the true curve.
 * @property {Errors | null} x Errors in values; null on an axis of categories. On logarithmic axes
 *   they are shares of the true value.
 * @property {Errors | null} y
 */

/**
 * @param {Pick<Series, 'pixels'>} traced
 * @param {any} series The truth.
 * @param {import('../../lib/axes/axes.js').Axes} axes
 * @returns {Comparison}
 */
export function compareValues(traced, series, axes) {
  const isCurve = series.kind === 'curve';
  const [shiftX, shiftY] = series.centroid_offset ?? [0, 0];
  // Where a marker's centroid lies beside its position, the position counts.
  const points = traced.pixels.map(([x, y]) => /** @type {Position} */ ([x - shiftX, y - shiftY]));
  const pairs = isCurve
    ? points.map((point) => onCurve(point, series.pixels, axes))
    : nearestPairs(series.pixels, points).map(({ from, to }) => ({
        point: points[from],
        pixel: series.pixels[to],
        value: series.data[to],
      }));
  const errorsOf = (/** @type {0 | 1} */ k) => {
    const scale = /** @type {any} */ (axes.description)[k === 0 ? 'x' : 'y'].scale;
    const errors = pairs.map(({ point, value }) =>
      errorOf(axes.toValue(point)[k], value[k], scale),
    );
    return scale === 'category' ? null : summary(errors);
  };
  return {
    points: points.length,
    elements: isCurve ? 0 : series.pixels.length,
    found: isCurve ? 0 : pairs.length,
    pixels: summary(pairs.map(({ point, pixel }) => apart(point, pixel))),
    x: errorsOf(0),
    y: errorsOf(1),
  };
}

/**
 * The place on a true curve that is nearest to a traced point, and its value.
 * @param {Position} point
 * @param {Position[]} curve Its vertices.
 * @param {import('../../lib/axes/axes.js').Axes} axes
 */
function onCurve(point, curve, axes) {
  const nearest = curve.slice(1).map((end, i) => nearestOf(point, curve[i], end));
  const pixel = nearest.reduce((a, b) => (apart(b, point) < apart(a, point) ? b : a));
  return { point, pixel, value: axes.toValue(pixel) };
}

/**
 * @param {any} value
 * @param {any} truth
 * @param {string} scale
 */
function errorOf(value, truth, scale) {
  // A wrong category is no small error.
  if (scale === 'category') return value === truth ? 0 : Infinity;
  return scale === 'linear' ? Math.abs(value - truth) : Math.abs(value / truth - 1);
}

/**
 * @param {number[]} errors
 * @returns {Errors}
 */
const summary = (errors) => ({ mean: mean(errors), largest: Math.max(0, ...errors) });
