// Long and typed arrays are read in stretches: nobody may be able to tell that from reading them one
// by one.

import assert from 'node:assert/strict';
import test from 'node:test';

import { trace } from './support/addon.js';

// Points of one row that do not touch: each comes back as it went in.
const call = (x, y, count = x.length) => trace(x, y, count, 1, 'bar_vertical-horizontal', 0.05);
const LONG = 9000; // several stretches and a part of one
const far = (i) => 3 * i;
const long = () => Array.from({ length: LONG }, (_, i) => far(i));
const row = () => new Array(LONG).fill(7);

/** An array-like that logs every element that is fetched and asks `special` first for its value. */
function logged(name, log, special) {
  return new Proxy(
    {},
    {
      get(_, key) {
        log.push(`${name}${key}`);
        return special?.(Number(key)) ?? (name === 'x' ? far(Number(key)) : 7);
      },
    },
  );
}

const upTo = (last) => Array.from({ length: last + 1 }, (_, i) => [`x${i}`, `y${i}`]).flat();

const NUMBER_EXPECTED = { name: 'TypeError', message: 'A number was expected' };

for (const Kind of [
  Float64Array,
  Float32Array,
  Int32Array,
  Uint32Array,
  Int16Array,
  Uint16Array,
  Int8Array,
  Uint8Array,
  Uint8ClampedArray,
]) {
  test(`two ${Kind.name}s give what plain arrays with their numbers give`, () => {
    const x = Kind.from([3, 6, 120, 250, 65535, 1e6, -5, 0.1, NaN]);
    const y = Kind.from([9, 1, 200, 30, -1, 70000, 4, 2.5, 5]);
    assert.deepEqual(call(x, y), call([...x], [...y]));
    assert.deepEqual(call(x, y, 3), call([...x], [...y], 3));
  });
}

test('typed arrays of two kinds, at an offset into their buffers, are read from where they begin', () => {
  const x = new Float64Array(new Float64Array([1, 2, 30, 60]).buffer, 16);
  const y = new Int16Array(new Int16Array([1, 8, 9]).buffer, 2);
  assert.deepEqual(call(x, y), [30, 60, 8, 9]);
});

test('-0 and NaN of typed arrays arrive as they are', () => {
  const result = call(Float64Array.of(-0, NaN), Float64Array.of(-0, 5));
  // The mean of one -0 is 0, for sums start at 0; the smallest y is the -0 itself.
  assert.ok(Object.is(result[0], 0) && Number.isNaN(result[1]));
  assert.ok(Object.is(result[2], -0) && result[3] === 5);
});

test('a fractional count of typed arrays is rounded up, and one too large is a TypeError', () => {
  const x = Float64Array.of(1, 30, 60);
  assert.deepEqual(call(x, x, 1.2), [1, 30, 1, 30]);
  assert.throws(() => call(x, x, 3.5), NUMBER_EXPECTED);
  assert.throws(() => call(x, Float64Array.of(1, 2), 3), NUMBER_EXPECTED);
});

test('typed arrays of big integers are a TypeError', () => {
  assert.throws(() => call(BigInt64Array.of(1n), Float64Array.of(1)), NUMBER_EXPECTED);
  assert.throws(() => call(Float64Array.of(1), BigUint64Array.of(1n)), NUMBER_EXPECTED);
});

test(
  'typed arrays of 16-bit fractions are read like any array, beside another kind too',
  { skip: typeof Float16Array === 'undefined' && 'this host has none' },
  () => {
    const [x, y] = [
      [1.5, 300, 7],
      [2.5, 1, 9],
    ];
    for (const X of [Array, Float64Array, Float16Array])
      assert.deepEqual(call(X.from(x), Float16Array.from(y)), [...x, ...y]);
    assert.deepEqual(call(Float16Array.from(x), Float64Array.from(y)), [...x, ...y]);
  },
);

test('a detached typed array has no elements', () => {
  const x = Float64Array.of(1, 2);
  structuredClone(x.buffer, { transfer: [x.buffer] });
  assert.throws(() => call(x, Float64Array.of(1, 2), 2), NUMBER_EXPECTED);
  assert.deepEqual(call(x, x, 0), []);
});

test('what a program does to the objects of typed arrays does not show in their elements', () => {
  class Odd extends Float64Array {
    get length() {
      return 1;
    }
  }
  const x = Odd.of(1, 30);
  Object.setPrototypeOf(x, { get 0() { return 99; } }); // prettier-ignore
  assert.deepEqual(call(x, Float64Array.of(5, 6), 2), [1, 30, 5, 6]);
});

test('long plain arrays, holes filled from the prototype included, are read whole', () => {
  const x = long();
  delete x[5000];
  Object.setPrototypeOf(x, { 5000: 15000 });
  assert.deepEqual(call(x, row()), [...long(), ...row()]);
});

test('long arrays of fractions, a plain and a typed one, are read whole', () => {
  const x = long().map((value) => value + 0.25);
  assert.deepEqual(call(x, Float32Array.from(row())), [...x, ...row()]);
});

test('the order x[0], y[0], x[1], y[1], ... holds over the borders of stretches', () => {
  const log = [];
  call(logged('x', log), logged('y', log), LONG - 0.5);
  assert.deepEqual(log, upTo(LONG - 1));
});

for (const bad of ['text', '7', undefined, null, true, 1n, Symbol('s'), {}])
  for (const name of ['x', 'y'])
    test(`${typeof bad} ${String(bad)} deep in ${name} ends the call once both are fetched`, () => {
      const log = [];
      const lists = { x: logged('x', log), y: logged('y', log) };
      const get = (t, key) => (key === '5000' ? (t[key], bad) : t[key]);
      lists[name] = new Proxy(lists[name], { get });
      assert.throws(() => call(lists.x, lists.y, LONG), NUMBER_EXPECTED);
      assert.deepEqual(log, upTo(5000));
    });

test('what a getter deep in y throws reaches the caller as it is, and nothing is read after it', () => {
  const log = [];
  const thrown = { reason: 'own' };
  const y = logged('y', log, (i) => {
    if (i === 5000) throw thrown;
  });
  assert.throws(
    () => call(logged('x', log), y, LONG),
    (error) => error === thrown,
  );
  assert.deepEqual(log, upTo(5000));
});

test('an array that is too short throws after its last element, however large the count', () => {
  for (const count of [LONG + 1, 1e9, Infinity]) {
    const log = [];
    const x = logged('x', log, (i) => (i === LONG ? 'the end' : undefined));
    assert.throws(() => call(x, logged('y', log), count), NUMBER_EXPECTED);
    assert.equal(log.length, 2 * (LONG + 1));
    assert.throws(() => call(long(), row(), count), NUMBER_EXPECTED);
  }
});

test('an array of holes, as long as an array can be, takes no memory before it throws', () => {
  const holes = [];
  holes.length = 2 ** 32 - 1;
  assert.throws(() => call(holes, holes), NUMBER_EXPECTED);
});

test('null, undefined and primitives are what they are for short arrays', () => {
  const message = (x, count) => {
    try {
      call(x, row(), count);
    } catch (error) {
      return `${error.name}: ${error.message}`;
    }
    return 'no error';
  };
  for (const x of [null, undefined, 5, 'text', true, 1n]) {
    assert.equal(message(x, LONG), message(x, 1), String(x));
    assert.notEqual(message(x, LONG), 'no error');
  }
});

test('a getter may trace long arrays itself', () => {
  let inner;
  const x = long();
  Object.defineProperty(x, 5000, {
    get() {
      inner = call(
        long().map((value) => -value),
        row(),
      );
      return far(5000);
    },
  });
  assert.deepEqual(call(x, row()), [...long(), ...row()]);
  assert.deepEqual(inner.slice(1, 3), [-3, -6]);
});

test('a getter does not find out what calls it', () => {
  const x = long();
  // A function of a text is not strict, and may ask.
  const get = Function('this.caller = arguments.callee.caller; return 15000;');
  Object.defineProperty(x, 5000, { get });
  call(x, row());
  assert.equal(x.caller, null);
});

test('a getter may change what was not read yet, typed arrays included', () => {
  const x = long();
  const y = Float64Array.from(row());
  Object.defineProperty(x, 5000, {
    get() {
      y[4999] = 99;
      y[5000] = 8;
      x[5001] = 15004;
      return far(5000);
    },
  });
  const wanted = [...long(), ...row()];
  wanted[5001] = 15004;
  wanted[LONG + 5000] = 8;
  assert.deepEqual(call(x, y), wanted);
});

test('setters and getters on the prototypes of everything are not met while reading', () => {
  const [x, y] = [long(), row()];
  const met = [];
  for (const prototype of [Object.prototype, Array.prototype, Float64Array.prototype]) {
    Object.defineProperty(prototype, 17, {
      configurable: true,
      get: () => met.push('get'),
      set() {
        met.push('set');
      },
    });
  }
  try {
    // No such mode: the result, whose elements are set, stays empty.
    assert.deepEqual(trace(x, y, LONG, 1, 'none', 0.05), []);
  } finally {
    for (const prototype of [Object.prototype, Array.prototype, Float64Array.prototype]) {
      delete prototype[17];
    }
  }
  assert.deepEqual(met, []);
});
