// node --expose-gc arbitrary_calls.mjs ADDON CALLS SEED: makes CALLS calls of trace() with arbitrary
// values in all six places and holds each against a model of the boundary, written down in
// JavaScript: what is read, in which order, and what is thrown. Prints how often each outcome was
// seen, and by how many MB the process grew after the first fifth of the calls, as JSON; what
// differs is thrown, reduced to a small call.

import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import process from 'node:process';
import vm from 'node:vm';
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
  BigUint64Array,
  globalThis.Float16Array ?? Float64Array,
];
/** The arrays of another realm, whose prototypes are not those of this one. */
const foreign = vm.runInNewContext('({ Array, Float64Array, Proxy })');

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
  ['value', -(2n ** 70n)],
  ['boxed'],
  ['hostile'],
  ['throws', 'valueOf'],
  ['throws', 'toString'],
  ['throws', Symbol.toPrimitive],
  ['turnsInto', 'histogram'],
  ['turnsInto', 5],
  ['turnsInto', Symbol.iterator],
  ['turnsInto', {}],
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
      fc.constantFrom('own', 'offset', 'resizable', 'detached', 'shared', 'growable', 'subclass'),
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
      fc.oneof(change, fc.constantFrom('watch', 'throw', 'lie')),
      place,
    ),
  },
  {
    weight: 2,
    arbitrary: fc.tuple(
      fc.constant('fromElsewhere'),
      length,
      fc.constantFrom(...Object.keys(foreign)),
    ),
  },
  { weight: 1, arbitrary: fc.tuple(fc.constant('holes'), length, place) },
  { weight: 1, arbitrary: fc.tuple(fc.constant('inherits'), length, place) },
  { weight: 1, arbitrary: fc.tuple(fc.constant('likeArray'), length) },
  { weight: 1, arbitrary: fc.tuple(fc.constant('liesAboutLength'), length, anyLength) },
  { weight: 1, arbitrary: fc.constantFrom(['longest'], ['bytes'], ['view']) },
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
    arbitrary: fc.constantFrom(['value', '\ud800'], ['value', 'histogram\0']),
  },
  { weight: 1, arbitrary: notANumber },
);
const way = fc.constantFrom('call', 'call', 'call', 'construct', 'method', 'more arguments');
const call = fc.tuple(
  fc.tuple(coordinates, coordinates, count, step, mode, fraction),
  fc.nat(40),
  anyLength,
  way,
);

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
        else if (buffer.growable) buffer.grow(buffer.maxByteLength);
    if (what === 'enter') this.log.push(trace([3, 4], [5, 5], 2, 1, 'histogram', 0.05).join());
    if (what === 'collect') globalThis.gc?.();
  }

  detach(buffer) {
    if (!buffer.detached && buffer instanceof ArrayBuffer)
      structuredClone(buffer, { transfer: [buffer] });
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
  throws = (name, method) => ({
    [method]() {
      throw new Thrown('the mode has no text');
    },
  });
  turnsInto = (name, value) => ({ [Symbol.toPrimitive]: () => value });
  text = (name, text, what) => ({ toString: () => (this.alter(what), text) });

  array(name, elements, size) {
    const made = elements.map((one, i) => this.make(one, `${name}[${i}]`));
    for (let i = made.length; i < size; ++i) made.push(i % 37);
    this.arrays.push(made);
    return made;
  }

  typed(name, type, size, kind) {
    const Type = TYPED[type];
    const Class = kind === 'subclass' ? liarOf(Type) : Type;
    const bytes = Type.BYTES_PER_ELEMENT;
    const start = kind === 'offset' ? bytes : 0;
    const grows = kind === 'resizable' || kind === 'growable';
    const options = grows ? { maxByteLength: (size + 4) * bytes } : undefined;
    const Buffer = kind === 'shared' || kind === 'growable' ? SharedArrayBuffer : ArrayBuffer;
    const buffer = new Buffer(start + size * bytes, options);
    const made = grows ? new Class(buffer) : new Class(buffer, start, size);
    const isBig = typeof new Type(1)[0] === 'bigint';
    for (let i = 0; i < size; ++i) made[i] = isBig ? BigInt(i % 37) : i % 37;
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

  inherits(name, size, at) {
    const made = this.holes(name, size, at);
    const get = () => (this.log.push(`inherited ${name}[${at}]`), 3);
    return Object.setPrototypeOf(made, Object.create(Array.prototype, { [at]: { get } }));
  }

  fromElsewhere(name, size, kind) {
    const made = foreign.Array.from({ length: size }, (_, i) => i % 37);
    if (kind === 'Float64Array') return foreign.Float64Array.from(made);
    return kind === 'Proxy' ? new foreign.Proxy(made, {}) : made;
  }

  liesAboutLength(name, size, claimed) {
    const made = this.likeArray(name, size);
    const get = () => (this.log.push(`${name}.length`), claimed);
    return Object.defineProperty(made, 'length', { get });
  }

  longest = () => new Array(2 ** 32 - 1);
  bytes = () => new ArrayBuffer(64);
  view = () => new DataView(new ArrayBuffer(64));

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

/** A typed array that says nothing true about itself; what it holds is still what lies in memory. */
function liarOf(Type) {
  return class extends Type {
    get length() {
      return 2 ** 31;
    }
    get byteOffset() {
      return -8;
    }
    get buffer() {
      throw new Thrown('no buffer');
    }
    get [Symbol.toStringTag]() {
      return 'Float64Array';
    }
  };
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
function outcome(run, [places, given, shared]) {
  const kitchen = new Kitchen(shared);
  const names = ['x', 'y', 'count', 'step', 'mode', 'fraction'];
  const args = places.map((recipe, i) => kitchen.make(recipe, names[i])).slice(0, given);
  const { log } = kitchen;
  try {
    return { returned: run(args), log };
  } catch (error) {
    return { threw: `${error?.constructor?.name}: ${error?.message}`, log };
  }
}

/** The ways to call trace() make no difference. */
const WAYS = {
  call: (args) => trace(...args),
  construct: (args) => Reflect.construct(trace, args),
  method: (args) => trace.apply(new Proxy({}, {}), args),
  'more arguments': (args) => (args.length < 6 ? trace(...args) : trace(...args, Symbol('7th'))),
};

const seen = {};
const property = fc.property(call, (recipe) => {
  const got = outcome(WAYS[recipe[3]], recipe);
  assert.deepStrictEqual(got, outcome(modelOf, recipe));
  const kind = got.threw ?? (got.returned.length > 0 ? 'points' : 'no points');
  seen[kind] = (seen[kind] ?? 0) + 1;
});

const ROUNDS = 5;
const sizes = [];
for (let round = 0; round < ROUNDS; ++round) {
  fc.assert(property, { numRuns: Number(calls) / ROUNDS, seed: Number(seed) + round });
  globalThis.gc();
  sizes.push(process.memoryUsage.rss());
}
const growth = (sizes[ROUNDS - 1] - sizes[0]) / 2 ** 20;
console.log(JSON.stringify({ seen, growth }));
