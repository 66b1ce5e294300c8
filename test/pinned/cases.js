// Thousands of pictures in numbers, made from seeds, and one hash of all results for each mode. Plain
// JavaScript that needs nothing of its host, so that Node.js on any processor and a browser can tell
// whether they get the same bits. Only arithmetic that is exact by its standard is used: the
// functions of Math that approximate differ between hosts.

/** How many pictures each mode is given. */
export const CASES_OF_A_MODE = 300;

/** The modes, in the order in which seeds choose among them. */
export const MODES = [
  'point_density',
  'points_curves-fission',
  'points_curves-horizontal',
  'points-horizontal',
  'points-fission',
  'curves-horizontal',
  'curves-fission',
  'bar_horizontal-fission',
  'bar_vertical-fission',
  'bar_horizontal-horizontal',
  'bar_vertical-horizontal',
  'histogram',
  'step_size_graph',
];

const PIXEL_STEPS = [1, 1, 1, 2, 0.5, 1.5, 3.7, 0.1];
const FRACTIONS = [0.05, 0.05, 0.051, 0.052, 0.053, 0.054, 0.055, 0.3, 1, 0];
const STRANGE = [NaN, Infinity, -Infinity, -0, 1e17, -1e-300];

/** @typedef {() => number} Random From 0 up to, not including, 1. */

/**
 * @param {number} seed
 * @returns {Random}
 */
function randomNumbers(seed) {
  let state = seed >>> 0;
  return () => {
    state = (state + 0x6d2b79f5) >>> 0;
    let mixed = Math.imul(state ^ (state >>> 15), state | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 2 ** 32;
  };
}

/** @param {Random} random */
const below = (random, limit = 1) => Math.floor(random() * limit);

/**
 * What a picture shows, as functions that tell whether a pixel belongs to it.
 * @type {((random: Random, width: number, height: number) => (x: number, y: number) => boolean)[]}
 */
const SHAPES = [
  function discs(random, width, height) {
    const all = Array.from({ length: 1 + below(random, 8) }, () => ({
      x: random() * width,
      y: random() * height,
      r: 1 + random() * 4,
    }));
    return (x, y) => all.some((disc) => (x - disc.x) ** 2 + (y - disc.y) ** 2 <= disc.r * disc.r);
  },
  function bars(random, width, height) {
    const gap = 3 + below(random, 6);
    const tops = Array.from({ length: Math.ceil(width / gap) }, () => random() * height);
    return (x, y) => x % gap > 1 && y >= tops[Math.floor(x / gap)];
  },
  function columns(random, width, height) {
    const span = 2 + below(random, 7);
    const tops = Array.from({ length: Math.ceil(width / span) }, () => random() * height);
    return (x, y) => y >= tops[Math.floor(x / span)];
  },
  function steps(random, width, height) {
    const span = 4 + below(random, 8);
    const rows = Array.from({ length: Math.ceil(width / span) + 1 }, () => below(random, height));
    return (x, y) => {
      const i = Math.floor(x / span);
      const [low, high] = [rows[i], rows[i + 1]].sort((a, b) => a - b);
      return y === rows[i] || (x % span === span - 1 && y >= low && y <= high);
    };
  },
  function curve(random, width, height) {
    const [a, b] = [random() * 4 - 2, random() * height];
    const thickness = 0.6 + 2 * random();
    return (x, y) => Math.abs(y - (a * (x - width / 2) ** 2) / width - b) <= thickness;
  },
  function noise(random) {
    const share = random() * 0.4;
    return () => random() < share;
  },
];

/**
 * @param {Random} random
 * @param {{x: number[], y: number[]}} points Whose order is changed in place.
 */
function shuffle(random, { x, y }) {
  for (let i = x.length - 1; i > 0; --i) {
    const j = below(random, i + 1);
    [x[i], x[j]] = [x[j], x[i]];
    [y[i], y[j]] = [y[j], y[i]];
  }
}

/**
 * The points of a picture, most of them whole pixels in raster order, and the pixel step.
 * @param {Random} random
 */
function picture(random) {
  const large = below(random, 12) === 0;
  const width = 4 + below(random, large ? 120 : 30);
  const height = 4 + below(random, large ? 60 : 20);
  const [left, top] = [below(random, 900) - 100, below(random, 900)];
  const isPart = SHAPES[below(random, SHAPES.length)](random, width, height);
  /** @type {{x: number[], y: number[]}} */
  const points = { x: [], y: [] };
  for (let y = 0; y < height; ++y)
    for (let x = 0; x < width; ++x)
      if (isPart(x, y)) {
        points.x.push(left + x);
        points.y.push(top + y);
      }
  let pixelStep = PIXEL_STEPS[below(random, PIXEL_STEPS.length)];
  const kind = below(random, 12);
  if (kind < 3) shuffle(random, points);
  if (kind === 3) points.x = points.x.map((x) => x + random() * 0.9);
  if (kind === 4) points.y = points.y.map((y) => y * 0.3 + random());
  if (kind === 5 && points.x.length > 0) {
    const hit = below(random, points.x.length);
    points[random() < 0.5 ? 'x' : 'y'][hit] = STRANGE[below(random, STRANGE.length)];
  }
  if (kind > 8) {
    pixelStep = [0.1, 0.7, 1.3][kind - 9];
    points.x = points.x.map((x) => x * pixelStep);
    points.y = points.y.map((y) => y * pixelStep);
  }
  return { ...points, pixelStep };
}

/**
 * A cloud that is its own mirror image in the diagonal on which it begins. Twins are equally far from
 * there, to the last bit, unless a processor leaves out to round one of the two squares.
 * @param {Random} random
 */
function mirrored(random) {
  const middle = 10 * random();
  const [x, y] = [[middle], [middle]];
  for (let twins = 2 + below(random, 30); twins > 0; --twins) {
    const [a, b] = [20 * random(), 20 * random()];
    x.push(a, b);
    y.push(b, a);
  }
  return { x, y, pixelStep: 2 + 10 * random() };
}

/** Takes bits in and tells two words of 32 bits. */
class Hash {
  a = 0x9e3779b9;
  b = 0x85ebca6b;

  /** @param {number} word */
  addWord(word) {
    this.a = Math.imul(this.a ^ word, 0x01000193);
    this.a ^= this.a >>> 13;
    this.b = Math.imul(this.b + word, 0x9e3779b1);
    this.b = ((this.b << 13) | (this.b >>> 19)) ^ this.a;
  }

  /**
   * All bits of a number, but one NaN is like another: WebAssembly leaves open which one it makes.
   * @param {number} number
   */
  addNumber(number) {
    const view = new DataView(new ArrayBuffer(8));
    view.setFloat64(0, number);
    this.addWord(Number.isNaN(number) ? 0x7ff80000 : view.getInt32(0));
    this.addWord(Number.isNaN(number) ? 0 : view.getInt32(4));
  }

  toString() {
    return [this.a, this.b].map((word) => (word >>> 0).toString(16).padStart(8, '0')).join('');
  }
}

/**
 * Traces the pictures of one mode.
 * @param {import('../../lib/tracing/native.js').Trace} trace
 * @param {string} mode
 * @param {number} first A seed that no other mode begins with.
 * @returns {{hash: string, numbers: number, failures: number}} `numbers`: how many all results have.
 */
function pinned(trace, mode, first) {
  const hash = new Hash();
  let [numbers, failures] = [0, 0];
  for (let i = 0; i < CASES_OF_A_MODE; ++i) {
    const random = randomNumbers(first + i);
    const { x, y, pixelStep } = below(random, 4) > 0 ? picture(random) : mirrored(random);
    const fraction = FRACTIONS[below(random, FRACTIONS.length)];
    /** @type {ArrayLike<number>} */
    let result = [];
    try {
      result = trace(x, y, x.length, pixelStep, mode, fraction);
    } catch (error) {
      ++failures;
      for (const letter of String(error)) hash.addWord(letter.charCodeAt(0));
    }
    numbers += result.length;
    hash.addWord(result.length);
    for (let at = 0; at < result.length; ++at) hash.addNumber(result[at]);
  }
  return { hash: hash.toString(), numbers, failures };
}

/**
 * What `trace` gives on this host.
 * @param {import('../../lib/tracing/native.js').Trace} trace
 */
export function pinnedResults(trace) {
  return Object.fromEntries(
    MODES.map((mode, index) => [mode, pinned(trace, mode, 100_000 * (index + 1))]),
  );
}
