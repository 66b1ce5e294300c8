// The order in which trace() reads, as getters, proxies and toString() can see it.

import assert from 'node:assert/strict';
import test from 'node:test';

import { trace } from './support/addon.js';

const call = (x, y, count, mode = 'bar_vertical-fission') => trace(x, y, count, 1, mode, 0.05);

/** A proxy of `target` that writes every access of any kind into `log`. */
function watched(name, target, log) {
  const traps = {};
  for (const trap of Object.getOwnPropertyNames(Reflect)) {
    traps[trap] = (...args) => {
      log.push(`${trap} ${name}[${String(args[1])}]`);
      return Reflect[trap](...args);
    };
  }
  return new Proxy(target, traps);
}

test('elements are fetched x[0], y[0], x[1], y[1], ... and nothing else is looked at', () => {
  const log = [];
  call(watched('x', [10, 20, 30], log), watched('y', [11, 21, 31], log), 2.5);
  assert.deepEqual(log, ['get x[0]', 'get y[0]', 'get x[1]', 'get y[1]', 'get x[2]', 'get y[2]']);
});

test('the order holds over the borders of handle scopes', () => {
  const log = [];
  const values = Array.from({ length: 1100 }, (_, i) => i * 10);
  call(watched('x', values, log), watched('y', values, log), 1100);
  const expected = values.flatMap((_, i) => [`get x[${i}]`, `get y[${i}]`]);
  assert.deepEqual(log, expected);
});

test('a count of zero fetches nothing', () => {
  const log = [];
  call(watched('x', [10], log), watched('y', [11], log), 0);
  assert.deepEqual(log, []);
});

test('a getter is called on the object itself', () => {
  const receivers = [];
  const x = Object.create({
    get 0() {
      receivers.push(this);
      return 10;
    },
  });
  assert.deepEqual(call(x, [11], 1), [10, 11]);
  assert.deepEqual(receivers, [x]);
});

test('the mode is coerced before any element is fetched', () => {
  const log = [];
  const mode = { toString: () => (log.push('mode'), 'bar_vertical-fission') };
  call(watched('x', [10], log), watched('y', [11], log), 1, mode);
  assert.deepEqual(log, ['mode', 'get x[0]', 'get y[0]']);
});

test('toString() of the mode may still change the arrays', () => {
  const x = [10, 20];
  const y = [11];
  const mode = {
    toString() {
      x[0] = 15;
      y.push(21);
      return 'bar_vertical-fission';
    },
  };
  assert.deepEqual(call(x, y, 2, mode), [15, 20, 11, 21]);
});

test('a getter may change elements that were not fetched yet, and only those', () => {
  const y = [11, 21];
  const x = {
    0: 10,
    get 1() {
      y[0] = 99;
      y[1] = 22;
      return 20;
    },
  };
  assert.deepEqual(call(x, y, 2), [10, 20, 11, 22]);
});

test('a getter may call trace', () => {
  let inner;
  const x = {
    0: 10,
    get 1() {
      inner = call([1, 50], [2, 60], 2);
      return 20;
    },
  };
  assert.deepEqual(call(x, [11, 21], 2), [10, 20, 11, 21]);
  assert.deepEqual(inner, [1, 50, 2, 60]);
});

/** What `run` logs until it throws `expected`. */
function logUntil(expected, run) {
  const log = [];
  assert.throws(() => run(log), expected);
  return log;
}

const notANumber = { name: 'TypeError', message: 'A number was expected' };
const notAnObject = {
  name: 'TypeError',
  message: 'Cannot convert undefined or null to object',
};
const loggedMode = (log) => ({ toString: () => (log.push('mode'), 'histogram') });

test('a bad count ends the call before the mode is coerced', () => {
  const log = logUntil(notANumber, (seen) => trace([1], [1], '1', 1, loggedMode(seen), 0.05));
  assert.deepEqual(log, []);
});

test('a bad pixel step ends the call before the mode is coerced', () => {
  const log = logUntil(notANumber, (seen) => trace([1], [1], 1, '1', loggedMode(seen), 0.05));
  assert.deepEqual(log, []);
});

test('a bad cluster fraction ends the call after the mode, before any element', () => {
  const log = logUntil(notANumber, (seen) =>
    trace(watched('x', [1], seen), [1], 1, 1, loggedMode(seen), '0.05'),
  );
  assert.deepEqual(log, ['mode']);
});

test('a mode that throws ends the call before any element', () => {
  const thrown = new Error('no text');
  const mode = {
    toString() {
      throw thrown;
    },
  };
  const log = logUntil(thrown, (seen) => call(watched('x', [1], seen), [1], 1, mode));
  assert.deepEqual(log, []);
});

test('y is fetched before x has to be a number', () => {
  const log = logUntil(notANumber, (seen) => call(['1'], watched('y', [1, 2], seen), 2));
  assert.deepEqual(log, ['get y[0]']);
});

test('a getter of y that throws is heard before x is refused', () => {
  const thrown = new RangeError('from y');
  const y = {
    get 0() {
      throw thrown;
    },
  };
  logUntil(thrown, () => call(['1'], y, 1));
});

test('no y is fetched after a getter of x has thrown', () => {
  const thrown = new Error('from x');
  const x = {
    get 0() {
      throw thrown;
    },
  };
  const log = logUntil(thrown, (seen) => call(x, watched('y', [1], seen), 1));
  assert.deepEqual(log, []);
});

test('no y is fetched when x is no object', () => {
  const log = logUntil(notAnObject, (seen) => call(null, watched('y', [1], seen), 1));
  assert.deepEqual(log, []);
});

test('x[0] is fetched once when y is no object', () => {
  const log = logUntil(notAnObject, (seen) => call(watched('x', [1, 2], seen), undefined, 2));
  assert.deepEqual(log, ['get x[0]']);
});

test('the first failure ends the call: nothing after it is fetched', () => {
  const x = [10, 20, null, 40];
  const log = logUntil(notANumber, (seen) =>
    call(watched('x', x, seen), watched('y', [11, 21, 31, 41], seen), 4),
  );
  assert.equal(log.at(-1), 'get y[2]');
  assert.equal(log.length, 6);
});

test('the end of a short array ends the call, whatever the count promises', () => {
  for (const count of [3, 1e9, 2 ** 31, 2 ** 32, Number.MAX_VALUE, Infinity]) {
    const log = logUntil(notANumber, (seen) => call(watched('x', [1, 2], seen), [1, 2], count));
    assert.deepEqual(log, ['get x[0]', 'get x[1]', 'get x[2]']);
  }
});
