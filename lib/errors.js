// The errors of the package: what was expected, what came instead, and what to do about it.

/**
 * @typedef {object} Details
 * @property {string} code What kind of error it is, for programs: `'ERR_ARGUMENT'`, `'ERR_COLOUR'`,
 *   `'ERR_PICTURE'`, `'ERR_DECODER_MISSING'`, `'ERR_LIMIT'` and so on.
 * @property {string} [expected] In words.
 * @property {unknown} [received]
 * @property {string} [hint] What to do.
 * @property {unknown} [cause] The error behind this one.
 */

/** An error that a caller can act on. */
export class ChartTraceError extends Error {
  /**
   * @param {string} message
   * @param {Details} details
   */
  constructor(message, { code, expected, received, hint, cause }) {
    super(message, cause === undefined ? undefined : { cause });
    this.name = 'ChartTraceError';
    this.code = code;
    this.expected = expected;
    this.received = received;
    this.hint = hint;
  }
}

/** A stated limit was exceeded: more pixels or compartments than are handled. */
export class LimitError extends RangeError {
  /**
   * @param {string} message
   * @param {Omit<Details, 'code'>} details
   */
  constructor(message, { expected, received, hint, cause }) {
    super(message, cause === undefined ? undefined : { cause });
    this.name = 'LimitError';
    this.code = 'ERR_LIMIT';
    this.expected = expected;
    this.received = received;
    this.hint = hint;
  }
}

/**
 * Refuses an argument.
 * @param {string} what
 * @param {string} expected
 * @param {unknown} received
 * @param {string} [hint]
 * @returns {never}
 */
export function refuse(what, expected, received, hint) {
  const message = `Expected ${what} to be ${expected}, but received ${inWords(received)}.`;
  throw new ChartTraceError(message, { code: 'ERR_ARGUMENT', expected, received, hint });
}

/**
 * Shows a value in a message: nothing long, and whatever it is, no failure.
 * @param {unknown} received
 */
function inWords(received) {
  if (typeof received === 'string') return `'${received}'`;
  if (typeof received !== 'object' || received === null) return String(received);
  try {
    const text = JSON.stringify(received);
    if (text.length <= 100) return text;
  } catch {
    // Circular, or with a toJSON that throws: its kind says enough.
  }
  return Object.prototype.toString.call(received);
}

/**
 * @param {string} name
 * @param {unknown} value
 * @param {boolean} fits
 * @param {string} expected
 */
export function checkNumber(name, value, fits, expected) {
  if (typeof value !== 'number' || !Number.isFinite(value) || !fits) refuse(name, expected, value);
}
