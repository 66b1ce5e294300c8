// Reports as text in rows and columns, for spreadsheets and programs. Numbers are written with as
// many digits as it takes to read back the very same double; a cell without a value is empty.

import { columnsFor, kindsOf, rowsOf } from './columns.js';

/** @typedef {import('./columns.js').Cell} Cell */
/** @typedef {import('./report.js').Report} Report */

/**
 * @typedef {object} SeparatedOptions
 * @property {string[]} [columns] Their names, in the order wanted; by default all that the kinds of
 *   the report's series have. A program that writes picture by picture states them, so that every
 *   part has the same ones.
 * @property {boolean} [header] Whether the first row is that of the names, which is the default.
 * @property {boolean} [guard] Whether an apostrophe goes before texts that a spreadsheet would run
 *   as a formula, such as `=1+1` for the name of a category, which is the default.
 */

/**
 * Writes a report as CSV, as RFC 4180 has it: commas, quotes where they are needed and every row
 * ended by a carriage return and a line feed.
 * @param {Report} report
 * @param {SeparatedOptions} [options]
 * @returns {string}
 */
export function toCsv(report, options) {
  const quoted = (/** @type {string} */ text) => (/[",\r\n]/.test(text) ? inQuotes(text) : text);
  return separated(report, options, { separator: ',', end: '\r\n', quoted });
}

/**
 * Writes a report as tab-separated values. A row is always one line: tabs and line breaks in texts
 * become blanks. Only a text that begins with a quote is put in quotes.
 * @param {Report} report
 * @param {SeparatedOptions} [options]
 * @returns {string}
 */
export function toTsv(report, options) {
  const quoted = (/** @type {string} */ text) => {
    const inLine = text.replace(/\r\n|[\t\r\n]/g, ' ');
    return inLine.startsWith('"') ? inQuotes(inLine) : inLine;
  };
  return separated(report, options, { separator: '\t', end: '\n', quoted });
}

/** @param {string} text */
const inQuotes = (text) => `"${text.replaceAll('"', '""')}"`;

/**
 * @param {Report} report
 * @param {SeparatedOptions | undefined} options
 * @param {{separator: string, end: string, quoted: (text: string) => string}} syntax
 */
function separated(report, options = {}, { separator, end, quoted }) {
  const { columns = columnsFor(kindsOf(report)), header = true, guard = true } = options;
  /** @param {Cell} cell */
  const written = (cell) => {
    if (typeof cell === 'string') return quoted(guard ? guarded(cell) : cell);
    return cell === null ? '' : String(cell);
  };
  const lines = header ? [columns.join(separator) + end] : [];
  for (const row of rowsOf(report, columns)) lines.push(row.map(written).join(separator) + end);
  return lines.join('');
}

// What spreadsheets take for the beginning of a formula, wide forms of the signs included. Some look
// past blanks and line breaks in front of it.
const FORMULA = /^[\s\0]*[=+\-@\uff1d\uff0b\uff0d\uff20]|^[\t\r\n\0]/;
const NUMBER = /^[+-]?\d+(?:\.\d+)?(?:e[+-]?\d+)?$/i;

/**
 * A text that no spreadsheet runs: a sign and digits are a number, all else that begins like a
 * formula gets an apostrophe, the sign for text.
 * @param {string} text
 */
const guarded = (text) => (FORMULA.test(text) && !NUMBER.test(text) ? `'${text}` : text);
