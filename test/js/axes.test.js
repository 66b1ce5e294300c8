import assert from 'node:assert/strict';
import { test } from 'node:test';
import { makeAxis } from '../../lib/axes.js';

/**
 * @param {number} got
 * @param {number} want
 */
const near = (got, want) => assert.ok(Math.abs(got - want) <= 1e-12 * Math.abs(want), `${got}`);

test('a linear axis passes through its two references and on beyond them', () => {
  const axis = makeAxis({ scale: 'linear', pixel: [400, 100], value: [0, 30] });
  assert.equal(axis.toValue(400), 0);
  near(axis.toValue(100), 30);
  near(axis.toValue(90), 31);
  near(axis.toPixel(31), 90);
});

test('a logarithmic axis multiplies by the same factor over the same distance', () => {
  const axis = makeAxis({ scale: 'log10', pixel: [100, 300], value: [0.01, 100] });
  near(axis.toValue(200), 1);
  near(axis.toValue(250), 10);
  near(axis.toPixel(1000), 350);
});

test('an axis that cannot be is refused', () => {
  /** @type {[any, RegExp][]} */
  const bad = [
    [{ scale: 'log10', pixel: [0, 1], value: [0, 10] }, /suit no log10 axis/],
    [{ scale: 'log10', pixel: [0, 1], value: [-1, 10] }, /suit no log10 axis/],
    [{ scale: 'linear', pixel: [5, 5], value: [0, 10] }, /two different pixels/],
    [{ scale: 'linear', pixel: [5, 6], value: [3, 3] }, /two different values/],
    [{ scale: 'category', pixel: [5, 6], value: ['a', 'b'] }, /received 'category'/],
    [{ scale: 'linear', pixel: [5, 6], value: ['a', 'b'] }, /suit no linear axis/],
  ];
  for (const [description, message] of bad)
    assert.throws(() => makeAxis(description), { name: 'RangeError', message });
});
