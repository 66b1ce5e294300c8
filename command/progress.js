// How far a run over many images has come: a line of the terminal that is written over and over.

import { canRewrite, columnsOf } from './terminal.js';

/**
 * @typedef {object} Progress
 * @property {() => void} step One more image is done.
 * @property {() => void} clear Takes the line away, to write something else there.
 */

/** Often enough to look alive, seldom enough to cost nothing. */
const INTERVAL_MS = 100;

/**
 * @param {number} total
 * @param {{quiet?: boolean, json?: boolean}} options
 * @param {{write: (text: string) => unknown, isTTY?: boolean, columns?: number}} stream
 * @param {() => number} [now] Milliseconds.
 * @returns {Progress}
 */
export function makeProgress(total, { quiet, json }, stream, now = () => performance.now()) {
  if (quiet || json || total < 2 || !canRewrite(stream)) return { step: () => {}, clear: () => {} };
  const start = now();
  let done = 0;
  let shownAt = -Infinity;
  let isShown = false;
  const clear = () => {
    if (isShown) stream.write('\r\x1b[K');
    isShown = false;
  };
  const show = () => {
    stream.write(`\r${line(done, total, now() - start, columnsOf(stream))}\x1b[K`);
    isShown = true;
    shownAt = now();
  };
  show();
  return {
    step: () => {
      ++done;
      if (done === total) clear();
      else if (now() - shownAt >= INTERVAL_MS) show();
    },
    clear,
  };
}

/**
 * The line: a bar, the count and the time that is left.
 * @param {number} done
 * @param {number} total
 * @param {number} elapsed Milliseconds.
 * @param {number} columns
 */
export function line(done, total, elapsed, columns) {
  const count = `${String(done).padStart(String(total).length)} of ${total} images`;
  // The first images take longer, since the workers start.
  const isKnown = done > 1 && elapsed > 1000;
  const left = isKnown ? `, ${duration((elapsed / done) * (total - done))} left` : '';
  const room = Math.min(30, columns - count.length - left.length - 4);
  if (room < 5) return count.slice(0, columns - 1);
  const filled = Math.round((done / total) * room);
  return ` ${'█'.repeat(filled)}${'░'.repeat(room - filled)} ${count}${left}`;
}

/** @param {number} milliseconds */
function duration(milliseconds) {
  const seconds = Math.ceil(milliseconds / 1000);
  if (seconds < 60) return `${seconds} s`;
  const minutes = Math.round(seconds / 60);
  return minutes < 60 ? `${minutes} min` : `${Math.floor(minutes / 60)} h ${minutes % 60} min`;
}
