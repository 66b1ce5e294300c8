// node arbitrary_calls.mjs ADDON CALLS SEED: makes CALLS calls of trace() with arbitrary values in all
// six places and holds each against a model of the boundary, written down in JavaScript: what is
// read, in which order, and what is thrown. Prints how often each outcome was seen, as JSON; what
// differs is thrown, reduced to a small call.

import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import process from 'node:process';
import fc from 'fast-check';

import { MODES } from '../../pinned/cases.js';

const [addonFile, calls, seed] = process.argv.slice(2);
const { trace } = createRequire(import.meta.url)(addonFile);

// A recipe says how to make a value, so that the module and the model are each handed a fresh one:
// values that change while they are read, or that are spent after one call, can be used as well.

const TYPED = [
  Float64Array,
  Float32Array,
  Int8Array,
  Uint8Array,
  Uint8ClampedArray,
  Int16Array,
  Uint16Array,
  Int32Array,
  Uint32Array,
  BigInt64Array,
];

// None between 1e4 and 1e12: a histogram so wide would have millions of compartments to make.
const coordinate = fc.oneof(
  { weight: 12, arbitrary: fc.integer({ min: 0, max: 40 }) },
  { weight: 2, arbitrary: fc.constantFrom(0.5, 1.5, -3, -0, 2 ** 53, 1e300, -1e300, 5e-324) },
  { weight: 1, arbitrary: fc.constantFrom(NaN, Infinity, -Infinity) },
);
const notANumber = fc.constantFrom(
  ['value', undefined],
  ['value', null],
  ['value', '7'],
  ['value', true],
  ['value', 7n],
  ['symbol'],
  ['object'],
  ['boxed'],
  ['hostile'],
);
const element = fc.oneof(
  { weight: 400, arbitrary: coordinate.map((number) => ['value', number]) },
  { weight: 1, arbitrary: notANumber },
);
// Both sides of the length at which plain arrays are read in stretches, and of a stretch's end.
const anyLength = fc.oneof(
  { weight: 8, arbitrary: fc.nat(8) },
  { weight: 2, arbitrary: fc.constantFrom(511, 512, 513, 1023, 1024, 1025, 1100, 2049, 4097) },
);
// Mostly both arrays have one length and the count is just that, or the call would end at its first
// missing element.
const SHARED = -1;
const length = fc.oneof(
  { weight: 12, arbitrary: fc.constant(SHARED) },
  { weight: 1, arbitrary: anyLength },
);
const place = fc.oneof(fc.nat(8), fc.constantFrom(500, 1023, 1024, 1030, 2048));
const change = fc.constantFrom('shorten', 'grow', 'spoil', 'detach', 'resize', 'enter', 'collect');

const coordinates = fc.oneof(
  {
    weight: 6,
    arbitrary: fc.tuple(fc.constant('array'), fc.array(element, { maxLength: 9 }), length),
  },
  {
    weight: 4,
    arbitrary: fc.tuple(
      fc.constant('typed'),
      fc.nat(TYPED.length - 1),
      length,
      fc.constantFrom('own', 'offset', 'resizable', 'detached'),
    ),
  },
  {
    weight: 3,
    arbitrary: fc.tuple(
      fc.constant('getter'),
      length,
      place,
      fc.oneof(change, fc.constant('throw')),
    ),
  },
  {
    weight: 3,
    arbitrary: fc.tuple(
      fc.constant('proxy'),
      length,
      fc.constantFrom('watch', 'throw', 'lie'),
      place,
    ),
  },
  { weight: 1, arbitrary: fc.tuple(fc.constant('holes'), length, place) },
  { weight: 1, arbitrary: fc.tuple(fc.constant('likeArray'), length) },
  { weight: 1, arbitrary: fc.constant(['revoked']) },
  { weight: 1, arbitrary: notANumber },
);
const number = (usual) =>
  fc.oneof(
    { weight: 20, arbitrary: usual.map((value) => ['value', value]) },
    { weight: 1, arbitrary: notANumber },
  );
const count = number(
  fc.oneof(
    { weight: 20, arbitrary: length },
    { weight: 2, arbitrary: anyLength.map((n) => n + 0.5) },
    {
      weight: 3,
      arbitrary: fc.constantFrom(-2, -0, NaN, -Infinity, Infinity, 1e9, 2 ** 32, 2 ** 53, 1e-300),
    },
  ),
);
const step = number(fc.constantFrom(1, 1, 1, 0.5, 2, 1 / 3, 0, -2, NaN, Infinity, 1e307));
const fraction = number(fc.constantFrom(0.05, 0.051, 0.055, 0.5, 1, 2, 0, -2, NaN, 1e300));
// Half a surrogate pair is one as well.
const codeUnit = fc.nat(0xffff).map((unit) => String.fromCharCode(unit));
const mode = fc.oneof(
  { weight: 20, arbitrary: fc.constantFrom(...MODES).map((name) => ['value', name]) },
  { weight: 2, arbitrary: fc.string({ unit: codeUnit }).map((text) => ['value', text]) },
  { weight: 2, arbitrary: fc.tuple(fc.constant('text'), fc.constantFrom(...MODES), change) },
  {
    weight: 1,
    arbitrary: fc.constantFrom(['value', '\ud800'], ['value', 'histogram\0'], ['throws']),
  },
  { weight: 1, arbitrary: notANumber },
);
const call = fc.tuple(coordinates, coordinates, count, step, mode, fraction, fc.nat(40), anyLength);

/** What a call throws on purpose. */
class Thrown extends Error {}

/** One call's values, and the log of everything they saw happen. */
class Kitchen {
  log = [];
  buffers = [];
  arrays = [];

  /** @param {number} shared The length that SHARED stands for. */
  constructor(shared) {
    this.shared = shared;
  }

  /** What hostile code does to the values of the call in which it runs. */
  alter(what) {
    this.log.push(what);
    if (what === 'shorten')
      for (const array of this.arrays) array.length = Math.min(array.length, 3);
    if (what === 'grow') for (const array of this.arrays) array.push(9, 9);
    if (what === 'spoil') for (const array of this.arrays) array[array.length - 1] = 'spoilt';
    if (what === 'detach') for (const buffer of this.buffers) this.detach(buffer);
    if (what === 'resize')
      for (const buffer of this.buffers)
        if (buffer.resizable) buffer.resize(buffer.byteLength >> 1);
    if (what === 'enter') this.log.push(trace([3, 4], [5, 5], 2, 1, 'histogram', 0.05).join());
    if (what === 'collect') globalThis.gc?.();
  }

  detach(buffer) {
    if (!buffer.detached) structuredClone(buffer, { transfer: [buffer] });
  }

  make([kind, ...rest], name) {
    return this[kind](name, ...rest.map((part) => (part === SHARED ? this.shared : part)));
  }

  value = (name, value) => value;
  symbol = () => Symbol('s');
  object = () => ({});
  boxed = () => Object(7);
  hostile = (name) => ({
    valueOf: () => this.log.push(`${name}.valueOf`),
    toString: () => (this.log.push(`${name}.toString`), 'histogram'),
  });
  throws = () => ({
    toString() {
      throw new Thrown('the mode has no text');
    },
  });
  text = (name, text, what) => ({ toString: () => (this.alter(what), text) });

  array(name, elements, size) {
    const made = elements.map((one, i) => this.make(one, `${name}[${i}]`));
    for (let i = made.length; i < size; ++i) made.push(i % 37);
    this.arrays.push(made);
    return made;
  }

  typed(name, type, size, kind) {
    const Type = TYPED[type];
    const bytes = Type.BYTES_PER_ELEMENT;
    const start = kind === 'offset' ? bytes : 0;
    const options = kind === 'resizable' ? { maxByteLength: (size + 4) * bytes } : undefined;
    const buffer = new ArrayBuffer(start + size * bytes, options);
    const made = kind === 'resizable' ? new Type(buffer) : new Type(buffer, start, size);
    for (let i = 0; i < size; ++i) made[i] = Type === BigInt64Array ? BigInt(i % 37) : i % 37;
    this.buffers.push(buffer);
    if (kind === 'detached') this.detach(buffer);
    return made;
  }

  getter(name, size, at, what) {
    const made = this.array(name, [], size);
    Object.defineProperty(made, at, {
      configurable: true,
      get: () => {
        this.log.push(`${name}[${at}]`);
        if (what === 'throw') throw new Thrown(`${name}[${at}]`);
        this.alter(what);
        return at % 37;
      },
    });
    return made;
  }

  proxy(name, size, what, at) {
    const traps = {};
    for (const trap of Object.getOwnPropertyNames(Reflect)) {
      traps[trap] = (target, key, ...more) => {
        this.log.push(`${trap} ${name} ${String(key)}`);
        if (what === 'throw' && key === String(at)) throw new Thrown(`${name}[${at}]`);
        if (what === 'lie' && trap === 'get') return Number(key) < size ? Number(key) % 5 : 'lie';
        return Reflect[trap](target, key, ...more);
      };
    }
    return new Proxy(
      Array.from({ length: size }, (_, i) => i % 37),
      traps,
    );
  }

  holes(name, size, at) {
    const made = this.array(name, [], size);
    delete made[at];
    return made;
  }

  likeArray = (name, size) =>
    Object.assign(
      Object.create(null),
      Array.from({ length: size }, (_, i) => i % 37),
    );

  revoked() {
    const { proxy, revoke } = Proxy.revocable([1, 2], {});
    revoke();
    return proxy;
  }
}

/** The boundary's rules, plainly: the points that are read, or what is thrown. */
function modelOf(args) {
  const [xValues, yValues, pairs, pixelStep, modeValue, clusterFraction] = args;
  const toNumber = (value) => {
    if (typeof value !== 'number') throw new TypeError('A number was expected');
    return value;
  };
  const elementOf = (values, i) => {
    if (values === undefined || values === null)
      throw new TypeError('Cannot convert undefined or null to object');
    return values[i];
  };
  toNumber(pairs);
  toNumber(pixelStep);
  const text = `${modeValue}`;
  toNumber(clusterFraction);
  const x = [];
  const y = [];
  for (let i = 0; i < pairs; ++i) {
    const pair = [elementOf(xValues, i), elementOf(yValues, i)];
    x.push(toNumber(pair[0]));
    y.push(toNumber(pair[1]));
  }
  return trace(x, y, x.length, pixelStep, text, clusterFraction);
}

/** What a function makes of a recipe: its result or what it threw, and what it let happen. */
function outcome(run, [x, y, pairs, pixelStep, modeRecipe, clusterFraction, given, shared]) {
  const kitchen = new Kitchen(shared);
  const args = [
    kitchen.make(x, 'x'),
    kitchen.make(y, 'y'),
    kitchen.make(pairs, 'count'),
    kitchen.make(pixelStep, 'step'),
    kitchen.make(modeRecipe, 'mode'),
    kitchen.make(clusterFraction, 'fraction'),
  ].slice(0, given < 6 ? given : 6);
  const { log } = kitchen;
  try {
    return { returned: run(args), log };
  } catch (error) {
    return { threw: `${error?.constructor?.name}: ${error?.message}`, log };
  }
}

const seen = {};

fc.assert(
  fc.property(call, (recipe) => {
    const got = outcome((args) => trace(...args), recipe);
    assert.deepStrictEqual(got, outcome(modelOf, recipe));
    const kind = got.threw ?? (got.returned.length > 0 ? 'points' : 'no points');
    seen[kind] = (seen[kind] ?? 0) + 1;
  }),
  { numRuns: Number(calls), seed: Number(seed) },
);

console.log(JSON.stringify(seen));
