import assert from 'node:assert/strict';
import { test } from 'node:test';
import { parseColour } from '../../lib/selection/colours.js';
import { contrastingColour, overlaySvg } from '../../lib/overlay.js';
import { decodePicture, encodePng } from '../../lib/pictures.js';

const blue = '#0072b2';
const grey = { width: 41, height: 31, data: new Uint8Array(41 * 31 * 4).fill(255) };
for (let i = 0; i < grey.data.length; ++i) if (i % 4 !== 3) grey.data[i] = 128;

/**
 * Draws over a grey picture and gives a function that reads a pixel of the outcome.
 * @param {{x: number[], y: number[]}} points
 * @param {'crosses' | 'line'} shape
 */
async function drawn(points, shape) {
  const svg = overlaySvg(grey, points, { colour: blue, shape });
  const { width, data } = await decodePicture(await encodePng(grey, svg));
  return (/** @type {number} */ x, /** @type {number} */ y) => [
    ...data.subarray(4 * (y * width + x), 4 * (y * width + x) + 3),
  ];
}

test('a cross stands centred on its point and leaves the middle open', async () => {
  const at = await drawn({ x: [20], y: [15] }, 'crosses');
  for (const reach of [5, 8, 10]) {
    assert.deepEqual(at(20 - reach, 15), parseColour(blue));
    assert.deepEqual(at(20 + reach, 15), parseColour(blue));
    assert.deepEqual(at(20, 15 - reach), parseColour(blue));
    assert.deepEqual(at(20, 15 + reach), parseColour(blue));
  }
  for (const [x, y] of [
    [20, 15],
    [17, 15],
    [20, 18],
    [4, 15],
    [25, 20],
  ])
    assert.deepEqual(at(x, y), [128, 128, 128], `${x}, ${y}`);
});

test('a line runs through the centres of its pixels', async () => {
  const at = await drawn({ x: [5, 35, 35], y: [10, 10, 25] }, 'line');
  assert.deepEqual(at(20, 10), parseColour(blue));
  assert.deepEqual(at(35, 20), parseColour(blue));
  // The edges on either side are equally covered.
  assert.deepEqual(at(20, 9), at(20, 11));
  assert.deepEqual(at(34, 20), at(36, 20));
  assert.deepEqual(at(20, 20), [128, 128, 128]);
});

test('everything has a white rim', async () => {
  const at = await drawn({ x: [5, 35], y: [10, 10] }, 'line');
  // The line is two pixels thick and the rim three quarters of one on either side, which is half of
  // the next pixel and a quarter of that behind it.
  assert.ok(at(20, 8).every((level) => level > 150 && level < 180));
  assert.deepEqual(at(20, 8), at(20, 12));
  assert.deepEqual(at(20, 7), [128, 128, 128]);
});

test('points that are nowhere, or lack their y, are left out', () => {
  const points = { x: [1, NaN, 3, 4], y: [5, 6, Infinity] };
  const svg = overlaySvg(grey, points, { colour: blue, shape: 'line' });
  assert.match(svg, /d="M1,5"/);
});

test('the contrasting colour is far from every colour it is given', () => {
  assert.equal(contrastingColour([parseColour('#d35400'), [255, 255, 255]]), '#0072b2');
  assert.notEqual(contrastingColour([parseColour('#0072b2'), [255, 255, 255]]), '#0072b2');
  assert.equal(contrastingColour([[0, 0, 0]]), '#f0e442');
});

test('a colour that is taken is not given again before all others are', () => {
  const taken = [];
  for (let i = 0; i < 14; ++i) taken.push(contrastingColour([[255, 255, 255]], taken));
  assert.equal(new Set(taken.slice(0, 7)).size, 7);
  assert.deepEqual(taken.slice(7), taken.slice(0, 7));
});
