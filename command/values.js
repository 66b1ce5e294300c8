// Reads what stands behind an option: text in, what the library takes out.

import { parseReferences } from '../lib/axes/axes.js';
import { formatColour, parseColour } from '../lib/selection/colours.js';
import { asUsageError, didYouMean, usageError } from './usage.js';

/**
 * Reads one of a few words.
 * @template {string} T
 * @param {string} option
 * @param {readonly T[]} words
 * @returns {(text: string) => T}
 */
export const oneOf = (option, words) => (text) => {
  const found = words.find((word) => word === text);
  if (found !== undefined) return found;
  throw usageError(option, `one of ${words.join(', ')}`, text, didYouMean(text, words));
};

/**
 * Reads a number.
 * @param {string} option
 * @param {string} expected In words.
 * @param {(value: number) => boolean} fits
 * @returns {(text: string) => number}
 */
export const number = (option, expected, fits) => (text) => {
  const value = text.trim() === '' ? NaN : Number(text);
  if (!Number.isFinite(value) || !fits(value)) throw usageError(option, expected, text);
  return value;
};

/**
 * Reads a colour.
 * @param {string} option
 * @returns {(text: string) => string} As six hexadecimal digits.
 */
export const colour = (option) => (text) => {
  try {
    return formatColour(parseColour(text));
  } catch (error) {
    throw asUsageError(option, error);
  }
};

/**
 * Reads colours, one each time that the option stands there.
 * @param {string} option
 * @returns {(text: string, before: string[] | undefined) => string[]}
 */
export const colours =
  (option) =>
  (text, before = []) => [...before, colour(option)(text)];

/**
 * Reads a rectangle.
 * @param {string} option
 * @returns {(text: string) => import('../lib/selection/pixels.js').Box}
 */
export const box = (option) => (text) => {
  const parts = text.split(',').map((part) => (part.trim() === '' ? NaN : Number(part)));
  const [left, top, right, bottom] = parts;
  const isBox =
    parts.length === 4 && parts.every(Number.isFinite) && left <= right && top <= bottom;
  if (isBox) return { left, top, right, bottom };
  throw usageError(
    option,
    'LEFT,TOP,RIGHT,BOTTOM in pixels, such as 77,54,651,461',
    text,
    'The top left pixel is 0,0, and rows are counted downwards: TOP is the smaller one.',
  );
};

/**
 * Reads the references of an axis.
 * @param {string} option
 * @returns {(text: string) => {pixel: number[], value: string[]}}
 */
export const references = (option) => (text) => {
  try {
    const found = parseReferences(text, option);
    if (found.pixel.length > 1) return found;
  } catch (error) {
    throw asUsageError(option, error);
  }
  throw usageError(option, 'two references or more, such as 82=0,402=50', text);
};
