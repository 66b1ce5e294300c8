// From a picture, or the pixels of a series, to the points of the series in pixels and in values.

import { formatColour } from '../selection/colours.js';
import { LimitError, refuse } from '../errors.js';
import { traceKind } from './kinds.js';
import { MODES } from './modes.js';
import { planOf, TRACE_OPTIONS } from './options.js';
import { SELECTION, selectSeries } from '../selection/pixels.js';
import { MAX_PIXELS, tracePixels } from './tracing.js';

/** @typedef {import('../axes/axes.js').AxisValue} AxisValue */
/** @typedef {import('../axes/axes.js').Pair} Pair */
/** @typedef {import('./options.js').Plan} Plan */
/** @typedef {import('./options.js').TraceOptions} TraceOptions */
/** @typedef {import('../selection/pixels.js').SelectionOptions} SelectionOptions */
/** @typedef {import('./tracing.js').PointLists} PointLists */
/** @typedef {import('../selection/view.js').Picture} Picture */

/** @typedef {[x: AxisValue, y: AxisValue]} ValuePair */

/**
 * What a trace found. A chart's points are given in pixels, the centre of the top left pixel being
 * (0, 0) and y growing downwards, and in the values of the axes. Both lists are of one length and
 * hold no NaN; a value is null where an axis is missing or has none there, and a note says so.
 * @typedef {object} Series
 * @property {string | null} color The series' colour, null where points were traced.
 * @property {import('./modes.js').Kind} kind
 * @property {string} mode The mode that was run.
 * @property {Pair[]} pixels
 * @property {ValuePair[] | null} values Null without axes.
 * @property {string[]} notes What to know about the result, in words; if nothing was found, what was
 *   tried.
 * @property {number} selected How many pixels were traced.
 * @property {number} [markers] Of `'points+curve'`: how many of the points, the first ones, are
 *   markers; the others are the curve.
 * @property {Bar[]} [bars] Where their other ends were asked for: in the order of `pixels`.
 * @property {Bin[]} [bins] The bars of a histogram, in the order of `pixels`.
 */

/**
 * @typedef {object} Bar
 * @property {{end: Pair, otherEnd: Pair | null}} pixels
 * @property {{end: ValuePair, otherEnd: ValuePair | null} | null} values
 */

/**
 * @typedef {object} Bin
 * @property {{left: number, right: number, top: number}} pixels
 * @property {{left: AxisValue, right: AxisValue, top: AxisValue} | null} values
 */

/**
 * Traces one series of a chart.
 * @param {Picture | PointLists} source A picture, or the pixels of the series in raster order.
 * @param {TraceOptions & SelectionOptions} options
 * @returns {Series}
 */
export function traceChart(source, options) {
  checkNames(options);
  const plan = planOf(options);
  const selection = select(source, options, plan.mode.kind);
  const { points, color } = selection;
  const found = points.x.length === 0 ? { pixels: [], notes: [] } : traceKind(points, plan);
  const nothing = found.pixels.length === 0 ? [whatWasTried(selection, plan)] : [];
  return {
    color,
    kind: plan.mode.kind,
    mode: plan.mode.mode,
    selected: points.x.length,
    ...inValues(found, plan, nothing),
  };
}

/** @param {TraceOptions & SelectionOptions} options */
function checkNames(options) {
  if (options === null || typeof options !== 'object')
    refuse('the options', 'an object', options, 'Say at least what kind of chart it is.');
  const known = [...SELECTION, ...TRACE_OPTIONS];
  const unknown = Object.keys(options).find((name) => !known.includes(name));
  if (unknown !== undefined) refuse('every option', `one of ${known.join(', ')}`, unknown);
}

/**
 * @typedef {object} Selection
 * @property {PointLists} points
 * @property {string | null} color
 * @property {string} how How the pixels were selected, in words.
 */

/**
 * The pixels to trace.
 * @param {Picture | PointLists} source
 * @param {SelectionOptions} options
 * @param {import('./modes.js').Kind} kind
 * @returns {Selection}
 */
function select(source, options, kind) {
  if (source === null || typeof source !== 'object')
    refuse('the source', 'a picture, or points', source);
  if (!('data' in source)) {
    const given = SELECTION.find((name) => name in options);
    if (given !== undefined)
      refuse(given, 'left out where points are traced', Reflect.get(options, given));
    checkFinite(source);
    return { points: source, color: null, how: 'given' };
  }
  checkSize(source);
  const { x, y, colours, tolerance } = pixelsOf(source, options, kind);
  const shown = colours.map(formatColour);
  const where = options.masks ? 'the masks' : options.box ? 'the box' : 'the picture';
  const how = `of ${shown.join(' and ')} within tolerance ${tolerance} in ${where}`;
  return { points: { x, y }, color: shown[0], how };
}

/**
 * The pixels of a series in a picture. A step line is traced by its core, where it covers the pixels
 * nearly whole, so that it steps from one column to the next; by its edges too, where the core is not
 * in every column.
 * @param {Picture} picture
 * @param {SelectionOptions} options
 * @param {import('./modes.js').Kind} kind
 */
function pixelsOf(picture, options, kind) {
  const all = selectSeries(picture, options);
  if (kind !== 'steps' || options.coverage !== undefined) return all;
  const core = selectSeries(picture, { ...options, coverage: CORE });
  return new Set(core.x).size >= 0.98 * new Set(all.x).size ? core : all;
}
const CORE = 0.8;

/** @param {Picture} picture */
function checkSize({ width, height }) {
  if (!(width * height > MAX_PIXELS)) return;
  throw new LimitError(`A picture of ${width} x ${height} pixels is too large.`, {
    expected: `at most ${MAX_PIXELS} pixels`,
    received: width * height,
    hint: 'Scale the picture down, or cut the chart out of it.',
  });
}

/** @param {PointLists} points */
function checkFinite({ x, y }) {
  for (const [name, list] of /** @type {const} */ ([
    ['x', x],
    ['y', y],
  ]))
    for (let i = 0; i < list?.length; ++i)
      if (!Number.isFinite(list[i]))
        refuse(`${name}[${i}] of the points`, 'a finite number', list[i]);
}

/** @type {Record<import('./modes.js').Kind, string>} */
const MISSING = {
  scatter: 'none of them is filled and compact enough to be a marker; lines are kind curve',
  curve: 'none of them is drawn out enough to be a line; filled markers are kind scatter',
  'points+curve': 'none of them is a marker or a line',
  bars: 'none of them is a bar',
  hbars: 'none of them is a bar',
  histogram: 'they have no top',
  steps: 'they have no level stretch beside an upright one',
};

/**
 * @param {Selection} selection
 * @param {Plan} plan
 */
function whatWasTried({ points, how }, { mode, numbers }) {
  const count = points.x.length;
  const tried = `nothing found: ${count} pixels ${how}`;
  if (count === 0) return `${tried}; look at the colour, the tolerance and the box`;
  // As bars, every group is an element.
  const ofGroups = MODES.find((m) => m.kind === 'bars' && m.grouping === mode.grouping);
  const groups = ofGroups && tracePixels(points, ofGroups.mode, numbers).x.length;
  const inGroups = groups ? ` in ${groups} group${groups === 1 ? '' : 's'} (${mode.grouping})` : '';
  return `${tried}${inGroups}, mode ${mode.mode}: ${MISSING[mode.kind]}`;
}

/**
 * Adds the values to what was found.
 * @param {import('./kinds.js').Found} found
 * @param {Plan} plan
 * @param {string[]} nothing
 */
function inValues({ pixels, notes, markers, bars, bins }, { mode, axes }, nothing) {
  const values = axes && pixels.map((pixel) => axes.toValue(pixel));
  /** @type {(pixel: Pair | null) => any} */
  const valueOf = (pixel) => axes && pixel && axes.toValue(pixel);
  return {
    pixels,
    values,
    notes: [...nothing, ...notes, ...(values && axes ? valueNotes(values, axes, mode.kind) : [])],
    ...(markers !== undefined && { markers }),
    ...(bars && {
      bars: bars.map(({ end, otherEnd }) => ({
        pixels: { end, otherEnd },
        values: axes && { end: valueOf(end), otherEnd: valueOf(otherEnd) },
      })),
    }),
    ...(bins && {
      bins: bins.map(({ left, right, top }) => ({
        pixels: { left, right, top },
        values: axes && {
          left: valueOf([left, top])[0],
          right: valueOf([right, top])[0],
          top: valueOf([(left + right) / 2, top])[1],
        },
      })),
    }),
  };
}

/**
 * @param {ValuePair[]} values
 * @param {import('../axes/axes.js').Axes} axes
 * @param {import('./modes.js').Kind} kind
 */
function valueNotes(values, axes, kind) {
  const notes = [];
  for (const { reference, distance } of axes.residuals)
    if (distance > 1) notes.push(`${reference} lies ${distance.toFixed(1)} px off the axes`);
  for (const [k, name] of ['x', 'y'].entries()) {
    const without = values.filter((pair) => pair[k] === null).length;
    if (without > 0) notes.push(`${without} of ${values.length} points have no value of ${name}`);
  }
  if (kind === 'bars' || kind === 'hbars') {
    const names = values.map((pair) => pair[kind === 'bars' ? 0 : 1]);
    const twice = names.find((name, i) => typeof name === 'string' && names.indexOf(name) !== i);
    if (twice !== undefined)
      notes.push(`more than one bar falls on ${twice}: are all categories named?`);
  }
  return notes;
}
