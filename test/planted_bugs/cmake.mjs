// Builds a copy of the code with CMake, and judges the bugs that are planted in it.

import { spawnSync } from 'node:child_process';
import { availableParallelism } from 'node:os';
import { plant, stop } from './copy.mjs';

/** @typedef {import('./copy.mjs').Bug} Bug */

/**
 * @param {string} program
 * @param {...string} args
 */
function run(program, ...args) {
  const { status, stdout, stderr, error } = spawnSync(program, args, { encoding: 'utf8' });
  if (error) stop(`Could not run ${program}: ${error.message}`);
  return { ok: status === 0, output: `${stdout}${stderr}` };
}

/**
 * @param {string} tree
 * @param {string} binaries
 * @param {...string} settings
 */
export function configure(tree, binaries, ...settings) {
  const { ok, output } = run(
    ...['cmake', '-S', tree, '-B', binaries, '-G', 'Ninja'],
    // A build type of no meaning, so that none of the usual flags come on top of these.
    ...['-DCMAKE_BUILD_TYPE=Planted', '-DCMAKE_CXX_FLAGS=-O1'],
    ...settings,
  );
  if (!ok) stop(`The copy could not be configured:\n${output}`);
}

/** @param {string} binaries */
const build = (binaries) =>
  run('cmake', '--build', binaries, '--parallel', String(availableParallelism()));

/**
 * Builds a copy that has no bug.
 * @param {string} binaries
 */
export function buildSound(binaries) {
  const { ok, output } = build(binaries);
  if (!ok) stop(`The copy could not be built:\n${output}`);
}

/**
 * Plants a bug, builds, tests and heals.
 * @param {string} tree
 * @param {string} binaries
 * @param {Bug} bug
 * @param {() => string | undefined} failure How the tests fail on what is built now, if they do.
 * @returns {{isCaught: boolean, how: string}}
 */
export function judgeBuilt(tree, binaries, bug, failure) {
  const heal = plant(tree, bug);
  try {
    const { ok, output } = build(binaries);
    if (!ok) return { isCaught: false, how: `does not compile:\n${output}` };
    const failed = failure();
    return failed ? { isCaught: true, how: failed } : { isCaught: false, how: 'survived' };
  } finally {
    heal();
  }
}
