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
