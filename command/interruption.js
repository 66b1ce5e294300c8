// What ends a run before its time: Ctrl-C, the end of the session, or a reader who has seen enough.

import process from 'node:process';

/** What the exit code is then. */
const CODES = /** @type {const} */ ({ SIGHUP: 129, SIGINT: 130, SIGTERM: 143, EPIPE: 0 });

const SIGNALS = /** @type {const} */ (['SIGHUP', 'SIGINT', 'SIGTERM']);

/**
 * @typedef {object} Interruption
 * @property {AbortSignal} signal
 * @property {() => number | undefined} code The exit code, undefined where nothing came.
 * @property {() => void} stop Listens no more.
 */

/**
 * Listens for interruptions. A second Ctrl-C ends the process at once.
 * @param {(text: string) => void} say
 * @returns {Interruption}
 */
export function listen(say) {
  const controller = new AbortController();
  /** @type {keyof typeof CODES | undefined} */
  let cause;
  const interrupt = (/** @type {keyof typeof CODES} */ what) => {
    cause ??= what;
    controller.abort();
  };
  const onSignal = (/** @type {NodeJS.Signals} */ name) => {
    interrupt(/** @type {keyof typeof CODES} */ (name));
    say('interrupted: the images at work are finished; Ctrl-C again stops at once');
  };
  const onClosed = (/** @type {NodeJS.ErrnoException} */ { code }) => {
    if (code === 'EPIPE') interrupt('EPIPE');
  };
  for (const name of SIGNALS) process.once(name, onSignal);
  process.stdout.on('error', onClosed);
  return {
    signal: controller.signal,
    code: () => cause && CODES[cause],
    stop: () => {
      for (const name of SIGNALS) process.off(name, onSignal);
      process.stdout.off('error', onClosed);
    },
  };
}
