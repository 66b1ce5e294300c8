// Many images at a time, their records in the order of the images.

import { Tinypool } from 'tinypool';
import { wordsOf } from './messages.js';

/**
 * Runs tasks on worker threads and gives their results in the order of the tasks, each as soon as it
 * and all before it are there. A task whose worker dies has an error for a result; the others go on.
 * When the signal comes, no more tasks are begun; those at work are finished and given.
 * @template T, R
 * @param {readonly T[]} tasks
 * @param {object} options
 * @param {'trace' | 'colors'} options.name What is done with a task: a name that worker.js exports.
 * @param {number} options.jobs How many at a time.
 * @param {AbortSignal} options.signal
 * @param {() => void} options.onDone Called whenever a task is done, in any order.
 * @param {(task: T, error: import('./messages.js').ErrorWords) => R} options.onFailure The result of
 *   a task whose worker died.
 * @returns {AsyncGenerator<R>}
 */
export async function* inOrder(tasks, { name, jobs, signal, onDone, onFailure }) {
  const threads = Math.min(jobs, tasks.length);
  if (threads === 0) return;
  const filename = new URL('./worker.js', import.meta.url).href;
  const pool = new Tinypool({ filename, minThreads: threads, maxThreads: threads });
  const stop = () => pool.cancelPendingTasks();
  signal.addEventListener('abort', stop);
  const run = async (/** @type {T} */ task) => {
    try {
      return await pool.run(task, { name });
    } catch (error) {
      // A task that was never begun has no result.
      return signal.aborted ? undefined : onFailure(task, wordsOf(error));
    } finally {
      onDone();
    }
  };
  try {
    /** @type {Promise<R | undefined>[]} */
    const begun = [];
    for (const task of tasks) {
      if (signal.aborted) break;
      begun.push(run(task));
      // Only so far ahead of the slowest that the finished ones do not pile up.
      if (begun.length >= 4 * threads) yield* given(await begun.shift());
    }
    while (begun.length > 0) yield* given(await begun.shift());
  } finally {
    signal.removeEventListener('abort', stop);
    await pool.destroy();
  }
}

/**
 * @template R
 * @param {R | undefined} result
 */
function* given(result) {
  if (result !== undefined) yield result;
}
