// Plants bugs in a copy of the library and the command and runs the tests of the file at fault.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, rmSync, symlinkSync } from 'node:fs';
import { join } from 'node:path';
import process from 'node:process';
import { testsOf } from './bugs_js.mjs';
import { copyTo, plant, root, scratch, stop } from './copy.mjs';

/** @typedef {import('./copy.mjs').Bug} Bug */

const tree = join(scratch, 'javascript');
const COPIED = [
  'bin',
  'command',
  'examples',
  'lib',
  'man',
  'package-lock.json',
  'package.json',
  'schemas',
  'test/fixtures',
  'test/js',
];
// Not copied: no bug is planted there.
const LINKED = ['node_modules', 'build'];
const SECONDS = 300;

/**
 * Runs a file of tests in the copy until one fails, in a group of processes that is gone afterwards.
 * @param {string} file
 * @returns {Promise<string | undefined>} How it failed, or nothing.
 */
async function failureOf(file) {
  const child = spawn(process.execPath, ['--test-reporter=tap', file], {
    cwd: tree,
    detached: true,
    stdio: ['ignore', 'pipe', 'ignore'],
  });
  const end = () => {
    try {
      process.kill(-Number(child.pid), 'SIGKILL');
    } catch {
      // All have ended.
    }
  };
  /** @type {string | undefined} */
  let failure;
  const timer = setTimeout(() => {
    failure = 'ran too long';
    end();
  }, SECONDS * 1000);
  let output = '';
  child.stdout.setEncoding('utf8').on('data', (text) => {
    output += text;
    failure ??= /^ *not ok \d+ - (.+)$/m.exec(output)?.[1];
    if (failure !== undefined) end();
  });
  const [status] = await once(child, 'close');
  clearTimeout(timer);
  end();
  if (status !== 0) failure ??= 'could not run';
  return failure && `${file.replace(/^.*\//, '')}: ${failure}`;
}

/**
 * Makes the copy and demands that the tests pass without any bug.
 * @param {Bug[]} planted
 */
export async function prepare(planted) {
  if (!existsSync(join(root, 'build/Release'))) stop('The native module is missing: npm run build');
  const links = LINKED.map((folder) => join(tree, folder));
  // Taken away first, so that whatever is cleared from the copy lies in the copy.
  for (const link of links) rmSync(link, { force: true });
  copyTo(tree, COPIED);
  LINKED.forEach((folder, k) => symlinkSync(join(root, folder), links[k]));
  for (const file of new Set(planted.flatMap((bug) => testsOf[bug.file]))) {
    const failure = await failureOf(file);
    if (failure) stop(`The tests fail without any bug: ${failure}`);
  }
}

/**
 * Plants a bug, tests and heals.
 * @param {Bug} bug
 * @returns {Promise<{isCaught: boolean, how: string}>}
 */
export async function judge(bug) {
  const heal = plant(tree, bug);
  try {
    for (const file of testsOf[bug.file]) {
      const failure = await failureOf(file);
      if (failure) return { isCaught: true, how: failure };
    }
    return { isCaught: false, how: 'survived' };
  } finally {
    heal();
  }
}
