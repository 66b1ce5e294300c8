// What trace() accepts: which pairs it reads for a count, from which kinds of object, and that the
// numbers go through unchanged.

import assert from 'node:assert/strict';
import test from 'node:test';
import vm from 'node:vm';

import { trace } from './support/addon.js';

// Pixels farther apart than a pixel step are a bar each. A vertical bar of one pixel is its x, as
// a mean, and its y as it is; a horizontal one is its x as it is, and its y as a mean.
const read = (x, y, count) => trace(x, y, count, 1, 'bar_vertical-fission', 0.05);
const exactY = (y) => read([0], [y], 1)[1];
const exactX = (x) => trace([x], [0], 1, 1, 'bar_horizontal-fission', 0.05)[0];

const x = [10, 20, 30];
const y = [11, 21, 31];
const firstPairs = (pairs) => [...x.slice(0, pairs), ...y.slice(0, pairs)];

const pairsOfCount = [
  [3, 3],
  [2.999, 3],
  [2.5, 3],
  [2 + Number.EPSILON * 2, 3],
  [2, 2],
  [1.5, 2],
  [1, 1],
  [0.2, 1],
  [Number.MIN_VALUE, 1],
  [0, 0],
  [-0, 0],
  [-Number.MIN_VALUE, 0],
  [-1, 0],
  [-2.5, 0],
  [-1e300, 0],
  [-Infinity, 0],
  [NaN, 0],
];
for (const [count, pairs] of pairsOfCount) {
  test(`count ${Object.is(count, -0) ? '-0' : count} reads ${pairs} pairs`, () => {
    assert.deepEqual(read(x, y, count), firstPairs(pairs));
  });
}

for (const nothing of [undefined, null, 5, 'text', Symbol('s'), {}]) {
  test(`a count of zero does not look at arrays that are ${String(nothing)}`, () => {
    assert.deepEqual(read(nothing, nothing, 0), []);
  });
}

test('the count is not compared with the lengths: the rest of longer arrays is left alone', () => {
  assert.deepEqual(read([...x, 'no number'], [...y, null], 3), firstPairs(3));
});

const numeric = [Int8Array, Uint8Array, Uint8ClampedArray, Int16Array, Uint16Array, Int32Array];
for (const Type of [...numeric, Uint32Array, Float32Array, Float64Array]) {
  test(`a ${Type.name} is read like an array`, () => {
    assert.deepEqual(read(Type.from(x), Type.from(y), 3), firstPairs(3));
  });
}

test('both arrays may be one and the same, or of different kinds', () => {
  assert.deepEqual(read(x, x, 3), [...x, ...x]);
  assert.deepEqual(read(Float64Array.from(x), y, 3), firstPairs(3));
  assert.deepEqual(read(x, Int16Array.from(y), 3), firstPairs(3));
});

test('a typed array is read from its own offset', () => {
  const both = Float64Array.from([0, ...x, ...y]);
  assert.deepEqual(read(both.subarray(1, 4), both.subarray(4), 3), firstPairs(3));
});

test('a typed array over shared memory is read', () => {
  const shared = new Float64Array(new SharedArrayBuffer(24));
  shared.set(x);
  assert.deepEqual(read(shared, y, 3), firstPairs(3));
});

test('a Buffer is read byte by byte', () => {
  assert.deepEqual(read(Buffer.from(x), Buffer.from(y), 3), firstPairs(3));
});

class Derived extends Array {}
const likeArrays = {
  'an object with integer keys and no length': (values) => ({ ...values }),
  'an arguments object': (values) =>
    (function () {
      return arguments;
    })(...values),
  'an object that inherits its elements': (values) => Object.create(values),
  'an instance of a class derived from Array': (values) => Derived.from(values),
  'a frozen array': (values) => Object.freeze([...values]),
  'a function with integer keys': (values) => Object.assign(() => {}, values),
  'a proxy of an array': (values) => new Proxy(values, {}),
  'a proxy of a typed array': (values) =>
    new Proxy(Float64Array.from(values), { get: (target, key) => target[key] }),
  'an array of another realm': (values) => vm.runInNewContext(`[${values}]`),
  'a sparse array whose length says nothing': (values) =>
    Object.assign(Object.assign([], { length: 1e9 }), values),
};
for (const [name, make] of Object.entries(likeArrays)) {
  test(`${name} is read like an array`, () => {
    assert.deepEqual(read(make(x), make(y), 3), firstPairs(3));
  });
}

test('a hole is read through to the prototype', () => {
  const holed = [10, , 30]; // eslint-disable-line no-sparse-arrays
  Object.setPrototypeOf(holed, { 1: 20 });
  assert.deepEqual(read(holed, y, 3), firstPairs(3));
});

const numbers = [
  ['0', 0],
  ['-0', -0],
  ['one third', 1 / 3],
  ['a tenth', 0.1],
  ['minus one', -1],
  ['the smallest denormal', Number.MIN_VALUE],
  ['the smallest denormal below zero', -Number.MIN_VALUE],
  ['the largest double', Number.MAX_VALUE],
  ['2^31', 2 ** 31],
  ['-(2^31) - 1', -(2 ** 31) - 1],
  ['2^32', 2 ** 32],
  ['2^53 - 1', Number.MAX_SAFE_INTEGER],
  ['2^53 + 2', 2 ** 53 + 2],
  ['one and the least more', 1 + Number.EPSILON],
  ['infinity', Infinity],
  ['minus infinity', -Infinity],
  ['NaN', NaN],
];
for (const [name, number] of numbers) {
  test(`${name} as an element arrives as it is`, () => {
    assert.ok(Object.is(exactY(number), number), `y became ${exactY(number)}`);
    assert.ok(Object.is(exactX(number), number), `x became ${exactX(number)}`);
  });

  test(`${name} as the pixel step, the cluster fraction or both is a number`, () => {
    assert.deepEqual(trace(x, y, 3, number, 'no-such-mode', 0.05), []);
    assert.deepEqual(trace(x, y, 3, 1, 'no-such-mode', number), []);
    assert.deepEqual(trace(x, y, 3, number, 'no-such-mode', number), []);
  });
}

test('the third and the last number are not exchanged: a pixel step joins, a fraction clusters', () => {
  assert.deepEqual(trace([0, 5], [0, 0], 2, 5, 'bar_vertical-fission', 1), [2.5, 0]);
  assert.deepEqual(trace([0, 5], [0, 0], 2, 1, 'bar_vertical-fission', 5), [0, 5, 0, 0]);
  // Distances 1, 10 and 11: two of the three, ceil(3 * 0.34), give the radius 5.5.
  const clustered = trace([0, 1, 10, 11], [0, 0, 0, 0], 4, 99, 'point_density', 0.34);
  assert.deepEqual(clustered, [0.5, 10.5, 0, 0]);
});

test('arguments after the sixth are ignored, however many', () => {
  const call = [x, y, 3, 1, 'bar_vertical-fission', 0.05];
  const extra = [Symbol('extra'), null, { valueOf: () => assert.fail() }];
  assert.deepEqual(trace(...call, ...extra), firstPairs(3));
  assert.deepEqual(trace(...call, ...new Array(50_000).fill(0)), firstPairs(3));
});

test('what trace is called on does not matter', () => {
  const call = [x, y, 3, 1, 'bar_vertical-fission', 0.05];
  for (const receiver of [undefined, null, 5, {}, globalThis])
    assert.deepEqual(trace.apply(receiver, call), firstPairs(3));
});

test('the result is a plain array of its own, without holes', () => {
  const first = read(x, y, 3);
  const second = read(x, y, 3);
  assert.notEqual(first, second);
  assert.ok(Array.isArray(first) && Object.getPrototypeOf(first) === Array.prototype);
  assert.deepEqual(Reflect.ownKeys(first), ['0', '1', '2', '3', '4', '5', 'length']);
  first.fill(0);
  assert.deepEqual(second, firstPairs(3));
});

test('the arguments are left as they were', () => {
  const ownX = [...x];
  const ownY = Float64Array.from(y);
  read(ownX, ownY, 3);
  assert.deepEqual(ownX, x);
  assert.deepEqual([...ownY], y);
});

// Handle scopes are renewed every 512 elements: sizes around their borders, coming and going.
for (const pairs of [1, 255, 256, 257, 511, 512, 513, 1023, 1024, 1025, 1536]) {
  test(`${pairs} pairs are read and ${2 * pairs} numbers returned, each in its place`, () => {
    const manyX = Array.from({ length: pairs }, (_, i) => i * 10);
    const manyY = manyX.map((value) => value + 1 / 3);
    assert.deepEqual(read(manyX, manyY, pairs), [...manyX, ...manyY]);
  });
}
