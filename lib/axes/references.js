// What all axes know of their references: how to check them and how to name one in an error.

import { ChartTraceError } from '../errors.js';

/** @typedef {import('./scales.js').Scale} Scale */
/** @typedef {import('./scales.js').Value} Value */
/** @typedef {import('./axes.js').Pair} Pair */

/**
 * The nearest whole number of 64ths of a pixel. Such positions come back from their values exactly:
 * they are tried first.
 * @param {number} at
 */
export const onGrid = (at) => Math.round(at * 64) / 64;

/**
 * @param {string} where
 * @param {string} expected
 * @param {unknown} received
 * @param {string} [hint]
 */
export function axisError(where, expected, received, hint) {
  const shown = typeof received === 'string' ? `'${received}'` : JSON.stringify(received);
  const message = `${where}: expected ${expected}, but received ${shown ?? String(received)}.`;
  return new ChartTraceError(message, { code: 'ERR_AXIS', expected, received, hint });
}

/**
 * What messages call a reference.
 * @param {{pixel: (number | Pair)[], value: (Value | Value[])[]}} description
 * @param {number} i
 * @param {string} name That of the axis.
 */
export const referenceName = ({ pixel, value }, i, name) =>
  `${name}, reference ${i + 1} (${String(pixel[i])}=${String(value[i])})`;

/**
 * @param {{pixel: any[], value: any[]}} description
 * @param {number} i
 * @param {string} name
 * @param {string} expected
 * @param {unknown} received
 */
export const wrongReference = (description, i, name, expected, received) =>
  axisError(referenceName(description, i, name), expected, received);

/**
 * @template {{pixel: unknown[], value: unknown[]}} D
 * @param {D} description
 * @param {number} least
 * @param {string} name
 * @returns {D}
 */
export function checkedReferences(description, least, name) {
  const { pixel, value } = description ?? {};
  if (!Array.isArray(pixel) || !Array.isArray(value))
    throw axisError(name, 'lists of references, pixel and value', description);
  if (pixel.length !== value.length)
    throw axisError(name, `as many values as pixels, ${pixel.length}`, value);
  if (pixel.length < least)
    throw axisError(name, `${least === 2 ? 'two' : 'three'} references or more`, pixel);
  return description;
}

/** @param {Value} value */
export const plain = (value) => (value instanceof Date ? value.toISOString() : value);

/**
 * @param {Scale} scale
 * @param {Value} value
 * @param {string} name
 */
export function positionOf(scale, value, name) {
  const position = scale.read(value);
  if (position === undefined) throw axisError(name, scale.expects, value);
  return position;
}

/** @param {number[]} values */
export const mean = (values) => values.reduce((sum, value) => sum + value, 0) / values.length;
