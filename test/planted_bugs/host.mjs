// Plants bugs in a copy of the extension module, builds it and runs the tests of the host boundary.

import { spawnSync } from 'node:child_process';
import { join } from 'node:path';
import process from 'node:process';
import { buildSound, configure, judgeBuilt } from './cmake.mjs';
import { copyTo, root, scratch, stop } from './copy.mjs';

/** @typedef {import('./copy.mjs').Bug} Bug */

// Below the root, so that the npm packages with the headers are found.
const tree = join(scratch, 'host');
const binaries = join(scratch, 'host_cmake');
const addon = join(binaries, 'cpp_code.node');
const COPIED = [
  'CMakeLists.txt',
  'cmake',
  'dispatch',
  'extractors',
  'grouping',
  'indexing',
  'package.json',
  'primitives',
  't.cpp',
];
const TESTS = [
  ...['modes', 'arguments', 'order', 'stretches', 'failures'].map(
    (name) => `test/js/trace_${name}.test.js`,
  ),
  'test/js/addon_record.test.js',
];
const SECONDS = 300;

/** @returns {string | undefined} How the tests failed, or nothing. */
function failure() {
  for (const file of TESTS) {
    const { status, stdout } = spawnSync(process.execPath, ['--test-reporter=tap', file], {
      cwd: root,
      env: { ...process.env, CHART_TRACE_ADDON: addon },
      encoding: 'utf8',
      timeout: SECONDS * 1000,
      killSignal: 'SIGKILL',
      maxBuffer: 1 << 28,
    });
    if (status === 0) continue;
    const failed = /^ *not ok \d+ - (.+)$/m.exec(stdout ?? '')?.[1];
    return `${file.replace(/^.*\//, '')}: ${failed ?? 'crashed, or ran too long'}`;
  }
  return undefined;
}

/** Makes the copy and demands that the tests pass without any bug. */
export function prepare() {
  copyTo(tree, COPIED);
  const settings = ['-DCHART_TRACE_ADDON=ON', `-DCHART_TRACE_ADDON_DIR=${binaries}`];
  configure(tree, binaries, ...settings);
  buildSound(binaries);
  const failed = failure();
  if (failed) stop(`The tests of the host boundary fail without any bug: ${failed}`);
}

/** @param {Bug} bug */
export const judge = (bug) => judgeBuilt(tree, binaries, bug, failure);
