// Runs the tests of what the coverage preset has built, prints each file of C++ with the lines and
// branches that no test runs, and fails where less is run than is demanded.
//
// clang++ counts in the source, before optimisation: what the compiler adds, such as the ways out of
// a function through an exception, is no branch. A template counts once, however often it is used.

import { execFileSync, spawnSync } from 'node:child_process';
import { mkdirSync, readdirSync, rmSync } from 'node:fs';
import { availableParallelism } from 'node:os';
import { join, relative } from 'node:path';
import process from 'node:process';
import { root } from './setup.mjs';

/**
 * What is demanded of a part of the code, in per cent. What is missing from 100 is what no test can
 * bring about: sets of thousands of millions of points, and calls of the host that fail.
 * @type {{part: string, files: RegExp, lines: number, branches: number}[]}
 */
const DEMANDS = [
  {
    part: 'the core',
    files: /^(dispatch|extractors|grouping|indexing|primitives)\//,
    lines: 99.8,
    branches: 98.5,
  },
  { part: 'the host boundary', files: /^t\.cpp$/, lines: 95.5, branches: 77 },
];

const binaries = join(root, 'build/coverage');
const counts = join(binaries, 'counts');
const addon = join(binaries, 'cpp_code.node');
const tests = join(binaries, 'test/chart_trace_tests');

/** @typedef {{count: number, covered: number}} Share */
/** @typedef {{file: string, lines: Share, branches: Share}} Counted */

/**
 * Runs a program in the project's folder and ends with its status when it fails.
 * @param {string} program
 * @param {...string} args
 */
function run(program, ...args) {
  const env = {
    ...process.env,
    CHART_TRACE_ADDON: addon,
    LLVM_PROFILE_FILE: join(counts, '%2m.profraw'),
  };
  const { status, error } = spawnSync(program, args, { cwd: root, env, stdio: 'inherit' });
  if (error) console.error(error.message);
  if (status !== 0) process.exit(status ?? 1);
}

/** @returns {Counted[]} */
function countedFiles() {
  const merged = join(counts, 'all.profdata');
  const raw = readdirSync(counts).map((name) => join(counts, name));
  run('llvm-profdata', 'merge', '-o', merged, ...raw);
  const json = execFileSync(
    'llvm-cov',
    ['export', '-summary-only', '-instr-profile', merged, tests, '-object', addon],
    { encoding: 'utf8', maxBuffer: 1 << 28 },
  );
  /** @type {{filename: string, summary: {lines: Share, branches: Share}}[]} */
  const files = JSON.parse(json).data[0].files;
  return files.map(({ filename, summary: { lines, branches } }) => ({
    file: relative(root, filename),
    lines,
    branches,
  }));
}

/**
 * @param {Counted[]} files
 * @param {'lines' | 'branches'} what
 */
function shareOf(files, what) {
  const sum = (/** @type {'count' | 'covered'} */ field) =>
    files.reduce((total, file) => total + file[what][field], 0);
  return (100 * sum('covered')) / sum('count');
}

rmSync(counts, { recursive: true, force: true });
mkdirSync(counts);
run('ctest', '--preset', 'coverage', '--parallel', String(availableParallelism()));
const boundary = readdirSync(join(root, 'test/js')).filter((name) =>
  /^trace_.*\.test\.js$/.test(name),
);
run(
  process.execPath,
  '--test',
  '--test-reporter=spec',
  ...boundary.map((name) => join(root, 'test/js', name)),
);

let falls = false;
const files = countedFiles();
for (const { part, files: pattern, ...demanded } of DEMANDS) {
  const ofPart = files.filter(({ file }) => pattern.test(file));
  console.log(`\n${part}: ${ofPart.length} files`);
  for (const { file, lines, branches } of ofPart) {
    const missing = [lines.count - lines.covered, branches.count - branches.covered];
    if (missing[0] + missing[1] > 0)
      console.log(`  ${file}: not run: ${missing[0]} lines, ${missing[1]} branches`);
  }
  for (const what of /** @type {const} */ (['lines', 'branches'])) {
    const share = shareOf(ofPart, what);
    const suffices = share >= demanded[what];
    console.log(
      `  ${share.toFixed(2)} % of ${what} are run; ${demanded[what]} % are demanded` +
        `${suffices ? '' : ': TOO FEW'}`,
    );
    if (!suffices) falls = true;
  }
}
if (falls) process.exit(1);
