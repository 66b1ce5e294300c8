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
  return separated(report, options, csvRow);
}

/**
 * Writes a report as tab-separated values. A row is always one line: tabs and line breaks in texts
 * become blanks. Only a text that begins with a quote is put in quotes.
 * @param {Report} report
 * @param {SeparatedOptions} [options]
 * @returns {string}
 */
export function toTsv(report, options) {
  return separated(report, options, tsvRow);
}

/**
 * Writes a row as CSV.
 * @param {Cell[]} cells
 * @param {boolean} [guard] As in the options of a report.
 * @returns {string}
 */
export function csvRow(cells, guard = true) {
  const quoted = (/** @type {string} */ text) => (/[",\r\n]/.test(text) ? inQuotes(text) : text);
  return `${written(cells, guard, quoted).join(',')}\r\n`;
}

/**
 * Writes a row as tab-separated values.
 * @param {Cell[]} cells
 * @param {boolean} [guard] As in the options of a report.
 * @returns {string}
 */
export function tsvRow(cells, guard = true) {
  const quoted = (/** @type {string} */ text) => {
    const inLine = text.replace(/\r\n|[\t\r\n]/g, ' ');
    return inLine.startsWith('"') ? inQuotes(inLine) : inLine;
  };
  return `${written(cells, guard, quoted).join('\t')}\n`;
}

/** @param {string} text */
const inQuotes = (text) => `"${text.replaceAll('"', '""')}"`;

/**
 * The texts of cells.
 * @param {Cell[]} cells
 * @param {boolean} guard
 * @param {(text: string) => string} quoted
 */
function written(cells, guard, quoted) {
  return cells.map((cell) => {
    if (typeof cell === 'string') return quoted(guard ? guarded(cell) : cell);
    return cell === null ? '' : String(cell);
  });
}

/**
 * @param {Report} report
 * @param {SeparatedOptions | undefined} options
 * @param {typeof csvRow} row
 */
function separated(report, options = {}, row) {
  const { columns = columnsFor(kindsOf(report)), header = true, guard = true } = options;
  const lines = header ? [row(columns, guard)] : [];
  for (const cells of rowsOf(report, columns)) lines.push(row(cells, guard));
  return lines.join('');
}

// What spreadsheets take for the beginning of a formula, wide forms of the signs included. Some look
// past blanks, line breaks and characters that nobody sees in front of it.
const FORMULA = /^[\s\p{Cc}\p{Cf}]*[=+\-@\uff1d\uff0b\uff0d\uff20]|^[\t\r\n\0]/u;
const NUMBER = /^[+-]?\d+(?:\.\d+)?(?:e[+-]?\d+)?$/i;

/**
 * A text that no spreadsheet runs: a sign and digits are a number, all else that begins like a
 * formula gets an apostrophe, the sign for text.
 * @param {string} text
 */
const guarded = (text) => (FORMULA.test(text) && !NUMBER.test(text) ? `'${text}` : text);
