// The process that draws one SVG, from the standard input to the standard output.

import { closeSync, writeSync } from 'node:fs';
import process from 'node:process';
import { buffer } from 'node:stream/consumers';
import { LimitError } from './errors.js';
import { decodeContent } from './pictures.js';

const { seconds, bytes, parent, ...options } = JSON.parse(process.argv[2]);

/** @param {import('./svg.js').Answer} said */
function answer(said) {
  writeSync(3, JSON.stringify(said));
  closeSync(3);
}

/** @param {any} error */
const fail = ({ code, message, expected, received, hint }) =>
  answer({ error: { code, message, expected, received, hint } });

/**
 * The renderer cannot be stopped, but by the end of the process.
 * @param {string} what
 * @param {string} expected
 */
function giveUp(what, expected) {
  const hint = 'Let a program that you trust with it draw it as a PNG.';
  try {
    fail(new LimitError(`Drawing the SVG takes too ${what}.`, { expected, hint }));
  } finally {
    // There may be nobody to tell it.
    process.kill(process.pid, 'SIGKILL');
  }
}

/** Of the processor; where it is busy with other things, a tenth of the time that has passed. */
function secondsSpent() {
  const { user, system } = process.cpuUsage();
  return Math.max((user + system) / 1e6, performance.now() / 10_000);
}

// The renderer works in a thread beside this one.
const watch = setInterval(() => {
  if (secondsSpent() > seconds) giveUp('long', `at most ${seconds} seconds`);
  if (process.memoryUsage.rss() > bytes) giveUp('much memory', `at most ${bytes} bytes`);
  // What wanted the picture has died.
  if (process.ppid !== parent) process.kill(process.pid, 'SIGKILL');
}, 20);

try {
  const { data, ...size } = await decodeContent(await buffer(process.stdin), options);
  answer(size);
  process.stdout.end(/** @type {Uint8Array} */ (data));
} catch (error) {
  fail(error);
} finally {
  clearInterval(watch);
}
