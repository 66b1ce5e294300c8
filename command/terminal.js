// What a terminal can show.

import process from 'node:process';

export { visible } from '../lib/reports/table.js';

/** @typedef {{isTTY?: boolean, columns?: number}} Stream */

/**
 * Whether text to a stream may be coloured: https://no-color.org.
 * @param {Stream} stream
 * @param {Record<string, string | undefined>} [environment]
 */
export const hasColours = (stream, environment = process.env) =>
  stream.isTTY === true && !environment.NO_COLOR && environment.TERM !== 'dumb';

/**
 * Whether a line can be written over again.
 * @param {Stream} stream
 * @param {Record<string, string | undefined>} [environment]
 */
export const canRewrite = (stream, environment = process.env) =>
  stream.isTTY === true && environment.TERM !== 'dumb';

/**
 * @param {Stream} stream
 * @returns {number} Of characters in a line.
 */
export const columnsOf = ({ columns }) => (columns && columns > 20 ? columns : 80);

/** @param {string} text */
export const red = (text) => `\x1b[31m${text}\x1b[39m`;

/** @param {string} text */
export const bold = (text) => `\x1b[1m${text}\x1b[22m`;

/**
 * Two characters of a colour.
 * @param {import('../lib/selection/colours.js').Rgb} rgb
 */
export const swatch = (rgb) => `\x1b[48;2;${rgb.join(';')}m  \x1b[49m`;

/**
 * Breaks text into lines between its words.
 * @param {string} text
 * @param {number} width
 * @param {string} [indent] Before every line.
 */
export function wrap(text, width, indent = '') {
  const lines = [''];
  for (const word of text.split(' ')) {
    const last = lines[lines.length - 1];
    const longer = last === '' ? word : `${last} ${word}`;
    if (last !== '' && indent.length + longer.length > width) lines.push(word);
    else lines[lines.length - 1] = longer;
  }
  return lines.map((line) => indent + line).join('\n');
}
