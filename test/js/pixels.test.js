import assert from 'node:assert/strict';
import { test } from 'node:test';
import { selectPixels } from '../../lib/selection/pixels.js';

/**
 * A picture of the given grey levels, in the red channel only so that the channels differ.
 * @param {number[][]} rows
 */
const pictureOf = (rows) => ({
  width: rows[0].length,
  height: rows.length,
  data: Uint8Array.from(rows.flat().flatMap((red) => [red, 10, 20, 255])),
});

const picture = pictureOf([
  [7, 0, 7],
  [0, 7, 9],
  [7, 5, 0],
]);

/** @param {{x: Float64Array, y: Float64Array}} points */
const pairs = ({ x, y }) => Array.from(x, (value, i) => [value, y[i]]);

test('pixels of the exact colour come row by row, from left to right', () => {
  const found = pairs(selectPixels(picture, [7, 10, 20]));
  assert.deepEqual(found, [
    [0, 0],
    [2, 0],
    [1, 1],
    [0, 2],
  ]);
});

test('the tolerance is the largest difference of any one channel, itself included', () => {
  assert.equal(selectPixels(picture, [7, 10, 20], { tolerance: 1 }).x.length, 4);
  assert.equal(selectPixels(picture, [7, 10, 20], { tolerance: 2 }).x.length, 6);
  assert.equal(selectPixels(picture, [7, 10, 22], { tolerance: 2 }).x.length, 6);
  assert.equal(selectPixels(picture, [7, 12, 20], { tolerance: 1 }).x.length, 0);
  assert.equal(selectPixels(picture, [7, 10, 23], { tolerance: 2 }).x.length, 0);
});

test('a box takes the pixels whose centres it holds, its edges included', () => {
  const box = { left: 1, top: 0, right: 2, bottom: 1 };
  assert.deepEqual(pairs(selectPixels(picture, [7, 10, 20], { box })), [
    [2, 0],
    [1, 1],
  ]);
  const between = { left: 0.2, top: 0.5, right: 1.9, bottom: 1.4 };
  assert.deepEqual(pairs(selectPixels(picture, [7, 10, 20], { box: between })), [[1, 1]]);
});

test('a box reaches no further than the picture', () => {
  const box = { left: -5, top: -5, right: 50, bottom: 50 };
  assert.equal(selectPixels(picture, [7, 10, 20], { box }).x.length, 4);
  const outside = { left: 3, top: 0, right: 9, bottom: 9 };
  assert.equal(selectPixels(picture, [7, 10, 20], { box: outside }).x.length, 0);
});
