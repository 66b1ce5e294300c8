import assert from 'node:assert/strict';
import { test } from 'node:test';
import { trace } from '../../lib/tracing/native.js';
import { traceChart } from '../../lib/tracing/series.js';
import { tracePixels } from '../../lib/tracing/tracing.js';
import { withoutNeedless } from '../../lib/tracing/kinds.js';
import { facing } from '../../lib/tracing/mirror.js';
import { splitResult } from '../../lib/tracing/modes.js';
import { canvas, paint } from './support/drawing.js';
import { randomNumbers } from './support/random.js';

/** @typedef {import('../../lib/axes/axes.js').Pair} Pair */

/**
 * The pixels of a picture that is drawn with letters, in raster order: whatever is no dot.
 * @param {string[]} rows
 */
function drawn(...rows) {
  const points = rows.flatMap((row, y) =>
    [...row].flatMap((letter, x) => (letter === '.' ? [] : [{ x, y }])),
  );
  return {
    x: Float64Array.from(points, ({ x }) => x),
    y: Float64Array.from(points, ({ y }) => y),
  };
}

/**
 * Filled rectangles, in raster order.
 * @param {[left: number, top: number, right: number, bottom: number][]} boxes Edges included.
 */
function filled(...boxes) {
  /** @type {Pair[]} */
  const points = [];
  for (const [left, top, right, bottom] of boxes)
    for (let y = top; y <= bottom; ++y) for (let x = left; x <= right; ++x) points.push([x, y]);
  points.sort((a, b) => a[1] - b[1] || a[0] - b[0]);
  return { x: Float64Array.from(points, ([x]) => x), y: Float64Array.from(points, ([, y]) => y) };
}

/** @type {import('../../lib/axes/axes.js').AxesDescription} */
const axes = {
  x: { scale: 'linear', pixel: [0, 10], value: [0, 1] },
  y: { scale: 'linear', pixel: [20, 0], value: [0, 10] },
};

test('markers are given in pixels and in values', () => {
  const points = filled([0, 0, 2, 2], [10, 8, 12, 10]);
  const series = traceChart(points, { kind: 'scatter', axes });
  assert.deepEqual(series, {
    color: null,
    kind: 'scatter',
    mode: 'points-fission',
    selected: 18,
    pixels: [
      [1, 1],
      [11, 9],
    ],
    values: [
      [0.1, 9.5],
      [1.1, 5.5],
    ],
    notes: [],
  });
  assert.equal(traceChart(points, { kind: 'scatter' }).values, null);
});

test('kind and grouping choose the mode, or the mode is given', () => {
  const points = filled([0, 0, 2, 2], [10, 8, 12, 10]);
  /** @type {[any, string][]} */
  const modes = [
    [{ kind: 'scatter' }, 'points-fission'],
    [{ kind: 'scatter', grouping: 'horizontal' }, 'points-horizontal'],
    [{ kind: 'scatter', grouping: 'clusters' }, 'point_density'],
    [{ kind: 'curve' }, 'curves-fission'],
    [{ kind: 'curve', grouping: 'horizontal' }, 'curves-horizontal'],
    [{ kind: 'points+curve' }, 'points_curves-fission'],
    [{ kind: 'points+curve', grouping: 'horizontal' }, 'points_curves-horizontal'],
    [{ kind: 'bars' }, 'bar_vertical-fission'],
    [{ kind: 'bars', grouping: 'horizontal' }, 'bar_vertical-horizontal'],
    [{ kind: 'hbars' }, 'bar_horizontal-fission'],
    [{ kind: 'hbars', grouping: 'horizontal' }, 'bar_horizontal-horizontal'],
    [{ kind: 'histogram' }, 'histogram'],
    [{ kind: 'steps' }, 'step_size_graph'],
  ];
  for (const [options, mode] of modes) {
    const series = traceChart(points, options);
    assert.equal(series.mode, mode);
    assert.equal(series.kind, options.kind);
    const byMode = traceChart(points, { mode });
    assert.deepEqual([byMode.mode, byMode.kind], [mode, options.kind]);
  }
});

test('a stride thins a curve', () => {
  // A long slope: one group, drawn out.
  const points = { x: [], y: [] };
  for (let i = 0; i < 640; ++i) {
    points.x.push(2 * Math.floor(i / 2) + (i % 2));
    points.y.push(Math.floor(i / 2));
  }
  const all = traceChart(points, { kind: 'curve' }).pixels;
  assert.ok(all.length > 16);
  for (const stride of /** @type {const} */ ([1, 2, 4, 8, 16])) {
    const { pixels } = traceChart(points, { kind: 'curve', stride });
    const fraction = { 1: 0.05, 2: 0.051, 4: 0.052, 8: 0.053, 16: 0.055 }[stride];
    const flat = trace(points.x, points.y, 640, 1, 'curves-fission', fraction);
    const { x, y } = splitResult('curves-fission', flat);
    assert.deepEqual(
      pixels,
      x.map((value, i) => [value, y[i]]),
      `stride ${stride}`,
    );
    assert.ok(Math.abs(pixels.length - all.length / stride) <= 2, `${pixels.length}`);
  }
  const coded = traceChart(points, { kind: 'curve', clusterFraction: 0.054 });
  assert.deepEqual(coded.pixels, traceChart(points, { kind: 'curve', stride: 8 }).pixels);
});

test('of markers on a curve it is told how many are markers', () => {
  const points = filled([0, 0, 4, 4], [20, 0, 24, 4], [40, 0, 44, 4], [0, 12, 60, 13]);
  const series = traceChart(points, { kind: 'points+curve' });
  assert.equal(series.markers, 3);
  assert.deepEqual(series.pixels.slice(0, 3), [
    [2, 2],
    [22, 2],
    [42, 2],
  ]);
  assert.ok(series.pixels.slice(3).every(([, y]) => y >= 12));
});

test('bars end at the outer edge of their last pixels; in a mode, at the centres of these', () => {
  const points = filled([10, 12, 13, 19], [2, 5, 5, 19]);
  assert.deepEqual(traceChart(points, { kind: 'bars', axes }).values, [
    [0.35, 7.75],
    [1.15, 4.25],
  ]);
  assert.deepEqual(traceChart(points, { kind: 'bars', ends: 'centre' }).pixels, [
    [3.5, 5],
    [11.5, 12],
  ]);
  const raw = traceChart(points, { mode: 'bar_vertical-fission' }).pixels;
  assert.deepEqual(raw, traceChart(points, { kind: 'bars', ends: 'centre' }).pixels);
  const fine = { x: points.x.map((v) => v / 2), y: points.y.map((v) => v / 2) };
  assert.deepEqual(traceChart(fine, { kind: 'bars', pixelStep: 0.5 }).pixels[0], [1.75, 2.25]);
});

test('bars grow in four directions and have other ends', () => {
  const points = filled([1, 3, 4, 9], [7, 3, 9, 6]);
  /** @type {[any, Pair[], Pair[]][]} */
  const cases = [
    [{ kind: 'bars', direction: 'up' }, [[2.5, 2.5], [8, 2.5]], [[2.5, 9.5], [8, 6.5]]],
    [{ kind: 'bars', direction: 'down' }, [[2.5, 9.5], [8, 6.5]], [[2.5, 2.5], [8, 2.5]]],
    [{ kind: 'hbars', direction: 'right' }, [[9.5, 4.5], [4.5, 6]], [[6.5, 4.5], [0.5, 6]]],
    [{ kind: 'hbars', direction: 'left' }, [[6.5, 4.5], [0.5, 6]], [[9.5, 4.5], [4.5, 6]]],
  ]; // prettier-ignore
  for (const [options, ends, others] of cases)
    for (const grouping of /** @type {const} */ (['fission', 'horizontal'])) {
      const series = traceChart(points, { ...options, grouping, otherEnds: true, axes });
      assert.deepEqual(series.pixels, ends, `${options.direction} ${grouping}`);
      assert.deepEqual(
        series.bars?.map(({ pixels }) => [pixels.end, pixels.otherEnd]),
        ends.map((end, i) => [end, others[i]]),
      );
      const [bar] = series.bars ?? [];
      assert.deepEqual(bar.values?.end, series.values?.[0]);
      assert.equal(bar.values?.otherEnd?.[0], others[0][0] / 10);
      assert.equal(traceChart(points, { ...options, grouping }).bars, undefined);
    }
});

test('a mirrored point set is in raster order, and the mirror of the mirror is what it was', () => {
  const points = drawn('.x.x', 'xxx.', '....', '...x');
  for (const direction of /** @type {const} */ (['down', 'left'])) {
    const mirrored = facing(points, direction);
    for (let i = 1; i < mirrored.x.length; ++i) {
      const below = mirrored.y[i] - mirrored.y[i - 1];
      assert.ok(below > 0 || (below === 0 && mirrored.x[i] > mirrored.x[i - 1]), direction);
    }
    assert.ok(![...mirrored.x, ...mirrored.y].some((value) => Object.is(value, -0)));
    assert.deepEqual(facing(mirrored, direction), points);
  }
  assert.equal(facing(points, 'up'), points);
});

test('bars that are other bars upside down have no other ends, and a note says so', () => {
  // One bar and two; then two and two others.
  for (const rows of [
    ['xxxx', 'x.xx'],
    ['x.x.', '.x.x'],
  ]) {
    const options = /** @type {const} */ ({ kind: 'bars', grouping: 'horizontal' });
    const series = traceChart(drawn(...rows), { ...options, otherEnds: true });
    assert.deepEqual(series.notes, [
      'the other ends of the bars left out: seen from there, the pixels form other bars',
    ]);
    const bars = series.pixels.map((end) => ({ pixels: { end, otherEnd: null }, values: null }));
    assert.deepEqual(series.bars, bars);
  }
});

test('the bins of a histogram have borders', () => {
  const points = filled([3, 10, 5, 19], [6, 4, 9, 19], [10, 15, 11, 19]);
  const { pixels, values, bins, notes } = traceChart(points, { kind: 'histogram', axes });
  assert.deepEqual(pixels, [
    [4, 9.5],
    [7.5, 3.5],
    [10.5, 14.5],
  ]);
  assert.deepEqual(
    bins?.map((bin) => bin.pixels),
    [
      { left: 2.5, right: 5.5, top: 9.5 },
      { left: 5.5, right: 9.5, top: 3.5 },
      { left: 9.5, right: 11.5, top: 14.5 },
    ],
  );
  assert.deepEqual(values?.[1], [0.75, 8.25]);
  assert.deepEqual(bins?.[1].values, { left: 0.55, right: 0.95, top: 8.25 });
  assert.deepEqual(notes, []);
});

test('the bins of random histograms have the borders they were drawn with', () => {
  for (let seed = 1; seed <= 300; ++seed) {
    let state = seed;
    const random = (/** @type {number} */ below) => {
      state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
      return Math.floor((state / 2 ** 32) * below);
    };
    /** @type {[number, number, number, number][]} */
    const boxes = [];
    let left = random(9);
    let top = 50;
    for (let i = 0; i < 6; ++i) {
      const width = 2 + random(6);
      top = 10 + ((top - 10 + 20 + random(40)) % 80);
      boxes.push([left, top, left + width - 1, 99]);
      left += width + (random(4) === 0 ? 3 : 0);
    }
    const direction = /** @type {const} */ (['up', 'down'])[seed % 2];
    const points = facing(filled(...boxes), direction);
    const { bins } = traceChart(points, { kind: 'histogram', direction });
    const sign = direction === 'up' ? 1 : -1;
    assert.deepEqual(
      bins?.map((bin) => bin.pixels),
      boxes.map(([first, row, last]) => ({
        left: first - 0.5,
        right: last + 0.5,
        top: sign * (row - 0.5),
      })),
      `seed ${seed}`,
    );
  }
});

test('a gap inside a bar of a histogram is noted', () => {
  const { notes } = traceChart(filled([0, 5, 4, 9], [8, 5, 12, 9], [13, 2, 15, 9]), {
    kind: 'histogram',
  });
  assert.deepEqual(notes, [
    'no pixels between x = 4 and 8: neighbouring bars of one height come out as one',
  ]);
  const apart = traceChart(filled([0, 5, 4, 9], [8, 3, 12, 9]), { kind: 'histogram' });
  assert.deepEqual(apart.notes, []);
  assert.equal(apart.bins?.length, 2);
});

/**
 * A step line one pixel thick, given by its corners.
 * @param {...Pair} corners
 */
function line(...corners) {
  /** @type {Map<string, Pair>} */
  const points = new Map();
  for (const [i, [toX, toY]] of corners.slice(1).entries()) {
    const [x, y] = corners[i];
    const length = Math.max(Math.abs(toX - x), Math.abs(toY - y));
    for (let k = 0; k <= length; ++k) {
      /** @type {Pair} */
      const at = [x + Math.sign(toX - x) * k, y + Math.sign(toY - y) * k];
      points.set(String(at), at);
    }
  }
  const sorted = [...points.values()].sort((a, b) => a[1] - b[1] || a[0] - b[0]);
  return { x: Float64Array.from(sorted, ([x]) => x), y: Float64Array.from(sorted, ([, y]) => y) };
}

test('a step line is a polyline with both ends, wherever its risers point', () => {
  /** @type {Pair[]} */
  const middle = [
    [10, 30],
    [20, 30],
    [20, 10],
    [40, 10],
  ];
  const near = (
    /** @type {Pair[]} */ got,
    /** @type {Pair[]} */ want,
    /** @type {string} */ name,
  ) => {
    assert.equal(got.length, want.length, `${name}: ${got.join(' ')}`);
    for (const [i, [x, y]] of want.entries()) {
      assert.ok(Math.abs(got[i][0] - x) <= 1, `${name}: ${got.join(' ')}`);
      assert.equal(got[i][1], y, `${name}: ${got.join(' ')}`);
    }
  };
  for (const start of /** @type {Pair[][]} */ ([[], [[10, 50]], [[10, 2]]]))
    for (const end of /** @type {Pair[][]} */ ([[], [[40, 45]], [[40, -9]]])) {
      const corners = [...start, ...middle, ...end];
      const { pixels } = traceChart(line(...corners), { kind: 'steps' });
      near(pixels, corners, corners.join(' '));
    }
});

test('a step line that ends in a riser with a soft flank ends at the riser, up or down', () => {
  const thick = (/** @type {number} */ far, /** @type {number} */ flank) => {
    const [top, bottom] = [Math.min(10, far), Math.max(10, far)];
    return filled(
      [0, 30, 19, 30],
      [20, 10, 20, 30],
      [21, 10, 39, 10],
      [40, top, 40, bottom],
      [41, flank, 41, flank],
    );
  };
  assert.deepEqual(traceChart(thick(2, 5), { kind: 'steps' }).pixels.slice(-2), [
    [40.5, 10],
    [40.5, 2],
  ]);
  assert.deepEqual(traceChart(thick(45, 40), { kind: 'steps' }).pixels.slice(-2), [
    [40.5, 10],
    [40.5, 45],
  ]);
});

test('a polyline keeps nothing but its corners and ends', () => {
  /** @type {Pair[]} */
  const vertices = [
    [0, 5],
    [0, 5],
    [3, 5],
    [9, 5],
    [9, 6],
    [9, 7],
    [9, 2],
    [12, 2],
    [12, 2],
    [14, 2],
  ];
  assert.deepEqual(withoutNeedless(vertices), [
    [0, 5],
    [9, 5],
    [9, 7],
    [9, 2],
    [14, 2],
  ]);
  assert.deepEqual(withoutNeedless([]), []);
});

test('of a step line the core is traced where it has one in every column, else its edges too', () => {
  const selected = (/** @type {(x: number, y: number) => number} */ coverage, kind = 'steps') => {
    const drawing = canvas(60, 40);
    paint(drawing, '#d62728', (x, y) => (x >= 5 && x < 55 ? coverage(x, y) : 0));
    return traceChart(drawing, /** @type {any} */ ({ kind, colour: '#d62728' })).selected;
  };
  const soft = (/** @type {number} */ x, /** @type {number} */ y) =>
    y === 20 || y === 21 ? 1 : y === 19 || y === 22 ? 0.65 : 0;
  assert.equal(selected(soft), 50 * 2);
  assert.equal(selected(soft, 'curve'), 50 * 4);
  // In two columns of fifty there are but edges.
  const thin = (/** @type {number} */ x, /** @type {number} */ y) =>
    y === 20 ? (x < 53 ? 1 : 0.65) : y === 19 ? 0.65 : 0;
  assert.equal(selected(thin), 50 * 2);
});

test('a step line with a gap gives no NaN, and a note', () => {
  const { x, y } = line([0, 30], [20, 30], [20, 10], [40, 10], [40, 20]);
  const keep = [...x.keys()].filter((i) => x[i] < 27 || x[i] > 30);
  const points = { x: keep.map((i) => x[i]), y: keep.map((i) => y[i]) };
  const { pixels, notes } = traceChart(points, { kind: 'steps' });
  assert.ok(pixels.flat().every(Number.isFinite));
  assert.match(notes.join(), /no pixels between x = 26 and 31: a line with a gap/);
  // The last column before the riser is empty, and its mean no number.
  const beside = filled([0, 9, 6, 9], [9, 1, 9, 9]);
  assert.ok(tracePixels(beside, 'step_size_graph').x.includes(NaN));
  const series = traceChart(beside, { kind: 'steps', axes });
  assert.deepEqual(series.pixels, [[0.5, 9]]);
  assert.equal(series.values?.length, 1);
  assert.match(series.notes.join(), /1 of 2 vertices left out: they lie in the gap/);
});

test('clusters without a radius are left out, and a note says why', () => {
  const { pixels, notes } = traceChart(
    { x: [4], y: [4] },
    { kind: 'scatter', grouping: 'clusters' },
  );
  assert.deepEqual(pixels, []);
  assert.match(notes.join('\n'), /^nothing found: 1 pixels given/);
  assert.match(notes.join('\n'), /1 of 1 points left out: the cluster radius/);
});

/**
 * A picture of letters: `#` red, anything else white.
 * @param {string[]} rows
 */
function picture(...rows) {
  const [width, height] = [rows[0].length, rows.length];
  const data = new Uint8Array(4 * width * height).fill(255);
  for (const [i, letter] of [...rows.join('')].entries())
    if (letter === '#') data.set([255, 0, 0], 4 * i);
  return { width, height, data };
}

test('of a picture the pixels of a colour are traced, inside a box', () => {
  const source = picture('##...##', '##...##', '.......');
  assert.deepEqual(traceChart(source, { kind: 'scatter', colour: 'red' }).pixels, [
    [0.5, 0.5],
    [5.5, 0.5],
  ]);
  const box = { left: 3, top: 0, right: 6, bottom: 2 };
  const { pixels, color } = traceChart(source, { kind: 'scatter', colour: '#f00', box });
  assert.deepEqual([pixels, color], [[[5.5, 0.5]], '#ff0000']);
});

test('where nothing is found it is said what was tried', () => {
  const source = picture('##########', '##########', '..........', '##########', '##########');
  const scatter = traceChart(source, { kind: 'scatter', colour: 'red', tolerance: 3 });
  assert.deepEqual([scatter.pixels, scatter.values], [[], null]);
  assert.match(scatter.notes[0], /^nothing found: 40 pixels of #ff0000 within tolerance 3/);
  assert.match(
    scatter.notes[0],
    /in 2 groups \(fission\), mode points-fission: none .* kind curve/,
  );
  const other = traceChart(source, { kind: 'steps', colour: 'blue', axes });
  assert.match(other.notes[0], /^nothing found: 0 pixels of #0000ff .*; look at the colour/);
  assert.deepEqual(other.values, []);
  const block = picture('##', '##');
  const flat = traceChart(block, { kind: 'steps', colour: 'red' });
  assert.match(flat.notes[0], /mode step_size_graph: they have no level stretch beside an upright/);
});

test('a value that is missing is noted, and so is a reference that is off', () => {
  const points = filled([0, 0, 2, 9], [10, 5, 12, 9], [30, 5, 32, 9]);
  /** @type {any} */
  const own = {
    x: { scale: 'category', pixel: [1, 11], value: ['a', 'b'] },
    y: { scale: 'linear', pixel: [10, 0, 5], value: [0, 10, 9] },
  };
  const { values, notes } = traceChart(points, { kind: 'bars', axes: own });
  assert.deepEqual(
    values?.map(([x]) => x),
    ['a', 'b', null],
  );
  assert.match(notes.join('\n'), /y axis, reference 3 \(5=9\) lies 2\.\d px off the axes/);
  assert.match(notes.join('\n'), /1 of 3 points have no value of x/);
  const one = { x: own.x };
  const same = traceChart(filled([0, 0, 1, 9], [3, 0, 4, 9]), { kind: 'bars', axes: one });
  assert.match(same.notes.join('\n'), /more than one bar falls on a:/);
  assert.match(same.notes.join('\n'), /2 of 2 points have no value of y/);
});

test('wrong arguments are refused before any work', () => {
  const points = filled([0, 0, 2, 2]);
  const source = picture('##', '##');
  /** @type {[any, any, RegExp, string?][]} */
  const bad = [
    [points, undefined, /the options to be an object/],
    [{ x: [1, -Infinity], y: [1, 1] }, { kind: 'curve' }, /x\[1\] of the points to be a finite/],
    [
      points,
      { kind: 'scatter', grouping: 'clusters', clusterFraction: 1.01 },
      /clusterFraction to be a number above 0, at most 1/,
    ],
    [{ x: [], y: [] }, { kind: 'curve', pixelStep: 0 }, /pixelStep to be a number above 0/],
    [points, {}, /kind to be one of .*scatter.*, but received undefined/],
    [points, { kind: 'pie' }, /kind to be one of .* 'pie'/],
    [points, { mode: 'pie' }, /one of the modes .* 'pie'/],
    [points, { kind: 'bars', mode: 'histogram' }, /kind to be left out where a mode/],
    [points, { mode: 'histogram', grouping: 'fission' }, /grouping to be left out where a mode/],
    [points, { kind: 'bars', grouping: 'clusters' }, /grouping to be one of fission, horizontal/],
    [points, { kind: 'histogram', grouping: 'fission' }, /grouping to be one of compartments/],
    [points, { kind: 'curve', stride: 3 }, /stride to be one of 1, 2, 4, 8, 16/],
    [points, { kind: 'curve', stride: 2, clusterFraction: 0.05 }, /left out where a stride/],
    [points, { kind: 'curve', clusterFraction: 0.06 }, /one of 0.05, 0.051/],
    [points, { kind: 'scatter', stride: 2 }, /stride to be left out, since it does not matter/],
    [points, { kind: 'scatter', clusterFraction: 0.1 }, /does not matter to points-fission/],
    [points, { kind: 'scatter', grouping: 'clusters', clusterFraction: 0 }, /above 0, at most 1/],
    [points, { kind: 'scatter', grouping: 'clusters', pixelStep: 1 }, /does not matter/],
    [points, { kind: 'scatter', pixelStep: 0 }, /pixelStep to be a number above 0/],
    [points, { kind: 'scatter', pixelStep: NaN }, /pixelStep to be a number above 0/],
    [points, { kind: 'bars', direction: 'left' }, /direction to be one of up, down/],
    [points, { kind: 'hbars', direction: 'toString' }, /direction to be one of right, left/],
    [points, { kind: 'scatter', direction: 'up' }, /does not matter/],
    [points, { kind: 'bars', otherEnds: 1 }, /otherEnds to be true or false/],
    [points, { kind: 'bars', ends: 'middle' }, /ends to be 'edge' or 'centre'/],
    [points, { kind: 'bars', color: 'red' }, /every option to be one of colour, .* 'color'/],
    [points, { kind: 'bars', colour: 'red' }, /colour to be left out where points/],
    [points, { kind: 'bars', axes: { x: { scale: 'log' } } }, /x axis: .*references/, 'ERR_AXIS'],
    [null, { kind: 'bars' }, /the source to be a picture, or points/],
    [{ x: [1], y: [1, 2] }, { kind: 'bars' }, /y to be as long as x, 1 numbers/],
    [{ x: [1] }, { kind: 'bars' }, /the points' y to be an array/],
    [{ x: [1, NaN], y: [1, 2] }, { kind: 'bars' }, /x\[1\] of the points to be a finite number/],
    [source, { kind: 'bars' }, /colour to be the colour of the series/],
    [source, { kind: 'bars', colour: 'redish' }, /a CSS colour/, 'ERR_COLOUR'],
    [{ ...source, width: 3 }, { kind: 'bars', colour: 'red' }, /3 x 2 .*16 bytes/, 'ERR_PICTURE'],
    [{ ...source, width: 0 }, { kind: 'bars', colour: 'red' }, /0 x 2/, 'ERR_PICTURE'],
  ];
  for (const [given, options, message, code = 'ERR_ARGUMENT'] of bad)
    assert.throws(() => traceChart(given, options), { name: 'ChartTraceError', code, message });
});

test('of pixels alone the mode and the numbers are checked too', () => {
  const none = { x: [], y: [] };
  const refused = (/** @type {any} */ options, mode = 'curves-fission') =>
    assert.throws(() => tracePixels(none, mode, options), { code: 'ERR_ARGUMENT' });
  for (const number of [NaN, Infinity, '1', null]) {
    refused({ pixelStep: number });
    refused({ clusterFraction: number });
  }
  refused({ pixelStep: 0 });
  refused({ pixelStep: -1 });
  refused({}, 'curves');
  assert.deepEqual(tracePixels(none, 'curves-fission'), none);
});

test('what would be too much is a RangeError, at once', () => {
  const limit = { name: 'LimitError', code: 'ERR_LIMIT' };
  const far = { x: [0, 10_000_001], y: [0, 0] };
  for (const mode of ['histogram', 'step_size_graph']) {
    assert.throws(() => traceChart(far, { mode }), limit);
    assert.throws(() => tracePixels(far, mode), RangeError);
    assert.throws(() => tracePixels({ x: [0, 1], y: [0, 0] }, mode, { pixelStep: 1e-8 }), limit);
    // A step that does not move a border would never reach the other end.
    assert.throws(() => tracePixels({ x: [2 ** 60, 2 ** 60 + 256], y: [0, 0] }, mode), limit);
  }
  assert.equal(tracePixels({ x: [0, 9_999_999], y: [0, 0] }, 'histogram').x.length, 1);
  assert.equal(tracePixels({ x: [2 ** 60], y: [0] }, 'histogram').x.length, 1);
  const many = { length: 100_000_001 };
  assert.throws(() => tracePixels({ x: many, y: many }, 'curves-fission'), limit);
  const huge = { width: 20_000, height: 20_000, data: new Uint8Array(4) };
  assert.throws(() => traceChart(huge, { kind: 'bars', colour: 'red' }), limit);
});

test('whatever the points, positions are numbers, as many as values, and what is left out is noted', () => {
  const random = randomNumbers(11);
  const below = (/** @type {number} */ n) => Math.floor(random() * n);
  const kinds = /** @type {const} */ ([
    'scatter',
    'curve',
    'points+curve',
    'bars',
    'hbars',
    'histogram',
    'steps',
  ]);
  for (let i = 0; i < 3000; ++i) {
    const [width, height] = [1 + below(12), 1 + below(8)];
    const share = random();
    const rows = Array.from({ length: height }, () =>
      Array.from({ length: width }, () => (random() < share ? 'x' : '.')).join(''),
    );
    const { x, y } = drawn(...rows);
    const step = [1, 0.25, 0.1][below(3)];
    const [dx, dy] = [below(3) - 1, below(3) - 1].map((sign) => sign * below(12));
    const points = { x: x.map((v) => (v + dx) * step), y: y.map((v) => (v + dy) * step) };
    const kind = kinds[i % kinds.length];
    const series = traceChart(points, {
      kind,
      axes,
      pixelStep: step,
      ...((kind === 'bars' || kind === 'hbars') && { otherEnds: true }),
    });
    const shown = JSON.stringify({ rows, kind, step, dx, dy, series });
    assert.ok(series.pixels.flat().every(Number.isFinite), shown);
    assert.ok(series.values?.flat().every(Number.isFinite), shown);
    assert.equal(series.values?.length, series.pixels.length, shown);
    assert.equal(/^nothing found/.test(series.notes[0] ?? ''), series.pixels.length === 0, shown);
    if (series.bars) assert.equal(series.bars.length, series.pixels.length, shown);
    if (series.bins)
      assert.ok(
        series.bins.every(({ pixels }) => pixels.left < pixels.right),
        shown,
      );
    if (kind !== 'steps') continue;
    for (const [k, [toX, toY]] of series.pixels.slice(1).entries()) {
      const [fromX, fromY] = series.pixels[k];
      assert.ok(fromX !== toX || fromY !== toY, shown);
    }
  }
});
