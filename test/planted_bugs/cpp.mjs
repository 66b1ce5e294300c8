// Plants bugs in a copy of the core and runs the C++ tests on it. The copy is built at -O1, file by
// file as bugs come and go.
//
// A bug first meets the suite that caught the one before it, which as a rule stands in the same file;
// then the tests of single classes, then those that drive every path, then the property tests.

import { spawnSync } from 'node:child_process';
import { join } from 'node:path';
import { buildSound, configure, judgeBuilt } from './cmake.mjs';
import { copyTo, scratch, stop } from './copy.mjs';

/** @typedef {import('./copy.mjs').Bug} Bug */
/** @typedef {{title: string, filter: string}} Stage */

const tree = join(scratch, 'tree');
const binaries = join(scratch, 'cmake');
const COPIED = [
  'CMakeLists.txt',
  'cmake',
  'dispatch',
  'extractors',
  'fuzz',
  'grouping',
  'indexing',
  'primitives',
  'test/CMakeLists.txt',
  'test/cpp',
  'test/oracle',
];

const PATH_TESTS = '*_paths.*';
const PROPERTY_TESTS = '*_property.*:Metamorphic.*';
/** @type {Stage[]} */
const STAGES = [
  { title: 'class tests', filter: `-${PATH_TESTS}:${PROPERTY_TESTS}` },
  { title: 'path tests', filter: PATH_TESTS },
  { title: 'property tests', filter: PROPERTY_TESTS },
];
const MEMORY_IN_KIB = 4 * 1024 * 1024;

// How long tests may take before they count as failed: some times what the slowest stage takes
// without any bug, on this machine as it is today.
const PATIENCE = 4;
let limitInMs = 300_000;

/**
 * Runs one stage of the tests on what is built now.
 * @param {Stage} stage
 * @returns {string | undefined} How it failed, or nothing.
 */
function failureOf({ filter }) {
  const limited = `ulimit -v ${MEMORY_IN_KIB} 2>/dev/null; exec "$@"`;
  const tests = join(binaries, 'test/chart_trace_tests');
  const { status, signal, stdout, error } = spawnSync(
    'sh',
    [
      '-c',
      limited,
      'sh',
      tests,
      '--gtest_brief=1',
      '--gtest_fail_fast',
      `--gtest_filter=${filter}`,
    ],
    { encoding: 'utf8', timeout: limitInMs, killSignal: 'SIGKILL', maxBuffer: 1 << 28 },
  );
  if (status === 0) return undefined;
  if (/** @type {NodeJS.ErrnoException} */ (error)?.code === 'ETIMEDOUT') return 'ran too long';
  const failed = /^\[ {2}FAILED {2}\] ([^ ,\n]+)/m.exec(stdout ?? '')?.[1];
  return failed ?? `crashed (${signal ?? `exit code ${status}`})`;
}

/**
 * The stage of the one suite that a test belongs to.
 * @param {string} test
 * @returns {Stage[]} None when there was no test, but a crash.
 */
function suiteOf(test) {
  const suite = /^(\w+)\.\w+$/.exec(test)?.[1];
  return suite ? [{ title: 'the suite before', filter: `${suite}.*` }] : [];
}

/**
 * What catches bugs must pass without any.
 * @param {Stage} stage
 * @returns {number} How long that takes, in milliseconds.
 */
function timeToPass(stage) {
  const start = performance.now();
  const failure = failureOf(stage);
  if (failure) stop(`The ${stage.title} fail without any bug: ${failure}`);
  return performance.now() - start;
}

/** Makes the copy and demands that the tests pass without any bug. */
export function prepare() {
  copyTo(tree, COPIED);
  // Nobody asks CTest here: listing the tests after each link would be wasted.
  const settings = [
    '-DCHART_TRACE_TESTS=ON',
    '-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST',
  ];
  configure(tree, binaries, ...settings);
  buildSound(binaries);
  limitInMs = PATIENCE * Math.ceil(Math.max(...STAGES.map(timeToPass)));
}

/** @type {Stage[]} */
let suiteBefore = [];

/** @returns {string | undefined} How the first stage that fails does so, or nothing. */
function failureOfAny() {
  for (const stage of [...suiteBefore, ...STAGES]) {
    const failure = failureOf(stage);
    if (!failure) continue;
    suiteBefore = suiteOf(failure);
    return failure;
  }
  return undefined;
}

/** @param {Bug} bug */
export const judge = (bug) => judgeBuilt(tree, binaries, bug, failureOfAny);
