// The options of a trace in plain words, checked and turned into what the native function is given.

import { makeAxes } from '../axes/axes.js';
import { checkNumber, refuse } from '../errors.js';
import { OPPOSITE } from './mirror.js';
import { findMode, MODES, modeOf } from './modes.js';

/** @typedef {import('./modes.js').Kind} Kind */
/** @typedef {import('./modes.js').Grouping} Grouping */
/** @typedef {import('./mirror.js').Direction} Direction */
/** @typedef {import('../axes/axes.js').Axes} Axes */
/** @typedef {import('../axes/axes.js').AxesDescription} AxesDescription */

/**
 * How to trace a series.
 * @typedef {object} TraceOptions
 * @property {Kind} [kind] What the chart shows.
 * @property {string} [mode] Instead of `kind`: one of the thirteen modes, whose points are given as
 *   they come.
 * @property {Grouping} [grouping] How pixels are told to belong together. Markers, curves and bars:
 *   `'fission'` (by touching, the default) or `'horizontal'` (by runs along rows); markers also
 *   `'clusters'` (by distance alone, for clouds of points that overlap).
 * @property {1 | 2 | 4 | 8 | 16} [stride] Curves: keeps every 1st (the default), 2nd, 4th, … point.
 * @property {number} [clusterFraction] Clusters: the share of the pixels, those nearest to the
 *   first, whose mean distance is the cluster radius, 0.05 by default. Curves: the code that stands
 *   for a stride.
 * @property {number} [pixelStep] The distance of neighbouring pixels, 1 by default.
 * @property {Direction} [direction] Where bars grow from their common line: `'up'` (the default) or
 *   `'down'`, lying bars `'right'` (the default) or `'left'`; histograms up or down.
 * @property {boolean} [otherEnds] Whether to give the other ends of bars too.
 * @property {'edge' | 'centre'} [ends] Where bars and the bars of a histogram end: at the outer edge
 *   of their last pixels, half a pixel step beyond the centres of these (the default with `kind`), or
 *   at their centres as the native function has it (the default with `mode`).
 * @property {Axes | AxesDescription} [axes] Without them there are no values.
 */

/** The names of these options. */
export const TRACE_OPTIONS = [
  'kind',
  'mode',
  'grouping',
  'stride',
  'clusterFraction',
  'pixelStep',
  'direction',
  'otherEnds',
  'ends',
  'axes',
];

/**
 * @typedef {object} Plan
 * @property {Readonly<import('./modes.js').Mode>} mode
 * @property {{pixelStep: number, clusterFraction: number}} numbers
 * @property {Direction} direction
 * @property {boolean} otherEnds
 * @property {number} beyond How far bars reach beyond the centres of their last pixels.
 * @property {Axes | null} axes
 */

/**
 * The strides and the cluster fractions that stand for them. A fraction of 0.054 has the stride 8 as
 * well.
 * @type {ReadonlyMap<number, number>}
 */
const FRACTIONS = new Map([
  [1, 0.05],
  [2, 0.051],
  [4, 0.052],
  [8, 0.053],
  [16, 0.055],
]);
const CURVE_FRACTIONS = [...FRACTIONS.values(), 0.054];

const KINDS = [...new Set(MODES.map(({ kind }) => kind))];

/** @type {Partial<Record<Kind, Direction[]>>} */
const DIRECTIONS = { bars: ['up', 'down'], hbars: ['right', 'left'], histogram: ['up', 'down'] };

/**
 * The options that matter to a mode only under a condition.
 * @type {[keyof TraceOptions, (mode: Readonly<import('./modes.js').Mode>) => boolean][]}
 */
const CONDITIONAL = [
  ['stride', ({ kind }) => kind === 'curve' || kind === 'points+curve'],
  ['clusterFraction', ({ usesClusterFraction }) => usesClusterFraction],
  ['pixelStep', ({ usesPixelStep }) => usesPixelStep],
  ['direction', ({ kind }) => kind in DIRECTIONS],
  ['otherEnds', ({ kind }) => kind === 'bars' || kind === 'hbars'],
  ['ends', ({ kind }) => kind in DIRECTIONS],
];

/**
 * Checks the options of a trace and fills in what is left out.
 * @param {TraceOptions} options
 * @returns {Plan}
 */
export function planOf(options) {
  const mode = modeOfOptions(options);
  for (const [name, matters] of CONDITIONAL)
    if (options[name] !== undefined && !matters(mode))
      refuse(name, `left out, since it does not matter to ${mode.mode}`, options[name]);
  const { pixelStep = 1, otherEnds = false, ends = options.mode ? 'centre' : 'edge' } = options;
  checkNumber('pixelStep', pixelStep, pixelStep > 0, 'a number above 0');
  if (typeof otherEnds !== 'boolean') refuse('otherEnds', 'true or false', otherEnds);
  if (ends !== 'edge' && ends !== 'centre') refuse('ends', "'edge' or 'centre'", ends);
  return {
    mode,
    numbers: { pixelStep, clusterFraction: clusterFractionOf(options, mode) },
    direction: directionOf(options, mode),
    otherEnds,
    beyond: ends === 'edge' ? pixelStep / 2 : 0,
    axes: axesOf(options.axes),
  };
}

/** @param {TraceOptions} options */
function modeOfOptions({ kind, mode, grouping }) {
  if (mode !== undefined) {
    if (kind !== undefined) refuse('kind', 'left out where a mode is given', kind);
    if (grouping !== undefined) refuse('grouping', 'left out where a mode is given', grouping);
    return findMode(mode);
  }
  if (kind === undefined || !KINDS.includes(kind))
    refuse('kind', `one of ${KINDS.join(', ')}`, kind, 'Say what the chart shows.');
  const found = modeOf(kind, grouping);
  if (found) return found;
  const groupings = MODES.filter((candidate) => candidate.kind === kind).map((m) => m.grouping);
  return refuse('grouping', `one of ${groupings.join(', ')}, which suit ${kind},`, grouping);
}

/**
 * @param {TraceOptions} options
 * @param {Readonly<import('./modes.js').Mode>} mode
 */
function clusterFractionOf({ stride, clusterFraction }, { grouping }) {
  if (stride !== undefined) {
    if (clusterFraction !== undefined)
      refuse('clusterFraction', 'left out where a stride is given', clusterFraction);
    return (
      FRACTIONS.get(stride) ??
      refuse('stride', `one of ${[...FRACTIONS.keys()].join(', ')}`, stride)
    );
  }
  if (clusterFraction === undefined) return 0.05;
  if (grouping === 'clusters')
    checkNumber(
      'clusterFraction',
      clusterFraction,
      clusterFraction > 0 && clusterFraction <= 1,
      'a number above 0, at most 1',
    );
  else if (!CURVE_FRACTIONS.includes(clusterFraction))
    refuse(
      'clusterFraction',
      `one of ${CURVE_FRACTIONS.join(', ')}`,
      clusterFraction,
      'Only these give points of a curve; a stride says the same in plain words.',
    );
  return clusterFraction;
}

/**
 * @param {TraceOptions} options
 * @param {Readonly<import('./modes.js').Mode>} mode
 * @returns {Direction}
 */
function directionOf({ direction }, { kind }) {
  const all = DIRECTIONS[kind] ?? ['up'];
  if (direction === undefined) return all[0];
  if (!Object.hasOwn(OPPOSITE, direction) || !all.includes(direction))
    refuse('direction', `one of ${all.join(', ')}`, direction);
  return direction;
}

/**
 * @param {Axes | AxesDescription | undefined} axes
 * @returns {Axes | null}
 */
function axesOf(axes) {
  if (axes === undefined || axes === null) return null;
  return 'toValue' in axes ? axes : makeAxes(axes);
}
