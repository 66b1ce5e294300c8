// What each kind of chart needs around the native function: the right way up before it, and its
// answer put in order after it.

import { facing, OPPOSITE } from './mirror.js';
import { MODES } from './modes.js';
import { tracePixels } from './tracing.js';

/** @typedef {import('../axes/axes.js').Pair} Pair */
/** @typedef {import('./mirror.js').Direction} Direction */
/** @typedef {import('./modes.js').Kind} Kind */
/** @typedef {import('./options.js').Plan} Plan */
/** @typedef {import('./tracing.js').PointLists} PointLists */

/**
 * @typedef {object} Found
 * @property {Pair[]} pixels
 * @property {string[]} notes
 * @property {number} [markers] How many of `pixels`, the first ones, are markers.
 * @property {{end: Pair, otherEnd: Pair | null}[]} [bars]
 * @property {{left: number, right: number, top: number}[]} [bins]
 */

/**
 * Traces a point set that is not empty.
 * @param {PointLists} points In raster order.
 * @param {Plan} plan
 * @returns {Found}
 */
export function traceKind(points, plan) {
  return TRACERS[plan.mode.kind](points, plan);
}

/** @type {Record<Kind, (points: PointLists, plan: Plan) => Found>} */
const TRACERS = {
  scatter: tracePlainly,
  curve: tracePlainly,
  'points+curve': traceMarkersAndCurve,
  bars: traceBars,
  hbars: traceBars,
  histogram: traceHistogram,
  steps: traceSteps,
};

/**
 * @param {PointLists} points
 * @param {Plan} plan
 * @returns {Found}
 */
function tracePlainly(points, { mode, numbers }) {
  const all = pairs(tracePixels(points, mode.mode, numbers));
  const pixels = all.filter((pair) => pair.every(Number.isFinite));
  const lost = all.length - pixels.length;
  const why =
    mode.grouping === 'clusters'
      ? 'the cluster radius, the mean distance of the pixels nearest to the first, is 0 or that of none'
      : 'a sum of coordinates is too large for a number';
  return { pixels, notes: lost > 0 ? [`${lost} of ${all.length} points left out: ${why}`] : [] };
}

/** @param {{x: number[], y: number[]}} lists */
const pairs = ({ x, y }) =>
  Array.from(
    { length: Math.min(x.length, y.length) },
    (_, i) => /** @type {Pair} */ ([x[i], y[i]]),
  );

/**
 * The markers come first; how many they are, the mode for markers alone tells.
 * @param {PointLists} points
 * @param {Plan} plan
 * @returns {Found}
 */
function traceMarkersAndCurve(points, plan) {
  const { mode, numbers } = plan;
  const alone = MODES.find((m) => m.kind === 'scatter' && m.grouping === mode.grouping);
  const markers = tracePixels(points, /** @type {{mode: string}} */ (alone).mode, numbers).x.length;
  return { ...tracePlainly(points, plan), markers };
}

/**
 * @param {PointLists} points
 * @param {Plan} plan
 * @returns {Found} From left to right, lying bars from the top.
 */
function traceBars(points, plan) {
  const { mode, direction, otherEnds } = plan;
  const ends = barEnds(points, plan, direction);
  if (!otherEnds) return { pixels: ends, notes: [] };
  const others = barEnds(points, plan, OPPOSITE[direction]);
  // The same pixels make up the same bars whichever way they face, except that grouping by rows
  // depends on the order of the rows.
  const across = mode.kind === 'bars' ? 0 : 1;
  const reach = plan.numbers.pixelStep / 2;
  const isPaired =
    others.length === ends.length &&
    others.every((other, i) => Math.abs(other[across] - ends[i][across]) < reach);
  const notes = isPaired
    ? []
    : ['the other ends of the bars left out: seen from there, the pixels form other bars'];
  return {
    pixels: ends,
    bars: ends.map((end, i) => ({ end, otherEnd: isPaired ? others[i] : null })),
    notes,
  };
}

/**
 * The ends of bars on the side towards which `direction` points.
 * @param {PointLists} points
 * @param {Plan} plan
 * @param {Direction} direction
 */
function barEnds(points, { mode, numbers, beyond }, direction) {
  const traced = pairs(tracePixels(facing(points, direction), mode.mode, numbers));
  const ends = traced.map((pair) => outwards(pair, direction, beyond));
  const [first, second] = mode.kind === 'bars' ? [0, 1] : [1, 0];
  return ends.sort((a, b) => a[first] - b[first] || a[second] - b[second]);
}

/**
 * A position in a point set that was turned, in the picture and moved outwards.
 * @param {Pair} position
 * @param {Direction} direction The one in which the point set was turned.
 * @param {number} beyond
 * @returns {Pair}
 */
function outwards([x, y], direction, beyond) {
  switch (direction) {
    case 'up':
      return [x, y - beyond];
    case 'down':
      return [x, beyond - y];
    case 'right':
      return [x + beyond, y];
    case 'left':
      return [0 - x - beyond, y];
  }
}

/**
 * @param {PointLists} points
 * @param {Plan} plan
 * @returns {Found}
 */
function traceHistogram(points, { mode, numbers, direction, beyond }) {
  const turned = facing(points, direction);
  const traced = pairs(tracePixels(turned, mode.mode, numbers));
  const pixels = traced.map((pair) => outwards(pair, direction, beyond));
  const columns = columnsOf(turned.x);
  const bars = runsOf(traced, topsOf(turned, columns, numbers.pixelStep));
  const bins = bars.map(({ left, right }, i) => ({
    left: left - numbers.pixelStep / 2,
    right: right + numbers.pixelStep / 2,
    top: pixels[i][1],
  }));
  const gaps = gapsOf(columns, numbers.pixelStep).filter(({ after }) =>
    bars.some(({ left, right }) => left <= after && after < right),
  );
  const notes = gapNotes(gaps, 'neighbouring bars of one height come out as one');
  return { pixels, bins, notes };
}

/**
 * The different x of a point set, ascending.
 * @param {ArrayLike<number>} x
 */
function columnsOf(x) {
  const columns = new Set();
  for (let i = 0; i < x.length; ++i) columns.add(x[i]);
  return Float64Array.from(columns).sort();
}

/**
 * Stretches without pixels.
 * @param {Float64Array} columns
 * @param {number} step
 */
function gapsOf(columns, step) {
  const gaps = [];
  for (let i = 1; i < columns.length; ++i)
    if (columns[i] - columns[i - 1] > 1.5 * step)
      gaps.push({ after: columns[i - 1], before: columns[i] });
  return gaps;
}

/**
 * @param {ReturnType<typeof gapsOf>} gaps
 * @param {string} effect
 */
function gapNotes(gaps, effect) {
  if (gaps.length === 0) return [];
  const [{ after, before }] = gaps;
  const others = gaps.length > 1 ? ` and in ${gaps.length - 1} more places` : '';
  return [`no pixels between x = ${after} and ${before}${others}: ${effect}`];
}

/**
 * The columns of a histogram: `at`, where the native function sees their top, and the columns that
 * it takes for this one. Only the first compartment has two, at both of its borders; the higher
 * pixel of them, the first of equals, is its top.
 * @param {PointLists} points
 * @param {Float64Array} columns Its columns.
 * @param {number} step
 */
function topsOf({ x, y }, columns, step) {
  const border = step + columns[0];
  let top = -1;
  for (let i = 0; i < x.length; ++i) if (x[i] <= border && (top < 0 || y[i] < y[top])) top = i;
  const inFirst = columns.filter((column) => column <= border);
  return [
    { at: x[top], left: inFirst[0], right: inFirst[inFirst.length - 1] },
    ...Array.from(columns.subarray(inFirst.length), (at) => ({ at, left: at, right: at })),
  ];
}

/**
 * The first and the last column of each bar of a histogram. The native function gives the middle of
 * the two, and each bar begins with the column after the last one of the bar before.
 * @param {Pair[]} bars
 * @param {ReturnType<typeof topsOf>} tops
 */
function runsOf(bars, tops) {
  let next = 0;
  return bars.map(([middle]) => {
    const first = tops[next];
    let last = first;
    for (; next < tops.length && first.at + tops[next].at <= 2 * middle; ++next) last = tops[next];
    return { left: first.left, right: last.right };
  });
}

/**
 * @param {PointLists} points
 * @param {Plan} plan
 * @returns {Found} The vertices of a line whose parts are level or upright by turns.
 */
function traceSteps(points, { mode, numbers }) {
  const traced = tracePixels(points, mode.mode, numbers);
  const notes = gapNotes(
    gapsOf(columnsOf(points.x), numbers.pixelStep),
    'a line with a gap comes out as a single step; trace its parts by themselves, or with a pixel ' +
      'step wider than the gap',
  );
  const vertices = pairs(traced);
  const { x, y } = traced;
  if (vertices.length === 0) return { pixels: [], notes };
  // A line that begins with a riser has its far end first, and then the end of its first tread.
  if (y[0] !== y[1]) vertices.splice(1, 0, [x[0], y[1]]);
  // An x more: the last riser goes up, and its far end is missing. A y more is the top of the last
  // riser, which stands before the last tread.
  if (x.length > y.length) {
    const end = lastUpsideDown(points, mode.mode, numbers);
    if (end === undefined) notes.push('the last riser reaches as far up as down: it is left out');
    else vertices.push([x[x.length - 1], end]);
  } else if (y.length > x.length && x.length > 2) {
    endInRiser(vertices, y[y.length - 1], points, { mode, numbers });
  }
  // The mean of an empty column is no number; then a note tells of the gap.
  const finite = vertices.filter((pair) => pair.every(Number.isFinite));
  const lost = vertices.length - finite.length;
  if (lost > 0) notes.push(`${lost} of ${vertices.length} vertices left out: they lie in the gap`);
  return { pixels: withoutNeedless(finite), notes };
}

/**
 * Corrects the end of a line that seems to end in a tread no longer than two pixels: this is the soft
 * flank of a riser, and the line ends at the far end of the riser, in its middle.
 * @param {Pair[]} vertices
 * @param {number} top That of the last riser.
 * @param {PointLists} points
 * @param {Pick<Plan, 'mode' | 'numbers'>} plan
 */
function endInRiser(vertices, top, points, { mode, numbers }) {
  const [[, before], [left, height], [right]] = vertices.slice(-3);
  if (right - left > 2 * numbers.pixelStep) return;
  const end = height < before ? top : lastUpsideDown(points, mode.mode, numbers, 'y more');
  if (end === undefined) return;
  const middle = (left + right) / 2;
  vertices.splice(-3, 3, [middle, before], [middle, end]);
}

/**
 * The last y of a step line that is traced upside down, where tops are bottoms: the bottom of its
 * last riser. Undefined where the lists do not have the given lengths then.
 * @param {PointLists} points
 * @param {string} mode
 * @param {Plan['numbers']} numbers
 * @param {'y more' | 'equal'} [lengths]
 */
function lastUpsideDown({ x, y }, mode, numbers, lengths = 'equal') {
  const turned = { x, y: Float64Array.from(y, (value) => 0 - value) };
  const traced = tracePixels(turned, mode, numbers);
  const more = traced.y.length - traced.x.length;
  return more === (lengths === 'equal' ? 0 : 1) ? 0 - traced.y[traced.y.length - 1] : undefined;
}

/**
 * Leaves out vertices in the middle of a straight stretch and vertices that stand twice.
 * @param {Pair[]} vertices Of a line whose parts are level or upright.
 */
export function withoutNeedless(vertices) {
  /** @type {Pair[]} */
  const kept = [];
  for (const vertex of vertices) {
    const [before, last] = kept.slice(-2);
    const isStraight = [0, 1].some(
      (k) =>
        last !== undefined &&
        before[k] === last[k] &&
        last[k] === vertex[k] &&
        (last[1 - k] - before[1 - k]) * (vertex[1 - k] - last[1 - k]) >= 0,
    );
    if (isStraight) kept.pop();
    const end = kept[kept.length - 1];
    if (!end || end[0] !== vertex[0] || end[1] !== vertex[1]) kept.push(vertex);
  }
  return kept;
}
