// Errors of the command line: which option, what it takes, what came, and what was probably meant.

import { ChartTraceError } from '../lib/errors.js';

/**
 * An option whose value, or whose company, does not do.
 * @param {string} option As it is typed, such as `--tolerance`.
 * @param {string} expected
 * @param {unknown} received
 * @param {string} [hint]
 */
export function usageError(option, expected, received, hint) {
  const shown = typeof received === 'string' ? `'${received}'` : String(received);
  const came = received === undefined ? 'it is missing' : `received ${shown}`;
  const message = `${option}: expected ${expected}, but ${came}.`;
  return new ChartTraceError(message, { code: 'ERR_USAGE', expected, received, hint });
}

/**
 * An error of the library about what an option said, as an error of that option.
 * @param {string} option
 * @param {unknown} error
 */
export function asUsageError(option, error) {
  if (!(error instanceof ChartTraceError)) return error;
  const { message, expected, received, hint } = error;
  const text = message.startsWith(option)
    ? message
    : `${option}: ${message[0].toLowerCase()}${message.slice(1)}`;
  return new ChartTraceError(text, { code: 'ERR_USAGE', expected, received, hint, cause: error });
}

/**
 * What was probably meant: the word that begins so, or else the nearest one, if it is near.
 * @param {string} word
 * @param {readonly string[]} words
 * @returns {string | undefined} A sentence.
 */
export function didYouMean(word, words) {
  const longer = words.find((candidate) => word.length > 1 && candidate.startsWith(word));
  if (longer) return `Did you mean ${longer}?`;
  const [nearest] = words
    .map((candidate) => ({ candidate, edits: editsBetween(word, candidate) }))
    .sort((a, b) => a.edits - b.edits);
  const isNear = nearest && nearest.edits <= Math.max(1, Math.ceil(nearest.candidate.length / 3));
  return isNear ? `Did you mean ${nearest.candidate}?` : undefined;
}

/**
 * How many letters to insert, to remove, to change or to swap with the next one.
 * @param {string} from
 * @param {string} to
 */
function editsBetween(from, to) {
  /** @type {number[][]} */
  const edits = [Array.from({ length: to.length + 1 }, (_, j) => j)];
  for (let i = 1; i <= from.length; ++i) {
    edits.push([i]);
    for (let j = 1; j <= to.length; ++j) {
      const changed = edits[i - 1][j - 1] + (from[i - 1] === to[j - 1] ? 0 : 1);
      edits[i][j] = Math.min(changed, edits[i - 1][j] + 1, edits[i][j - 1] + 1);
      const isSwap = i > 1 && j > 1 && from[i - 1] === to[j - 2] && from[i - 2] === to[j - 1];
      if (isSwap) edits[i][j] = Math.min(edits[i][j], edits[i - 2][j - 2] + 1);
    }
  }
  return edits[from.length][to.length];
}
