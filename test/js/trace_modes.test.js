// All thirteen modes, on one picture whose result in each mode is worked out by hand.

import assert from 'node:assert/strict';
import test from 'node:test';

import { trace } from './support/addon.js';

// A line two pixels thick, in raster order, and below it a row of four pixels from right to left,
// which horizontal grouping takes in pairs and fission takes whole.
const x = [0, 1, 2, 3, 4, 0, 1, 2, 3, 4, 4, 3, 2, 1];
const y = [2, 2, 2, 2, 2, 3, 3, 3, 3, 3, 20, 20, 20, 20];

// A curve is walked from its first pixel to the nearest one left, the earlier of two that are
// equally near; the grouping methods list the pixels of the line in different orders.
const walkFission = { x: [0, 1, 1, 0, 2, 2, 3, 3, 4, 4], y: [2, 2, 3, 3, 3, 2, 2, 3, 3, 2] };
const walkHorizontal = { x: [0, 1, 2, 3, 4, 4, 3, 2, 1, 0], y: [2, 2, 2, 2, 2, 3, 3, 3, 3, 3] };

const expected = {
  // The nearest pixel is one step away: the radius is 1, and strictly nearer is only each pixel
  // itself.
  point_density: { x, y },
  'points_curves-fission': { x: [2.5, ...walkFission.x], y: [20, ...walkFission.y] },
  'points_curves-horizontal': {
    x: [3.5, 1.5, ...walkHorizontal.x],
    y: [20, 20, ...walkHorizontal.y],
  },
  'points-horizontal': { x: [3.5, 1.5], y: [20, 20] },
  'points-fission': { x: [2.5], y: [20] },
  'curves-horizontal': walkHorizontal,
  'curves-fission': walkFission,
  'bar_horizontal-fission': { x: [4, 4], y: [2.5, 20] },
  'bar_vertical-fission': { x: [2, 2.5], y: [2, 20] },
  'bar_horizontal-horizontal': { x: [4, 4, 2], y: [2.5, 20, 20] },
  'bar_vertical-horizontal': { x: [2, 3.5, 1.5], y: [2, 20, 20] },
  // Every column reaches up to row 2: one bar.
  histogram: { x: [2], y: [2] },
  // Columns 0 and 1 share a compartment of 5 pixels, a riser; the others hold 3, a tread. The
  // riser stands left of the tread: one more y than x.
  step_size_graph: { x: [1, 4], y: [20, 25 / 3, 2] },
};

for (const [mode, { x: traced_x, y: traced_y }] of Object.entries(expected)) {
  test(`mode ${mode} returns its x values, then its y values`, () => {
    assert.deepEqual(trace(x, y, x.length, 1, mode, 0.05), [...traced_x, ...traced_y]);
  });

  test(`mode ${mode} of no pixels returns an empty array`, () => {
    assert.deepEqual(trace([], [], 0, 1, mode, 0.05), []);
  });
}

const unknown = [
  'Histogram',
  'HISTOGRAM',
  'histogram ',
  ' histogram',
  'histogram\0',
  'histo',
  'histogram-fission',
  'point_density ',
  'points',
  'points-',
  'points-Fission',
  'points-fission-horizontal',
  'points_curves',
  'bar-fission',
  'bar_vertical',
  'fission',
  'no-such-mode',
  '',
  '\0',
  'hist\u00f6gram',
  '\ud800',
  'histogram'.repeat(100_000),
];
for (const mode of unknown) {
  const name = mode.length > 40 ? `${mode.slice(0, 20)}... (${mode.length})` : mode;
  test(`mode ${JSON.stringify(name)} is unknown, which gives an empty array`, () => {
    assert.deepEqual(trace(x, y, x.length, 1, mode, 0.05), []);
  });
}

const coerced = [
  ['a list of one text', ['histogram']],
  ['a String object', new String('histogram')],
  ['an object with toString()', { toString: () => 'histogram' }],
  [
    'an object with Symbol.toPrimitive',
    { [Symbol.toPrimitive]: (hint) => `hist${hint && 'ogram'}` },
  ],
  [
    'an object with valueOf() only after toString() gave an object',
    {
      toString: () => ({}),
      valueOf: () => 'histogram',
    },
  ],
];
for (const [name, mode] of coerced) {
  test(`${name} is taken as the mode it reads as`, () => {
    assert.deepEqual(trace(x, y, x.length, 1, mode, 0.05), [2, 2]);
  });
}

for (const mode of [5, NaN, -0, undefined, null, true, {}, [], 5n, () => 5, new Date(0), /x/]) {
  test(`mode ${String(mode)} (${typeof mode}) is coerced to a text that names no mode`, () => {
    assert.deepEqual(trace(x, y, x.length, 1, mode, 0.05), []);
  });
}

test('a mode object is asked for a string, once', () => {
  const hints = [];
  const mode = { [Symbol.toPrimitive]: (hint) => (hints.push(hint), 'histogram') };
  trace(x, y, x.length, 1, mode, 0.05);
  assert.deepEqual(hints, ['string']);
});

test('the pixel step has no effect in mode point_density', () => {
  for (const step of [0, -1, NaN, Infinity, 1e-300])
    assert.deepEqual(trace(x, y, x.length, step, 'point_density', 0.05), [...x, ...y]);
});

for (const mode of Object.keys(expected).filter((name) => /^(bar|hist|step)/.test(name))) {
  test(`the cluster fraction has no effect in mode ${mode}`, () => {
    const { x: traced_x, y: traced_y } = expected[mode];
    for (const fraction of [0, -1, 2, NaN, Infinity])
      assert.deepEqual(trace(x, y, x.length, 1, mode, fraction), [...traced_x, ...traced_y]);
  });
}
