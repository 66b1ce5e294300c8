// The thirteen modes as data, and how to split what each of them returns.

import { ChartTraceError } from '../errors.js';

/**
 * What a chart shows: markers, a line, both in one colour, bars that stand, bars that lie, bars
 * without gaps, or a line of treads and risers.
 * @typedef {'scatter' | 'curve' | 'points+curve' | 'bars' | 'hbars' | 'histogram' | 'steps'} Kind
 */

/**
 * How pixels that belong together are found: by touching on any side or corner, by runs along rows,
 * in columns one pixel step wide, or by distance alone.
 * @typedef {'fission' | 'horizontal' | 'compartments' | 'clusters'} Grouping
 */

/**
 * @typedef {object} Mode
 * @property {string} mode The string that `trace` matches, to the letter.
 * @property {Kind} kind What the picture shows.
 * @property {Grouping} grouping
 * @property {boolean} usesPixelStep Whether the pixel step matters.
 * @property {boolean} usesClusterFraction Whether the cluster fraction matters to the result.
 * @property {string} returns What the result's points are.
 * @property {'halves' | 'steps'} split How the flat result divides into x and y: into halves, or as
 *   `splitResult` says for step lines.
 */

/**
 * @param {string} mode
 * @param {Kind} kind
 * @param {Grouping} grouping
 * @param {string} returns
 * @returns {Readonly<Mode>}
 */
function describe(mode, kind, grouping, returns) {
  return Object.freeze({
    mode,
    kind,
    grouping,
    usesPixelStep: grouping !== 'clusters',
    usesClusterFraction: grouping === 'clusters' || kind === 'curve' || kind === 'points+curve',
    returns,
    split: kind === 'steps' ? 'steps' : 'halves',
  });
}

const centroids = 'the mean position of each cluster of pixels';
const centres = 'the centre of each marker';
const chain = 'the curve as a chain of points, each followed by its nearest neighbour';
const centresAndChain = 'the centres of the markers, then the chain of the curve';
const tops = 'the middle of each bar and its topmost row';
const ends = 'the rightmost column of each bar and its middle';
const bins = 'the middle of each bar and its top, from left to right';
const vertices = 'the vertices of the step line, from left to right';

/** The modes, in the order in which `trace` looks them up. */
export const MODES = Object.freeze([
  describe('point_density', 'scatter', 'clusters', centroids),
  describe('points_curves-fission', 'points+curve', 'fission', centresAndChain),
  describe('points_curves-horizontal', 'points+curve', 'horizontal', centresAndChain),
  describe('points-horizontal', 'scatter', 'horizontal', centres),
  describe('points-fission', 'scatter', 'fission', centres),
  describe('curves-horizontal', 'curve', 'horizontal', chain),
  describe('curves-fission', 'curve', 'fission', chain),
  describe('bar_horizontal-fission', 'hbars', 'fission', ends),
  describe('bar_vertical-fission', 'bars', 'fission', tops),
  describe('bar_horizontal-horizontal', 'hbars', 'horizontal', ends),
  describe('bar_vertical-horizontal', 'bars', 'horizontal', tops),
  describe('histogram', 'histogram', 'compartments', bins),
  describe('step_size_graph', 'steps', 'compartments', vertices),
]);

/**
 * Looks a mode up.
 * @param {string} name
 * @returns {Readonly<Mode>}
 */
export function findMode(name) {
  const found = MODES.find(({ mode }) => mode === name);
  if (found) return found;
  const expected = `one of the modes ${MODES.map(({ mode }) => mode).join(', ')}`;
  const message = `Expected ${expected}, but received '${name}'.`;
  throw new ChartTraceError(message, { code: 'ERR_ARGUMENT', expected, received: name });
}

/**
 * The mode for a kind of chart.
 * @param {Kind} kind
 * @param {Grouping} [grouping] `'fission'` by default, wherever there is a choice.
 * @returns {Readonly<Mode> | undefined} Undefined where the kind has no such grouping.
 */
export function modeOf(kind, grouping) {
  const ofKind = MODES.filter((mode) => mode.kind === kind);
  const usual = ofKind.length === 1 ? ofKind[0].grouping : 'fission';
  return ofKind.find((mode) => mode.grouping === (grouping ?? usual));
}

/**
 * Traces the same points once more with every x, and the pixel step, changed to `x * scale + shift`
 * (the step is scaled only), and gives the flat result.
 * @typedef {(change: {scale: number, shift: number}) => ArrayLike<number>} LookAgain
 */

/**
 * Splits the flat result of `trace` into x and y.
 *
 * Every mode but one returns as many x as y. A step line whose last riser stands beside the end of
 * its last tread has 2R + 1 x and 2R or 2R + 1 y for R treads; otherwise, 2R x and 2R + 1 y. An odd
 * total alone does not say which list is the longer one: see `stepsHaveMoreX`.
 * @param {string} mode
 * @param {ArrayLike<number>} flat
 * @param {LookAgain} [lookAgain] Asked only about a step line that is otherwise undecided; the
 *   points must be finite.
 * @returns {{x: number[], y: number[]}} Of their true lengths.
 */
export function splitResult(mode, flat, lookAgain) {
  const values = Array.from(flat);
  const half = Math.floor(values.length / 2);
  const odd = values.length % 2 === 1;
  if (odd && findMode(mode).split !== 'steps')
    throw new RangeError(`Mode ${mode} returns pairs, but received ${values.length} values.`);
  const countX = odd && stepsHaveMoreX(values, lookAgain) ? half + 1 : half;
  return { x: values.slice(0, countX), y: values.slice(countX) };
}

/**
 * Tells which list of a step line with an odd number of values is the longer one.
 *
 * The longer x list ends in the same value twice, in the two middle places of the flat result. The
 * longer y list puts its first y there, after the last x. The two differ unless that y happens to
 * equal that x. Then a second look tells: with x changed and y left alone, a y stays what it was.
 * @param {number[]} values
 * @param {LookAgain} [lookAgain]
 */
function stepsHaveMoreX(values, lookAgain) {
  const middle = (values.length - 1) / 2;
  const value = values[middle];
  // A NaN is the mean of an empty compartment, which only the last x and a first y can be.
  if (values[middle - 1] !== value) return false;
  if (!lookAgain)
    throw new Error(
      `The last x and the first y of this step line may both be ${value}: ` +
        'splitResult needs its third argument to tell them apart.',
    );
  for (const change of changesThatMove(value)) {
    const again = Array.from(lookAgain(change));
    if (sameHeights(values, again, middle)) return again[middle] !== value;
  }
  throw new Error('The lengths of this step line could not be told apart.');
}

/**
 * Changes of x under which a step line keeps its shape and `value`, if it is an x, moves. Doubling
 * is exact: every sum, mean and comparison comes out the same, whatever the coordinates. It does
 * not move 0; shifts do, and are exact for whole pixels.
 * @param {number} value
 */
function changesThatMove(value) {
  return value !== 0
    ? [{ scale: 2, shift: 0 }]
    : [1, 64, 4096].map((shift) => ({ scale: 1, shift }));
}

/**
 * Whether a second look found the same line: as many values, and the same heights at the end of
 * the list, where only y can be.
 * @param {number[]} values
 * @param {number[]} again
 * @param {number} middle
 */
function sameHeights(values, again, middle) {
  return (
    again.length === values.length &&
    values.every((value, i) => i <= middle || Object.is(value, again[i]))
  );
}
