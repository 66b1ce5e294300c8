import assert from 'node:assert/strict';
import { test } from 'node:test';
import { findMode, MODES, splitResult } from '../../lib/tracing/modes.js';
import { trace } from '../../lib/tracing/native.js';
import { tracePixels } from '../../lib/tracing/tracing.js';
import { randomNumbers } from './support/random.js';

test('the table lists thirteen different modes', () => {
  assert.equal(new Set(MODES.map(({ mode }) => mode)).size, 13);
});

test('every mode of the table is one that trace knows', () => {
  // A block and, right of it, a line two pixels thick whose end rises: markers, curve, bars, tops
  // and steps all have something to find.
  const x = [];
  const y = [];
  for (let row = 0; row < 12; ++row) {
    for (let column = 0; column < 40; ++column) {
      const block = column < 4 && row < 4;
      const line = column >= 10 && row >= 10;
      const riser = column === 30 && row >= 3;
      if (block || line || riser) {
        x.push(column);
        y.push(row);
      }
    }
  }
  for (const { mode } of MODES)
    assert.notEqual(trace(x, y, x.length, 1, mode, 0.05).length, 0, mode);
  assert.equal(trace(x, y, x.length, 1, 'points', 0.05).length, 0);
});

test('a mode that does not exist is refused with the ones that do', () => {
  assert.throws(
    () => findMode('Histogram'),
    /histogram, step_size_graph, but received 'Histogram'/,
  );
});

test('pairs are split in the middle', () => {
  assert.deepEqual(splitResult('points-fission', [1, 2, 3, 4]), { x: [1, 2], y: [3, 4] });
  assert.deepEqual(splitResult('histogram', []), { x: [], y: [] });
  assert.deepEqual(splitResult('histogram', [5, NaN]), { x: [5], y: [NaN] });
});

test('an odd number of values is no list of pairs', () => {
  assert.throws(() => splitResult('curves-fission', [1, 2, 3]), RangeError);
});

/**
 * A step line, as pixels in raster order: vertical strokes and horizontal ones.
 * @param {{column: number, from: number, to: number}[]} strokes
 */
function pixelsOf(strokes) {
  const points = strokes.flatMap(({ column, from, to }) =>
    Array.from({ length: to - from + 1 }, (_, i) => [column, from + i]),
  );
  points.sort(([ax, ay], [bx, by]) => ay - by || ax - bx);
  return {
    x: Float64Array.from(points, ([x]) => x),
    y: Float64Array.from(points, ([, y]) => y),
  };
}

/**
 * A tread that is one pixel high.
 * @param {number} left
 * @param {number} right
 * @param {number} row
 */
const tread = (left, right, row) =>
  Array.from({ length: right - left + 1 }, (_, i) => ({ column: left + i, from: row, to: row }));

/** The first compartment takes the columns 0 and 1, so the first tread starts at their mean. */
const twoTreads = [...tread(0, 9, 30), { column: 10, from: 10, to: 30 }, ...tread(11, 30, 10)];
const thenDown = [...twoTreads, { column: 31, from: 10, to: 40 }];
const thenUp = [...twoTreads, { column: 31, from: 2, to: 10 }];

/**
 * Moves a set of points.
 * @param {{x: Float64Array, y: Float64Array}} points
 * @param {number} dx
 * @param {number} dy
 */
const moved = ({ x, y }, dx, dy) => ({ x: x.map((v) => v + dx), y: y.map((v) => v + dy) });

/** @param {{x: Float64Array, y: Float64Array}} pixels */
const flatResult = ({ x, y }) => trace(x, y, x.length, 1, 'step_size_graph', 0.05);

test('an even total of a step line has as many x as y', () => {
  // The last riser goes down, away from the last tread: its far end is its largest y.
  const { x, y } = tracePixels(pixelsOf(thenDown), 'step_size_graph');
  assert.deepEqual(x, [0.5, 10, 10, 30.5, 30.5]);
  assert.deepEqual(y, [30, 30, 10, 10, 40]);
});

test('a last tread after the last riser leaves one y more, and needs no second look', () => {
  const flat = flatResult(moved(pixelsOf(twoTreads), 0, 1));
  const { x, y } = splitResult('step_size_graph', flat);
  assert.deepEqual(x, [0.5, 10, 10, 30]);
  assert.deepEqual(y, [31, 31, 11, 11, 11]);
});

/**
 * Traces a line whose two middle values are the same, and checks that this is so.
 * @param {{x: Float64Array, y: Float64Array}} pixels
 */
function traceUndecided(pixels) {
  const flat = flatResult(pixels);
  const middle = (flat.length - 1) / 2;
  assert.equal(flat[middle - 1], flat[middle], 'the case this test is about');
  assert.throws(() => splitResult('step_size_graph', flat), /needs its third argument/);
  return tracePixels(pixels, 'step_size_graph');
}

test('a last riser that goes up leaves one x more', () => {
  const { x, y } = traceUndecided(pixelsOf(thenUp));
  assert.deepEqual(x, [0.5, 10, 10, 30.5, 30.5]);
  assert.deepEqual(y, [30, 30, 10, 10]);
});

test('one y more is told from one x more where the first y happens to equal the last x', () => {
  const { x, y } = traceUndecided(pixelsOf(twoTreads));
  assert.deepEqual(x, [0.5, 10, 10, 30]);
  assert.deepEqual(y, [30, 30, 10, 10, 10]);
});

test('one x more is told from one y more where all three middle values are equal', () => {
  const { x, y } = traceUndecided(moved(pixelsOf(thenUp), 0, 0.5));
  assert.deepEqual(x, [0.5, 10, 10, 30.5, 30.5]);
  assert.deepEqual(y, [30.5, 30.5, 10.5, 10.5]);
});

/**
 * A staircase of random treads and risers, on a grid of random width, its first y and its last x
 * often the same number.
 * @param {number} seed
 */
function randomStairs(seed) {
  const random = randomNumbers(seed);
  const strokes = [];
  let row = 30 + Math.floor(random() * 40);
  let column = 0;
  const treads = 1 + Math.floor(random() * 3);
  for (let i = 0; i < treads; ++i) {
    const next = row + (random() < 0.5 ? 1 : -1) * (5 + Math.floor(random() * 20));
    const length = 4 + Math.floor(random() * 12);
    strokes.push(...tread(column, column + length - 1, row));
    strokes.push({ column: column + length, from: Math.min(row, next), to: Math.max(row, next) });
    column += length + 1;
    row = next;
  }
  if (random() < 0.4) strokes.push(...tread(column, column + 6, row));
  const { x, y } = pixelsOf(strokes);
  const step = random() < 0.5 ? 1 : random();
  const end = random() < 0.5 ? 0 : x.at(-1) - y[0];
  return { x: x.map((v) => v * step), y: y.map((v) => (v + end + 100) * step), step };
}

test('random staircases: exactly the values that follow y are taken as y', () => {
  const totals = new Map();
  for (let seed = 1; seed <= 2000; ++seed) {
    const { x, y, step } = randomStairs(seed);
    const at = (/** @type {number} */ factor) =>
      trace(
        x,
        y.map((v) => v * factor),
        x.length,
        step,
        'step_size_graph',
        0.05,
      );
    const [flat, doubled] = [at(1), at(2)];
    const firstY = flat.findIndex((value, i) => !Object.is(value, doubled[i]));
    const split = tracePixels({ x, y }, 'step_size_graph', { pixelStep: step });
    const got = [split.x.length, split.y.length];
    assert.deepEqual(got, [firstY, flat.length - firstY], `seed ${seed}`);
    const shape = Math.sign(got[0] - got[1]);
    totals.set(shape, (totals.get(shape) ?? 0) + 1);
  }
  // The three shapes of a result all come up.
  assert.ok(
    [-1, 0, 1].every((shape) => totals.get(shape) > 100),
    `${[...totals]}`,
  );
});

test('both are told apart where the value in question is 0, which doubling does not move', () => {
  const moreY = traceUndecided(moved(pixelsOf(twoTreads), -30, -30));
  assert.deepEqual(moreY.x, [-29.5, -20, -20, 0]);
  assert.deepEqual(moreY.y, [0, 0, -20, -20, -20]);
  const moreX = traceUndecided(moved(pixelsOf(thenUp), -30.5, -30));
  assert.deepEqual(moreX.x, [-30, -20.5, -20.5, 0, 0]);
  assert.deepEqual(moreX.y, [0, 0, -20, -20]);
});

test('an empty compartment before the last riser makes the last x NaN, and y the longer list', () => {
  // The mean of an empty column is NaN, so that no jump splits the treads: there is one step.
  const { x, y } = splitResult(
    'step_size_graph',
    flatResult(pixelsOf([...tread(0, 6, 9), { column: 9, from: 1, to: 9 }])),
  );
  assert.deepEqual(x, [0.5, NaN]);
  assert.deepEqual(y, [9, 9, 1]);
});
