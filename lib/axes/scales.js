// The scales of axes. A scale turns the values of an axis into positions, numbers that are spread
// evenly along the axis, and back.

import { formatDate, formatZone, parseDate, parseZone } from './dates.js';
import { ChartTraceError } from '../errors.js';

/** @typedef {'linear' | 'log' | 'log10' | 'log2' | 'ln' | 'date' | 'category'} ScaleName */

/**
 * A value as it is read: numbers also as text, dates as ISO 8601 text or as `Date`, categories by
 * their names.
 * @typedef {number | string | Date} Value
 */

/**
 * @typedef {object} ScaleDescription
 * @property {ScaleName} scale
 * @property {number} [base] Of a `'log'` scale, 10 by default; above 0 and not 1. The base decides
 *   nothing but which values come out as exact powers.
 * @property {string} [zone] Of a `'date'` scale: the offset from UTC in which dates are written, and
 *   read where they state none: `'UTC'` or one such as `'+02:00'`. By default the offset that the
 *   first reference states, otherwise UTC.
 * @property {string[]} [categories] Of a `'category'` scale: all names in their order along the
 *   axis, evenly spaced. By default the references are all there are.
 */

/**
 * @typedef {object} Scale
 * @property {string} expects What values must be, in words.
 * @property {(value: unknown) => number | undefined} read The position of a value; undefined for
 *   what is no value of this scale.
 * @property {(position: number, perPixel: number) => number | string | null} write The value at a
 *   position: a number, an ISO 8601 date, or the name of the nearest category. Null where there is
 *   no such category or date. `perPixel`: how much position a pixel covers.
 * @property {(value: unknown, perPixel: number) => number | string | null} canonical A value as
 *   `write` writes it, without the rounding of the way to its position and back.
 * @property {boolean} isNearest Whether many positions share a value.
 * @property {ScaleDescription} description With nothing left to defaults.
 */

/**
 * Makes a scale.
 * @param {ScaleDescription} description
 * @param {Value[]} values Those of the references, in their order along the axis.
 * @param {string} axis What messages call the axis.
 * @returns {Scale}
 */
export function makeScale(description, values, axis) {
  const { scale, base, zone, categories } = description;
  const make = Object.hasOwn(SCALES, scale) ? SCALES[scale] : undefined;
  if (!make) {
    const expected = `one of the scales ${Object.keys(SCALES).join(', ')}`;
    throw wrongScale(axis, expected, scale);
  }
  for (const [option, given, only] of /** @type {const} */ ([
    ['base', base, 'log'],
    ['zone', zone, 'date'],
    ['categories', categories, 'category'],
  ]))
    if (given !== undefined && scale !== only)
      throw wrongScale(axis, `no ${option} on a ${scale} scale`, given);
  return make(description, values, axis);
}

/**
 * @param {string} axis
 * @param {string} expected
 * @param {unknown} received
 * @param {string} [hint]
 */
function wrongScale(axis, expected, received, hint) {
  const message = `${axis}: expected ${expected}, but received ${JSON.stringify(received)}.`;
  return new ChartTraceError(message, { code: 'ERR_AXIS', expected, received, hint });
}

/** @type {Record<string, (d: ScaleDescription, values: Value[], axis: string) => Scale>} */
const SCALES = {
  linear: linearScale,
  log: ({ base = 10 }, _, axis) => logScale({ scale: 'log', base }, base, axis),
  log10: (_description, _values, axis) => logScale({ scale: 'log10' }, 10, axis),
  log2: (_description, _values, axis) => logScale({ scale: 'log2' }, 2, axis),
  ln: (_description, _values, axis) => logScale({ scale: 'ln' }, Math.E, axis),
  date: dateScale,
  category: categoryScale,
};

/** @returns {Scale} */
function linearScale() {
  return {
    expects: 'a number, at most 1e300 in size',
    // So that differences, and their products with pixels, are numbers too.
    read: (value) => {
      const number = readNumber(value);
      return number !== undefined && Math.abs(number) <= 1e300 ? number : undefined;
    },
    write: (position) => position,
    canonical: (value) => readNumber(value) ?? null,
    isNearest: false,
    description: { scale: 'linear' },
  };
}

/**
 * Reads a number, a decimal one such as `'-2.5e3'` or a power such as `'10^-3'`, as ticks show them.
 * @param {unknown} value
 * @returns {number | undefined} Finite.
 */
export function readNumber(value) {
  if (typeof value === 'number') return Number.isFinite(value) ? value : undefined;
  if (typeof value !== 'string') return undefined;
  const text = value.trim().replaceAll('\u2212', '-');
  const number = String.raw`[+-]?(?:\d+\.?\d*|\.\d+)(?:e[+-]?\d+)?`;
  const parts = new RegExp(`^(${number})(?:\\^(${number}))?$`, 'i').exec(text);
  if (!parts) return undefined;
  const read = parts[2] ? power(Number(parts[1]), Number(parts[2])) : Number(parts[1]);
  return Number.isFinite(read) ? read : undefined;
}

/**
 * A power, the nearest double for the whole powers of ten.
 * @param {number} base
 * @param {number} exponent
 */
function power(base, exponent) {
  return base === 10 && Number.isInteger(exponent) ? Number(`1e${exponent}`) : base ** exponent;
}

/**
 * @param {ScaleDescription} description
 * @param {number} base
 * @param {string} axis
 * @returns {Scale}
 */
function logScale(description, base, axis) {
  if (!(typeof base === 'number' && base > 0 && base !== 1 && Number.isFinite(base)))
    throw wrongScale(axis, 'a base above 0 that is not 1', base);
  return {
    expects: 'a number above 0',
    read: (value) => {
      const number = readNumber(value);
      return number === undefined || number <= 0 ? undefined : logarithm(number, base);
    },
    write: (position) => power(base, position),
    canonical: (value) => readNumber(value) ?? null,
    isNearest: false,
    description,
  };
}

/**
 * A logarithm, a whole number for the whole powers of the base.
 * @param {number} value
 * @param {number} base
 */
function logarithm(value, base) {
  const special = new Map([
    [10, Math.log10],
    [2, Math.log2],
    [Math.E, Math.log],
  ]).get(base);
  const exponent = special ? special(value) : Math.log(value) / Math.log(base);
  const whole = Math.round(exponent);
  return power(base, whole) === value ? whole : exponent;
}

/**
 * @param {ScaleDescription} description
 * @param {Value[]} values
 * @param {string} axis
 * @returns {Scale}
 */
function dateScale({ zone }, values, axis) {
  const [first] = values;
  const stated = typeof first === 'string' ? parseDate(first)?.zone : undefined;
  const minutes = zone === undefined ? (stated ?? 0) : parseZone(zone);
  if (minutes === undefined)
    throw wrongScale(
      axis,
      "a zone that is 'UTC' or an offset such as '+02:00'",
      zone,
      'State the offset: the hours of a place change within the year.',
    );
  const read = (/** @type {unknown} */ value) => {
    if (value instanceof Date) return Number.isNaN(value.getTime()) ? undefined : value.getTime();
    return typeof value === 'string' ? parseDate(value, minutes)?.time : undefined;
  };
  // A thousandth of a second is too coarse where it is more than a thousandth of a pixel.
  const write = (/** @type {number} */ position, /** @type {number} */ perPixel) =>
    formatDate(position, { zone: minutes, digits: perPixel < 1000 ? 6 : 3 });
  return {
    expects: 'an ISO 8601 date that the calendar has, such as 2024-05-01 or 2024-05-01T12:30+02:00',
    read,
    write,
    canonical: (value, perPixel) => write(read(value) ?? NaN, perPixel),
    isNearest: false,
    description: { scale: 'date', zone: minutes === 0 ? 'UTC' : formatZone(minutes) },
  };
}

/**
 * @param {ScaleDescription} description
 * @param {Value[]} values
 * @param {string} axis
 * @returns {Scale}
 */
function categoryScale({ categories }, values, axis) {
  const given = categories ?? values;
  if (!Array.isArray(given) || !given.every((name) => typeof name === 'string'))
    throw wrongScale(axis, 'names of categories', given);
  const names = /** @type {string[]} */ ([...given]);
  const twice = names.find((name, i) => names.indexOf(name) !== i);
  if (twice !== undefined) throw wrongScale(axis, 'different names of categories', twice);
  return {
    expects: `one of the categories ${names.map((name) => `'${name}'`).join(', ')}`,
    read: (value) => {
      const at = names.findIndex((name) => name === value);
      return at < 0 ? undefined : at;
    },
    write: (position) => names[Math.round(position)] ?? null,
    canonical: (value) => String(value),
    isNearest: true,
    description: { scale: 'category', categories: names },
  };
}
