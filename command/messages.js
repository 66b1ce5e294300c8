// All that is said to people, on the standard error: errors, notes and the state of a run. With
// `--json` errors are lines of JSON there, and nothing else is.

import process from 'node:process';
import { jsonLine } from '../lib/json.js';
import { errorReport } from '../lib/reports/report.js';
import { bold, columnsOf, hasColours, red, visible, wrap } from './terminal.js';

/** @typedef {import('../lib/reports/report.js').ErrorReport} ErrorWords */

const REASONS = new Map([
  ['ENOENT', 'no such file'],
  ['EACCES', 'not allowed to read or write it'],
  ['EPERM', 'not allowed to read or write it'],
  ['EISDIR', 'it is a folder'],
  ['ENOTDIR', 'a folder in its path is a file'],
  ['ENOSPC', 'no space left'],
  ['EDQUOT', 'no space left for this user'],
  ['EFBIG', 'it would become too large'],
  ['EROFS', 'the file system can only be read'],
  ['EEXIST', 'it exists'],
  ['ENAMETOOLONG', 'its name is too long'],
  ['ELOOP', 'its links go round in a circle'],
  ['EMFILE', 'too many files are open'],
]);

/**
 * Describes an error in plain data.
 * @param {any} error Whatever was thrown.
 * @returns {ErrorWords}
 */
export function wordsOf(error) {
  const reason = REASONS.get(error?.code);
  if (!reason) return errorReport(error);
  return errorReport({ code: 'ERR_FILE', message: `${reason} (${error.code})` });
}

/**
 * @typedef {object} Messages
 * @property {(error: ErrorWords, file?: string) => void} error About an image, or the whole run.
 * @property {(text: string, file?: string) => void} note What to know, but for `--quiet`.
 */

/**
 * @param {{json?: boolean, quiet?: boolean}} options
 * @param {{write: (text: string) => unknown, isTTY?: boolean, columns?: number}} [stream]
 * @returns {Messages}
 */
export function makeMessages({ json = false, quiet = false }, stream = process.stderr) {
  const isColoured = hasColours(stream);
  const width = Math.min(100, columnsOf(stream));
  const say = (/** @type {string} */ text) => stream.write(`${text}\n`);
  const from = (/** @type {string | undefined} */ file) =>
    file === undefined ? 'chart-trace' : `chart-trace: ${visible(file)}`;
  return {
    error: (words, file) => {
      if (json) return void say(jsonLine({ ...(file !== undefined && { file }), error: words }));
      const label = `${from(file)}:`;
      const [first, ...rest] = wrap(`${label} ${visible(words.message)}`, width - 2).split('\n');
      const head = isColoured ? first.replace(label, () => bold(red(label))) : first;
      say([head, ...rest.map((line) => `  ${line}`)].join('\n'));
      if (words.hint) say(wrap(visible(words.hint), width, '  '));
    },
    note: (text, file) => {
      if (quiet || json) return;
      const lines = wrap(`${from(file)}: ${visible(text)}`, width - 2).split('\n');
      say(lines.join('\n  '));
    },
  };
}
