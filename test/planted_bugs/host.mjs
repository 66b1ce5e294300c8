// Plants bugs in a copy of the extension module, builds it and runs the tests of the host boundary.

import { spawnSync } from 'node:child_process';
import { availableParallelism } from 'node:os';
import { join } from 'node:path';
import process from 'node:process';
import { copyTo, plant, root, scratch, stop } from './copy.mjs';

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

/**
 * @param {string} program
 * @param {...string} args
 */
function run(program, ...args) {
  const { status, stdout, stderr, error } = spawnSync(program, args, { encoding: 'utf8' });
  if (error) stop(`Could not run ${program}: ${error.message}`);
  return { ok: status === 0, output: `${stdout}${stderr}` };
}

const build = () => run('cmake', '--build', binaries, '--parallel', String(availableParallelism()));

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
  const configured = run(
    ...['cmake', '-S', tree, '-B', binaries, '-G', 'Ninja', '-DCHART_TRACE_ADDON=ON'],
    ...['-DCMAKE_BUILD_TYPE=Planted', '-DCMAKE_CXX_FLAGS=-O1'],
    `-DCHART_TRACE_ADDON_DIR=${binaries}`,
  );
  if (!configured.ok) stop(`The copy could not be configured:\n${configured.output}`);
  const built = build();
  if (!built.ok) stop(`The copy could not be built:\n${built.output}`);
  const failed = failure();
  if (failed) stop(`The tests of the host boundary fail without any bug: ${failed}`);
}

/**
 * Plants a bug, builds, tests and heals.
 * @param {Bug} bug
 * @returns {{isCaught: boolean, how: string}}
 */
export function judge(bug) {
  const heal = plant(tree, bug);
  try {
    const { ok, output } = build();
    if (!ok) return { isCaught: false, how: `does not compile:\n${output}` };
    const failed = failure();
    return failed ? { isCaught: true, how: failed } : { isCaught: false, how: 'survived' };
  } finally {
    heal();
  }
}
