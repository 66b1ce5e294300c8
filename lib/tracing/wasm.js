// The extension module in WebAssembly: the same C++, t.cpp included, compiled for a machine that
// every host has. Its Node-API is that of emnapi, in JavaScript. Knows neither Node.js nor browsers.

/**
 * @typedef {import('./native.js').Trace} Trace
 * The two functions of @emnapi/core and @emnapi/runtime that are used. Their own types for CommonJS
 * and for ES modules do not go together.
 * @typedef {object} Emnapi
 * @property {(module: WebAssembly.Module, options: any) => any} instantiateNapiModuleSync
 * @property {() => any} createContext
 */

/**
 * @typedef {object} Instance
 * @property {Trace} trace
 * @property {WebAssembly.Memory} memory
 * @property {(bytes: number) => number} malloc Gives 0 when there is no memory left.
 * @property {(address: number) => void} free
 */

/**
 * Makes `trace` of the bytes of the WebAssembly module, which are compiled at once, on first need.
 * @param {() => BufferSource} bytes
 * @param {Emnapi} emnapi
 * @returns {Trace}
 */
export function traceOf(bytes, emnapi) {
  const compiled = new WebAssembly.Module(bytes());
  /** @type {Instance | undefined} */
  let instance = instantiate(compiled, emnapi);

  // What C++ throws and what the machine throws unwinds no C++: an instance is then given up with all
  // its memory. All other exceptions were handed through by C++ as it does in Node.js.
  return function (...args) {
    const points = readPoints(...args);
    instance ??= instantiate(compiled, emnapi);
    try {
      return points ? traceOfPoints(instance, points, args) : instance.trace(...args);
    } catch (error) {
      if (isAbrupt(error)) instance = undefined;
      throw asRangeError(error);
    }
  };
}

/**
 * @param {WebAssembly.Module} compiled
 * @param {Emnapi} emnapi
 * @returns {Instance}
 */
function instantiate(compiled, { instantiateNapiModuleSync, createContext }) {
  const { instance, napiModule } = instantiateNapiModuleSync(compiled, {
    context: withoutListeners(createContext),
    overwriteImports: (/** @type {object} */ imports) => ({ ...imports, chart_trace: { fail } }),
    beforeInit: (/** @type {any} */ made) => made.instance.exports._initialize(),
  });
  const { exports } = instance;

  /** @param {number} address Of a text that ends with a zero byte. */
  function fail(address) {
    const text = new Uint8Array(exports.memory.buffer).subarray(address);
    throw new RangeError(String.fromCharCode(...text.subarray(0, text.indexOf(0))));
  }

  const { memory, malloc, free } = exports;
  return { trace: napiModule.exports.trace, memory, malloc, free };
}

/**
 * Makes something that would listen for the end of the process, and so would be kept, memory and
 * all, until then.
 * @template Made
 * @param {() => Made} make
 * @returns {Made}
 */
function withoutListeners(make) {
  const host = /** @type {any} */ (globalThis).process;
  const before = host?.listeners?.('beforeExit');
  const made = make();
  if (before)
    for (const listener of host.listeners('beforeExit'))
      if (!before.includes(listener)) host.removeListener('beforeExit', listener);
  return made;
}

/**
 * Reads the points here, where a call out of WebAssembly for each number is saved. That is done only
 * where nobody can tell: when all other arguments are what they have to be, so that reading points
 * is the first thing that can fail or run code of the caller.
 * @param {any[]} args
 * @returns {{x: Float64Array, y: Float64Array} | undefined} Undefined when the module is to read.
 */
function readPoints(...[x, y, count, pixelStep, mode, clusterFraction]) {
  const numbers = [count, pixelStep, clusterFraction];
  const isPlain = typeof mode === 'string' && numbers.every((each) => typeof each === 'number');
  if (!isPlain || !isObject(x) || !isObject(y)) return undefined;
  let [xs, ys] = [new Float64Array(1024), new Float64Array(1024)];
  let i = 0;
  for (; i < count; ++i) {
    const [a, b] = [x[i], y[i]];
    if (typeof a !== 'number' || typeof b !== 'number')
      throw new TypeError('A number was expected');
    if (i === xs.length) [xs, ys] = [enlarged(xs), enlarged(ys)];
    xs[i] = a;
    ys[i] = b;
  }
  return { x: xs.subarray(0, i), y: ys.subarray(0, i) };
}

/**
 * @param {unknown} value
 * @returns {value is any}
 */
function isObject(value) {
  return (typeof value === 'object' && value !== null) || typeof value === 'function';
}

/** @param {Float64Array} numbers */
function enlarged(numbers) {
  const larger = new Float64Array(2 * numbers.length);
  larger.set(numbers);
  return larger;
}

/**
 * Calls the module with points in its own memory, which it reads where they lie.
 * @param {Instance} instance
 * @param {{x: Float64Array, y: Float64Array}} points
 * @param {any[]} args All that `trace` was called with.
 */
function traceOfPoints(
  { trace, memory, malloc, free },
  { x, y },
  [, , , pixelStep, mode, fraction],
) {
  const count = x.length;
  const bytes = count * Float64Array.BYTES_PER_ELEMENT;
  // The views end when memory grows. Some to spare keeps it from growing before they are read.
  const spare = malloc(1e5 + 4 * mode.length);
  const address = malloc(2 * bytes);
  if (spare === 0 || address === 0) throw new RangeError('std::bad_alloc');
  const columns = new Float64Array(memory.buffer, address, count);
  const rows = new Float64Array(memory.buffer, address + bytes, count);
  columns.set(x);
  rows.set(y);
  free(spare);
  const traced = trace(columns, rows, count, pixelStep, mode, fraction);
  free(address);
  return traced;
}

/**
 * Whether an exception may have come from below C++: what C++ throws is a RangeError here, a trap is a
 * RuntimeError, and a call stack that is exhausted ends in a RangeError, with Firefox in an
 * InternalError.
 * @param {any} error
 */
function isAbrupt(error) {
  return (
    error instanceof RangeError ||
    error instanceof WebAssembly.RuntimeError ||
    error?.name === 'InternalError'
  );
}

/**
 * A trap of the machine, such as an exhausted stack, has no message that a caller could use.
 * @param {unknown} error
 */
function asRangeError(error) {
  return error instanceof WebAssembly.RuntimeError
    ? new RangeError(`WebAssembly ended with: ${error.message}`, { cause: error })
    : error;
}
