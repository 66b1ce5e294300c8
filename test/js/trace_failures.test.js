// What trace() refuses. Each call runs in a process of its own, which must end as usual and hear
// of the failure as an exception, this one and no other.

import assert from 'node:assert/strict';
import { availableParallelism } from 'node:os';
import { describe, test } from 'node:test';

import { attempt } from './support/addon.js';

const notANumber = 'TypeError: A number was expected';
const notAnObject = 'TypeError: Cannot convert undefined or null to object';
const symbolMode = 'TypeError: Cannot convert a Symbol value to a string';

const noNumbers = [
  'undefined',
  'null',
  '"3"',
  'true',
  '3n',
  'Symbol("s")',
  '{}',
  '[3]',
  'new Number(3)',
  'new Date(3)',
  '() => 3',
  '({ valueOf() { process.abort(); } })',
];

/** A row for each value: the source of a call with it, and that it is refused. */
const refused = (callOf, values = noNumbers) => values.map((value) => [callOf(value), notANumber]);

const tooMany = 'RangeError: there are more compartments than a 32-bit count can tell';

const badCalls = {
  'a pixel step far too small for the width of the picture': [
    ['trace([0, 1000], [1, 1], 2, 1e-9, "histogram", 1)', tooMany],
    ['trace([0, 1e300], [1, 1], 2, 1, "step_size_graph", 1)', tooMany],
  ],
  'missing arguments': [
    ['trace()', notANumber],
    ['trace([1])', notANumber],
    ['trace([1], [1])', notANumber],
    ['trace([1], [1], 1)', notANumber],
    ['trace([1], [1], 1, 1)', notANumber],
    ['trace([1], [1], 1, 1, "histogram")', notANumber],
    ['new trace()', notANumber],
  ],
  'a count that is no number': refused((value) => `trace([1], [1], ${value}, 1, "histogram", 1)`),
  'a pixel step that is no number': refused(
    (value) => `trace([1], [1], 1, ${value}, "histogram", 1)`,
  ),
  'a cluster fraction that is no number': refused(
    (value) => `trace([1], [1], 1, 1, "histogram", ${value})`,
  ),
  'an x element that is no number': refused(
    (value) => `trace([1, ${value}], [1, 2], 2, 1, "histogram", 1)`,
  ),
  'a y element that is no number': refused(
    (value) => `trace([1, 2], [1, ${value}], 2, 1, "histogram", 1)`,
  ),
  'numbers are refused where none of them is used': [
    ['trace([], [], "0", 1, "no-such-mode", 1)', notANumber],
    ['trace([], [], 0, "1", "point_density", 1)', notANumber],
    ['trace([], [], 0, 1, "histogram", "1")', notANumber],
    ['trace([null], [1], 1, 1, "no-such-mode", 1)', notANumber],
  ],
  'a hole': [
    ['trace([1, , 3], [1, 2, 3], 3, 1, "histogram", 1)', notANumber],
    ['trace([1, 2, 3], [1, , 3], 3, 1, "histogram", 1)', notANumber],
    ['trace(new Array(3), new Array(3), 3, 1, "histogram", 1)', notANumber],
  ],
  'arrays shorter than the count': [
    ['trace([], [], 1, 1, "histogram", 1)', notANumber],
    ['trace([], [], Number.MIN_VALUE, 1, "histogram", 1)', notANumber],
    ['trace([1, 2], [1, 2], 2.5, 1, "histogram", 1)', notANumber],
    ['trace([1, 2, 3], [1, 2], 3, 1, "histogram", 1)', notANumber],
    ['trace([1, 2], [1, 2, 3], 3, 1, "histogram", 1)', notANumber],
    ['trace([1], [1], 1e9, 1, "histogram", 1)', notANumber],
    ['trace([1], [1], 2 ** 31, 1, "histogram", 1)', notANumber],
    ['trace([1], [1], 2 ** 32 + 1, 1, "histogram", 1)', notANumber],
    ['trace([1], [1], Infinity, 1, "no-such-mode", 1)', notANumber],
    ['trace(new Float64Array(2), new Float64Array(3), 3, 1, "histogram", 1)', notANumber],
    ['trace(new Float64Array(3), new Float64Array(2), Infinity, 1, "histogram", 1)', notANumber],
    ['trace({ length: 9 }, { length: 9 }, 9, 1, "histogram", 1)', notANumber],
  ],
  'arrays that are no object': [
    ['trace(undefined, [1], 1, 1, "histogram", 1)', notAnObject],
    ['trace(null, [1], 1, 1, "histogram", 1)', notAnObject],
    ['trace([1], undefined, 1, 1, "histogram", 1)', notAnObject],
    ['trace([1], null, 1, 1, "histogram", 1)', notAnObject],
    ['trace(null, null, 0.2, 1, "no-such-mode", 1)', notAnObject],
    ['trace(["1"], null, 1, 1, "histogram", 1)', notAnObject],
  ],
  'arrays that have no numbers': refused(
    (value) => `trace(${value}, [1], 1, 1, "histogram", 1)`,
    ['5', 'true', '"123"', '5n', 'Symbol("s")', '{}', '() => 1', '/x/', 'new Map([[0, 1]])'],
  ),
  'typed arrays of big integers': [
    ['trace(new BigInt64Array(1), [1], 1, 1, "histogram", 1)', notANumber],
    ['trace([1], new BigUint64Array(1), 1, 1, "histogram", 1)', notANumber],
  ],
  'memory that went away': [
    [
      `const x = new Float64Array(4);
       structuredClone(x.buffer, { transfer: [x.buffer] });
       trace(x, [1], 1, 1, "histogram", 1)`,
      notANumber,
    ],
    [
      `const y = new Float64Array(4);
       const x = [1, 2, 3, 4];
       Object.defineProperty(x, 2, { get: () => structuredClone(y.buffer, { transfer: [y.buffer] }) && 3 });
       trace(x, y, 4, 1, "histogram", 1)`,
      notANumber,
    ],
    [
      `const buffer = new ArrayBuffer(32, { maxByteLength: 64 });
       const x = new Float64Array(buffer);
       const mode = { toString: () => (buffer.resize(8), "histogram") };
       trace(x, x, 4, 1, mode, 1)`,
      notANumber,
    ],
    [
      `const x = [1, 2, 3];
       trace(x, [1, 2, 3], 3, 1, { toString: () => ((x.length = 1), "histogram") }, 1)`,
      notANumber,
    ],
    [
      `const y = [1, 2, 3];
       trace({ 0: 1, get 1() { y.length = 0; return 2; } }, y, 2, 1, "histogram", 1)`,
      notANumber,
    ],
  ],
  'a mode without a text': [
    ['trace([1], [1], 1, 1, Symbol("s"), 1)', symbolMode],
    ['trace([1], [1], 1, 1, Symbol.iterator, 1)', symbolMode],
    [
      'trace([1], [1], 1, 1, Object.create(null), 1)',
      'TypeError: Cannot convert object to primitive value',
    ],
    [
      'trace([1], [1], 1, 1, { toString: () => ({}) , valueOf: () => ({}) }, 1)',
      'TypeError: Cannot convert object to primitive value',
    ],
    ['trace([1], [1], 1, 1, { toString: () => Symbol("s") }, 1)', symbolMode],
    [
      'trace([1], [1], 1, 1, { toString: 5, valueOf: 5 }, 1)',
      'TypeError: Cannot convert object to primitive value',
    ],
    [
      'trace([1], [1], 1, 1, { [Symbol.toPrimitive]: () => [] }, 1)',
      'TypeError: Cannot convert object to primitive value',
    ],
    [
      'trace([1], [1], 1, 1, { toString() { throw new RangeError("mine") } }, 1)',
      'RangeError: mine',
    ],
  ],
  'several bad arguments: the first read decides': [
    ['trace(null, null, "1", "1", Symbol("s"), "1")', notANumber],
    ['trace(null, null, 1, 1, Symbol("s"), "1")', symbolMode],
    ['trace(null, null, 1, 1, "histogram", "1")', notANumber],
    ['trace(null, null, 1, 1, "histogram", 1)', notAnObject],
  ],
  'revoked proxies': [
    [
      `const { proxy, revoke } = Proxy.revocable([1], {}); revoke();
       trace(proxy, [1], 1, 1, "histogram", 1)`,
      "TypeError: Cannot perform 'get' on a proxy that has been revoked",
    ],
    [
      `const { proxy, revoke } = Proxy.revocable([1], {}); revoke();
       trace([1], proxy, 1, 1, "histogram", 1)`,
      "TypeError: Cannot perform 'get' on a proxy that has been revoked",
    ],
    [
      `const { proxy, revoke } = Proxy.revocable({}, {}); revoke();
       trace([1], [1], 1, 1, proxy, 1)`,
      "TypeError: Cannot perform 'get' on a proxy that has been revoked",
    ],
    [
      `const { proxy, revoke } = Proxy.revocable([1, 2], { get: (target, key) => (revoke(), target[key]) });
       trace(proxy, [1, 2], 2, 1, "histogram", 1)`,
      "TypeError: Cannot perform 'get' on a proxy that has been revoked",
    ],
  ],
  'exceptions of the caller': [
    ['trace({ get 0() { throw new SyntaxError("mine") } }, [1], 1, 1, "", 1)', 'SyntaxError: mine'],
    ['trace([1], { get 0() { throw new SyntaxError("mine") } }, 1, 1, "", 1)', 'SyntaxError: mine'],
    [
      'trace(new Proxy([], { get() { throw new EvalError("mine") } }), [1], 1, 1, "", 1)',
      'EvalError: mine',
    ],
    [
      'const endless = { get 0() { return trace(endless, [1], 1, 1, "", 1) } }; endless[0]',
      'RangeError: Maximum call stack size exceeded',
    ],
    [
      'const mode = { toString: () => trace([1], [1], 1, 1, mode, 1) }; String(mode)',
      'RangeError: Maximum call stack size exceeded',
    ],
    [
      `Object.defineProperty(Array.prototype, 0, {
         configurable: true,
         set() { throw new Error("from a setter") },
       });
       const one = new Float64Array(1);
       try { trace(one, one, 1, 1, "point_density", 1) } finally { delete Array.prototype[0] }`,
      'Error: from a setter',
    ],
  ],
};

for (const [group, rows] of Object.entries(badCalls)) {
  describe(group, { concurrency: availableParallelism() }, () => {
    for (const [source, threw] of rows) {
      test(`${source.replace(/\s+/g, ' ')} is ${threw}`, async () => {
        assert.deepEqual(await attempt(source), { threw });
      });
    }
  });
}

describe('whatever is thrown reaches the caller as it is', { concurrency: 2 }, () => {
  const thrown = ['5', '"text"', 'null', 'undefined', 'NaN', 'false', 'Symbol("s")', '7n', '{}'];
  for (const value of [...thrown, 'Object.freeze(new Error("frozen"))', '() => {}']) {
    for (const [place, call] of [
      ['an x getter', 'trace({ get 0() { throw thrown } }, [1], 1, 1, "", 1)'],
      ['a y getter', 'trace([1], { get 0() { throw thrown } }, 1, 1, "", 1)'],
      ['toString()', 'trace([1], [1], 1, 1, { toString() { throw thrown } }, 1)'],
    ]) {
      test(`${value} from ${place}`, async () => {
        const body = `const thrown = (${value});
          try { ${call} } catch (caught) { Object.is(caught, thrown) }`;
        assert.deepEqual(await attempt(body), { returned: true });
      });
    }
  }
});

describe('after a failure the module is as before', { concurrency: 2 }, () => {
  const good = 'trace([10, 20], [11, 21], 2, 1, "bar_vertical-fission", 1)';
  for (const bad of [
    'trace()',
    'trace(null, null, 1, 1, "", 1)',
    'trace([1], [1], 1, 1, Symbol("s"), 1)',
    'trace({ get 0() { throw 5 } }, [1], 1, 1, "", 1)',
    'trace([1], [1], Infinity, 1, "", 1)',
  ]) {
    test(`a thousand times ${bad}, then a good call`, async () => {
      const body = `for (let i = 0; i < 1000; ++i) try { ${bad} } catch {}
        ${good}`;
      assert.deepEqual(await attempt(body), { returned: [10, 20, 11, 21] });
    });
  }
});
